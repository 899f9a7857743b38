// Hostile input at the front and in the node's files, through whole runs:
// unreadable files, FIFOs and multi-gigabyte files where files are expected,
// names of 700 characters, bytes that are no UTF-8, share trees with
// symbolic-link loops, thousands of schemas, modification files that are
// broken XML or play entity tricks. Each case has one clear outcome, a
// message naming what is wrong, a failed run writes no model, and no content
// of a file that a modification file points at leaks into any output.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

namespace fs = std::filesystem;

const std::string kModFile = "node/lmhi/Radio/modification_files/CXC1_R1A/modification_1_0_0_to_1_1_0.xml";
const std::string kLongName = "Radio" + std::string(695, 'X');

enum class Damage { kUnreadable, kFifo, kHuge, kEdit, kWrite, kOther };

struct HostileCase {
  const char* name;
  Damage damage;
  std::string file;       // below the root of the node builder
  int exitStatus;         // the wrapper's: 0 success, 1 rolled back, 2 the front failed
  std::string text = "";  // kHuge: the start of the file; kEdit: replaces the file's first `from`; kWrite: the file
  std::string from = "\"Radio\"";
  std::string named = "";                            // in what the run wrote; "" the file's name
  std::function<void(NodeBuilder&)> make = nullptr;  // kOther
  // Success: an object of Radio's model and the attribute the modification file removed from it.
  std::pair<std::string, std::string> converted = {"radioPortId=2,radioId=1", "weight"};
};

// gtest would print the row's bytes (hostile texts among them): its name says what it is.
void PrintTo(const HostileCase& c, std::ostream* out) { *out << c.name; }

void damage(const HostileCase& c, NodeBuilder& node) {
  const std::string path = node.root() + "/" + c.file;
  std::string text = c.damage == Damage::kEdit ? TempDir::read(path) : c.text;
  if (c.damage == Damage::kEdit) text.replace(text.find(c.from), c.from.size(), c.text);
  switch (c.damage) {
    case Damage::kUnreadable:
      return fs::permissions(path, fs::perms::none);
    case Damage::kFifo:
      fs::remove(path);
      ASSERT_EQ(0, ::mkfifo(path.c_str(), 0600));
      return;
    case Damage::kHuge:  // sparse: no disk is used
    case Damage::kEdit:
    case Damage::kWrite:
      std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
      if (c.damage == Damage::kHuge) fs::resize_file(path, uintmax_t{3} << 30);
      return;
    case Damage::kOther:
      return c.make(node);
  }
}

const std::string kAppdata = "package/appdata/voskOamUpgradeModLm.xml";
const std::string kClasses = "package/share/models/Radio/imm/Radio_imm_classes.xml";
const std::string kOldModel = "node/imm/old/Radio.xml";
const std::string kVersions = "node/versions";

// A modification file holding `mos`, `doctype` after its prolog; a lenient
// reader that got past a hostile part of it would succeed.
std::string modFile(const std::string& doctype,
                    const std::string& mos = mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype + "<modifications>" + mos + "</modifications>\n";
}

std::string entityBomb() {
  std::string entities = "<!DOCTYPE modifications [\n<!ENTITY lol0 \"lol\">\n";
  for (int level = 1; level <= 9; ++level) {
    entities += "<!ENTITY lol" + std::to_string(level) + " \"";
    for (int i = 0; i < 10; ++i) entities += "&lol" + std::to_string(level - 1) + ";";
    entities += "\">\n";
  }
  return modFile(entities + "]>\n", mo("RadioPort",
                                       "<MoAction name=\"RemoveAttributeAction\"><Arg name=\"name\" "
                                       "value=\"&lol9;\"/></MoAction>"));
}

std::string deeplyNested(int levels) {
  std::string open, close;
  for (int i = 0; i < levels; ++i) {
    open += "<c>";
    close += "</c>";
  }
  return modFile("", open + mo("RadioPort", moAction("RemoveAttributeAction", "name=weight")) + close);
}

