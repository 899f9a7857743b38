// Whole runs of one schema of each kind of upgrade: equal versions, a new
// schema, a new schema created by a file from 0_0_0 (a conversion is
// OutcomeTest's and UpgradeHandlerTest's). One schema a run, so the
// process-wide upgrade type in the timing record is that schema's.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

struct KindCase {
  const char* name;
  const char* from;
  const char* to;
  // Delivered in one load module, in this order: "<file>:<classes read, comma-separated>", or "<file>:!" for a file
  // that fails when processed.
  const char* files;
  const char* kindRecord;  // after "Shelf: "
  int upgType;
  // Space-separated: the files of the conversion path in order; the new model's classes and dns in file order.
  const char* processed;
  const char* modelClasses;
  const char* modelDns;
};

void PrintTo(const KindCase& c, std::ostream* out) { *out << c.name; }

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

class UpgradeKindTest : public testing::TestWithParam<KindCase> {};

TEST_P(UpgradeKindTest, TakesItsPathAndWritesItsModel) {
  const KindCase& c = GetParam();
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Shelf", c.from, c.to));
  std::istringstream files(c.files);
  for (std::string file; files >> file;) {
    const std::string name = file.substr(0, file.find(':')), read = file.substr(file.find(':') + 1);
    std::vector<std::string> classes;
    std::istringstream names(read);
    for (std::string className; std::getline(names, className, ',');) classes.push_back(className);
    node.modificationFile("Shelf", "CXC9_R1A", name,
                          read == "!" ? modifications(mo("Shelf", moAction("NoSuchAction", "")))
                                      : NodeBuilder::readingModificationFile(classes));
  }
  RunResult result = WholeRun(node).run();

  EXPECT_EQ(0, result.exitStatus) << result.report << result.errors;
  EXPECT_TRUE(result.rollback.empty());
  EXPECT_TRUE(result.logged(std::string("Shelf: Upgrading from (ver_rel_corr): ") + c.from + " to " + c.to));
  EXPECT_TRUE(result.logged(std::string("Shelf: ") + c.kindRecord));
  EXPECT_EQ(1u, result.loggedParts("UpgType=" + std::to_string(c.upgType) + " )"));
  std::vector<std::string> processed;
  const std::string processing = "Shelf: Processing modification file ";
  for (const std::string& text : result.log) {
    if (text.compare(0, processing.size(), processing) == 0) processed.push_back(text.substr(text.rfind('/') + 1));
  }
  EXPECT_EQ(c.processed, joined(processed));
  EXPECT_TRUE(result.logged("Shelf: UPGRADE IS DONE"));
  EXPECT_EQ(std::vector<std::string>{"Shelf.xml"}, result.modelFiles());
  EXPECT_EQ(c.modelClasses, joined(result.modelClasses("Shelf"))) << result.model("Shelf");
  EXPECT_EQ(c.modelDns, joined(result.modelDns("Shelf"))) << result.model("Shelf");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, UpgradeKindTest,
    testing::Values(KindCase{"EqualVersionsOnlyFinalize", "3_1_0", "3_1_0", "modification_3_1_0_to_3_1_0.xml:!",
                             "Same from and to-version (3_1_0) for Shelf", 0, "", "", ""},
                    KindCase{"NewSchemaWritesOnlyWhatActionsCreated", "0_0_0", "1_0_0", "",
                             "New IMM schema Shelf introduced through upgrade", 1, "", "", ""},
                    KindCase{"NewSchemaWithACreatingFileConvertsFromNothing", "0_0_0", "1_0_0",
                             "modification_0_0_0_to_1_0_0.xml:ShelfPort", "Conversion path size: 1 modification files",
                             2, "modification_0_0_0_to_1_0_0.xml", "ShelfPort", ""}),
    [](const testing::TestParamInfo<KindCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace e2e
