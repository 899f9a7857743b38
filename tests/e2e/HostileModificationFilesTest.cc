// Whole runs of modification files that are broken or hostile XML: malformed
// documents, entity tricks, extreme nesting and sizes. Each must fail the
// upgrade cleanly: the node rolls back with a reason naming the file, nothing
// is committed, nothing crashes, and no content of a file the modification
// file points at leaks into any output. Bad numbers and argument combinations
// are refused by the actions and the parser (tests/actions, tests/parser).

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

const char kProlog[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// A file whose only action, on the sample schema, is harmless: a lenient
// reader that got past the hostile part would succeed.
std::string harmless(const std::string& doctype = "") {
  return kProlog + doctype + "<modifications>" + mo("ShelfPort", moAction("RemoveAttributeAction", "name=weight")) +
         "</modifications>\n";
}

std::string oneAction(const std::string& className, const std::string& action) {
  return kProlog + std::string("<modifications>") + mo(className, action) + "</modifications>\n";
}

std::string entityBomb() {
  std::string entities = "<!ENTITY lol0 \"lol\">\n";
  for (int level = 1; level <= 9; ++level) {
    entities += "<!ENTITY lol" + std::to_string(level) + " \"";
    for (int i = 0; i < 10; ++i) entities += "&lol" + std::to_string(level - 1) + ";";
    entities += "\">\n";
  }
  return kProlog + std::string("<!DOCTYPE modifications [\n") + entities + "]>\n<modifications>" +
         mo("ShelfPort", "<MoAction name=\"RemoveAttributeAction\"><Arg name=\"name\" value=\"&lol9;\"/></MoAction>") +
         "</modifications>\n";
}

std::string deepNesting(int levels) {
  std::string open, close;
  for (int i = 0; i < levels; ++i) {
    open += "<c>";
    close += "</c>";
  }
  return kProlog + std::string("<modifications>") + open +
         mo("ShelfPort", moAction("RemoveAttributeAction", "name=weight")) + close + "</modifications>\n";
}

struct HostileCase {
  const char* name;
  std::string file;
};

void PrintTo(const HostileCase& c, std::ostream* out) { *out << c.name; }

std::vector<HostileCase> hostileCases() {
  const std::string valid = harmless();
  return {
      {"Truncated", valid.substr(0, valid.size() / 2)},
      {"UnclosedTag",
       oneAction("ShelfPort", "<MoAction name=\"RemoveAttributeAction\"><Arg name=\"name\" value=\"weight\"/>")},
      {"BadEncodingByte", oneAction("ShelfPort", moAction("RemoveAttributeAction", "name=we\xffight"))},
      {"EntityBomb", entityBomb()},
      {"ExternalEntityInAValue",
       kProlog + std::string("<!DOCTYPE modifications [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>\n<modifications>") +
           mo("Shelf",
              "<MoAction name=\"AddAttributeAction\"><Arg name=\"name\" value=\"leak\"/><Arg name=\"type\" "
              "value=\"SA_STRING_T\"/><Arg name=\"defaultValue\" value=\"&x;\"/></MoAction>") +
           "</modifications>\n"},
      {"ExternalParameterEntity",
       harmless("<!DOCTYPE modifications [<!ENTITY % p SYSTEM \"file:///etc/passwd\"> %p;]>\n")},
      {"ExternalDtd", harmless("<!DOCTYPE modifications SYSTEM \"file:///etc/passwd\">\n")},
      {"DeepNesting", deepNesting(50000)},
      {"HugeAttributeValue",
       oneAction("ShelfPort", moAction("RemoveAttributeAction", ArgList{{"name", std::string(11000000, 'a')}}))},
  };
}

std::string firstLineOf(const std::string& path) {
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  return line;
}

// Every text the run left: the wrapper's output, the log, the rollback and
// platform-error lines, and the model files, committed or discarded.
std::string everythingWritten(const RunResult& run) {
  std::string all = run.report + run.errors + run.rollbackText();
  for (const std::string& text : run.log) all += text + "\n";
  for (const std::string& line : run.platformErrors) all += line + "\n";
  for (const char* folder : {"/model/", "/discarded/"}) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(run.outPath + folder, ignored)) {
      all += TempDir::read(entry.path());
    }
  }
  return all;
}

RunResult runWith(const TempDir& dir, const std::string& file, std::string* path) {
  NodeBuilder node(dir.path());
  SchemaSetup shelf = sampleSchema("Shelf", "1_0_0", "2_0_0");
  shelf.newClassesOnNode = false;  // so that an attribute a case adds could be written
  node.add(shelf);
  *path = node.modificationFile("Shelf", "CXC1_R1A", "modification_1_0_0_to_2_0_0.xml", file);
  return WholeRun(node).run();
}

TEST(HostileModificationFilesTest, TheHarmlessFileTheCasesStartFromSucceeds) {
  TempDir dir;
  std::string path;
  RunResult run = runWith(dir, harmless(), &path);
  EXPECT_EQ(0, run.exitStatus) << run.report << run.rollbackText();
  EXPECT_EQ(std::vector<std::string>{"Shelf.xml"}, run.modelFiles());
}

class HostileModificationFileTest : public testing::TestWithParam<HostileCase> {};

TEST_P(HostileModificationFileTest, FailsCleanly) {
  TempDir dir;
  std::string path;
  RunResult run = runWith(dir, GetParam().file, &path);

  EXPECT_EQ(1, run.exitStatus) << run.report.substr(0, run.report.find('\n'));
  EXPECT_NE(std::string::npos, run.rollbackText().find(path)) << "no rollback reason names the file:\n"
                                                              << run.rollbackText();
  EXPECT_EQ(std::vector<std::string>{}, run.modelFiles());
  const std::string passwd = firstLineOf("/etc/passwd");
  ASSERT_FALSE(passwd.empty());
  EXPECT_EQ(std::string::npos, everythingWritten(run).find(passwd)) << "/etc/passwd leaked into the run's output";
}

INSTANTIATE_TEST_SUITE_P(Files, HostileModificationFileTest, testing::ValuesIn(hostileCases()),
                         [](const testing::TestParamInfo<HostileCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace e2e