const HostileCase kCases[] = {
    {"unreadable modification file", Damage::kUnreadable, kModFile, 1},
    {"unreadable class file", Damage::kUnreadable, kClasses, 1},
    {"unreadable old model", Damage::kUnreadable, kOldModel, 1},
    {"unreadable appdata file", Damage::kUnreadable, kAppdata, 2},
    {"FIFO for the appdata file", Damage::kFifo, kAppdata, 2},
    {"FIFO for the class file", Damage::kFifo, kClasses, 1},
    {"FIFO for the old model", Damage::kFifo, kOldModel, 1},
    {"FIFO for the versions file", Damage::kFifo, kVersions, 1},
    {"3 GiB modification file", Damage::kHuge, kModFile, 1, "<?xml version=\"1.0\"?>\n<modifications>"},
    {"3 GiB old model", Damage::kHuge, kOldModel, 1, "<?xml version=\"1.0\"?>\n<imm:IMM-contents>"},
    {"3 GiB appdata file", Damage::kHuge, kAppdata, 2, "<voskOamUpgradeModLm>"},
    {"3 GiB versions file", Damage::kHuge, kVersions, 1, "Radio 1_0_0 1_1_0\n"},
    // Log records end at 512 bytes: the name is cut there.
    {"700-character schema name", Damage::kEdit, kAppdata, 2, "\"" + kLongName + "\"", "\"Radio\"",
     "Ignored schemas due to missed imm files: [" + kLongName.substr(0, 300)},
    {"appdata that is no UTF-8", Damage::kEdit, kAppdata, 2, "\"Radio\xff\""},
    {"old model that is no UTF-8", Damage::kEdit, kOldModel, 1, "root \xed\xa0\x80", "root of Radio"},
    {"700-character class name",
     Damage::kOther,
     "",
     0,
     "",
     "",
     "Radio: UPGRADE IS DONE",
     [](NodeBuilder& node) {
       ImmClass cls{kLongName, immAttrs("userLabel:SA_STRING_T")};
       node.add({"Radio", "1_0_0", "1_1_0", {cls}, {{kLongName, cls.rdnName() + "=1", {{"userLabel", {"x"}}}}}});
       node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                             modifications(mo(kLongName, moAction("RemoveAttributeAction", "name=userLabel"))));
     },
     {"r" + kLongName.substr(1) + "Id=1", "userLabel"}},
    {"700-character path of a modification file", Damage::kOther, "", 0, "", "", "Radio: UPGRADE IS DONE",
     [](NodeBuilder& node) {
       node.remove(kModFile);
       node.modificationFile("Radio", std::string(250, 'L'), std::string(200, 'p') + "modification_1_0_0_to_1_1_0.xml",
                             modifications(mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))));
     }},
    {"share tree with symbolic-link loops", Damage::kOther, "", 0, "", "", "Radio: UPGRADE IS DONE",
     [](NodeBuilder& node) {
       const fs::path models = node.packagePath() + "/share/models";
       fs::create_directory_symlink(".", models / "again");
       fs::create_directory_symlink("..", models / "Radio" / "up");
       fs::create_directory_symlink("../..", models / "Radio" / "imm" / "top");
     }},
    {"2000 schemas", Damage::kOther, "", 0, "", "", "S1999: UPGRADE IS DONE",
     [](NodeBuilder& node) {
       std::vector<SchemaSetup> schemas;
       for (int i = 0; i < 2000; ++i) schemas.push_back(sampleSchema("S" + std::to_string(i), "3_1_0", "3_1_0"));
       node.add(schemas);
     }},
    {"truncated modification file", Damage::kWrite, kModFile, 1, modFile("").substr(0, modFile("").size() / 2)},
    {"modification file that is no UTF-8", Damage::kWrite, kModFile, 1,
     modFile("", mo("RadioPort", moAction("RemoveAttributeAction", "name=we\xffight")))},
    {"entity bomb", Damage::kWrite, kModFile, 1, entityBomb()},
    {"external parameter entity", Damage::kWrite, kModFile, 1,
     modFile("<!DOCTYPE modifications [<!ENTITY % p SYSTEM \"file:///etc/passwd\"> %p;]>\n")},
    {"external DTD", Damage::kWrite, kModFile, 1, modFile("<!DOCTYPE modifications SYSTEM \"file:///etc/passwd\">\n")},
    {"50000 nested elements", Damage::kWrite, kModFile, 1, deeplyNested(50000)},
    {"11 MB attribute value", Damage::kWrite, kModFile, 1,
     modFile("", mo("RadioPort", moAction("RemoveAttributeAction", ArgList{{"name", std::string(11000000, 'a')}})))},
};

// Every text the run left: the wrapper's output, the log, the rollback and
// platform-error lines, and the model files, committed or discarded.
std::string everythingWritten(const RunResult& run) {
  std::string all = run.report + run.errors + run.rollbackText();
  for (const std::vector<std::string>* lines : {&run.log, &run.platformErrors}) {
    for (const std::string& line : *lines) all += line + "\n";
  }
  for (const char* folder : {"/model/", "/discarded/"}) {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(run.outPath + folder, ignored)) all += TempDir::read(entry.path());
  }
  return all;
}

class HostileInputTest : public testing::TestWithParam<HostileCase> {};

TEST_P(HostileInputTest, ClearOutcomeAndNothingWrittenOnFailure) {
  const HostileCase& c = GetParam();
  if (c.damage == Damage::kUnreadable && ::geteuid() == 0) GTEST_SKIP() << "root reads a file whatever its mode";
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Radio", "1_0_0", "1_1_0"));
  node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                        modifications(mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))));
  damage(c, node);
  RunResult run = WholeRun(node).run();

  EXPECT_EQ(c.exitStatus, run.exitStatus) << run.report;
  const std::string all = everythingWritten(run);
  EXPECT_NE(std::string::npos, all.find(c.named.empty() ? fs::path(c.file).filename().string() : c.named))
      << run.report;
  if (c.exitStatus != 0) {
    EXPECT_EQ(std::vector<std::string>{}, run.modelFiles());
  } else {
    const ModelObjects objects = run.objects("Radio");
    const auto object = objects.find(c.converted.first);
    ASSERT_NE(objects.end(), object);
    EXPECT_EQ(0u, object->second.attrs.count(c.converted.second));
  }
  EXPECT_EQ(std::string::npos, all.find(TempDir::lines("/etc/passwd").at(0))) << "/etc/passwd leaked into the output";
}

INSTANTIATE_TEST_SUITE_P(Cases, HostileInputTest, testing::ValuesIn(kCases), [](const auto& info) {
  std::string name = info.param.name;
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
});

}  // namespace
}  // namespace e2e
