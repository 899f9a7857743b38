// Whole runs of one schema of each kind of upgrade: equal versions, a new
// schema, a new schema created by a file from 0_0_0, and a conversion. One
// schema a run, so the process-wide upgrade type in the timing record is
// that schema's.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

struct StepFile {
  const char* name;
  std::vector<std::string> classesRead;
  const char* content = nullptr;  // instead of a file that reads classesRead
};

struct KindCase {
  const char* name;
  const char* from;
  const char* to;
  std::vector<StepFile> files;  // delivered in one load module, in this order
  const char* kindRecord;       // after "Shelf: "
  int upgType;
  std::vector<std::string> processed;  // files of the conversion path, in order
  std::vector<std::string> modelClasses;
  std::vector<std::string> modelDns;
};

void PrintTo(const KindCase& c, std::ostream* out) { *out << c.name; }

class UpgradeKindTest : public testing::TestWithParam<KindCase> {};

TEST_P(UpgradeKindTest, TakesItsPathAndWritesItsModel) {
  const KindCase& c = GetParam();
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Shelf", c.from, c.to));
  for (const StepFile& file : c.files) {
    node.modificationFile(
        "Shelf", "CXC9_R1A", file.name,
        file.content != nullptr ? file.content : NodeBuilder::readingModificationFile(file.classesRead));
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
    if (text.compare(0, processing.size(), processing) == 0) {
      processed.push_back(text.substr(text.rfind('/') + 1));
    }
  }
  EXPECT_EQ(c.processed, processed);
  EXPECT_TRUE(result.logged("Shelf: UPGRADE IS DONE"));
  EXPECT_EQ(std::vector<std::string>{"Shelf.xml"}, result.modelFiles());
  EXPECT_EQ(c.modelClasses, result.modelClasses("Shelf")) << result.model("Shelf");
  EXPECT_EQ(c.modelDns, result.modelDns("Shelf")) << result.model("Shelf");
}

// A file that fails when it is processed.
const char* kFailingFile = "<modifications><Mo name=\"Shelf\"><MoAction name=\"NoSuchAction\"/></Mo></modifications>";

INSTANTIATE_TEST_SUITE_P(Kinds, UpgradeKindTest,
                         testing::Values(KindCase{"EqualVersionsOnlyFinalize",
                                                  "3_1_0",
                                                  "3_1_0",
                                                  {{"modification_3_1_0_to_3_1_0.xml", {}, kFailingFile}},
                                                  "Same from and to-version (3_1_0) for Shelf",
                                                  0,
                                                  {},
                                                  {},
                                                  {}},
                                         KindCase{"NewSchemaWritesOnlyWhatActionsCreated",
                                                  "0_0_0",
                                                  "1_0_0",
                                                  {},
                                                  "New IMM schema Shelf introduced through upgrade",
                                                  1,
                                                  {},
                                                  {},
                                                  {}},
                                         KindCase{"NewSchemaWithACreatingFileConvertsFromNothing",
                                                  "0_0_0",
                                                  "1_0_0",
                                                  {{"modification_0_0_0_to_1_0_0.xml", {"ShelfPort"}}},
                                                  "Conversion path size: 1 modification files",
                                                  2,
                                                  {"modification_0_0_0_to_1_0_0.xml"},
                                                  {"ShelfPort"},
                                                  {}},
                                         KindCase{
                                             "ConversionReadsWritesAndCopies",
                                             "1_0_0",
                                             "1_2_0",
                                             {{"modification_1_0_0_to_1_1_0.xml", {"ShelfPort"}},
                                              {"modification_1_1_0_to_1_2_0.xml", {}}},
                                             "Conversion path size: 2 modification files",
                                             2,
                                             {"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_1_2_0.xml"},
                                             {"ShelfPort", "Shelf"},
                                             {"shelfPortId=1,shelfId=1", "shelfPortId=2,shelfId=1", "shelfId=1"}}),
                         [](const testing::TestParamInfo<KindCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace e2e
