// Whole runs that end in each of the outcomes the upgrade wrapper tells
// apart: success, a front failure, a crash. The failed upgrades (rollback)
// are the cells of FaultMatrixTest; a restart that is no upgrade is checked
// in UpgradeHandlerTest.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

const char* kSuccess = "Outcome: success, the upgrader connected to the wrapper socket\n";

// Three schemas, one of each kind: Radio converts over two files in two load
// modules (each reading one class), Transport keeps its version, Equipment is
// new.
class ThreeSchemaRun : public testing::Test {
 protected:
  ThreeSchemaRun() : node(dir.path()) {
    node.add(sampleSchema("Radio", "1_0_0", "2_0_0"));
    node.add(sampleSchema("Transport", "3_1_0", "3_1_0"));
    node.add(sampleSchema("Equipment", "0_0_0", "1_0_0"));
    firstFile = node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                                      NodeBuilder::readingModificationFile({"RadioPort"}));
    secondFile = node.modificationFile("Radio", "CXC1_R2A", "modification_1_1_0_to_2_0_0.xml",
                                       NodeBuilder::readingModificationFile({"Radio"}));
  }

  WholeRun identifiedRun() const {
    WholeRun run(node);
    run.env("WMT_NAME=e2eUpgrader").env("WMT_NO=CXC4711").env("WMT_REV=R2B").env("WPK_REV=R7C");
    return run;
  }

  TempDir dir;
  NodeBuilder node;
  std::string firstFile;
  std::string secondFile;
};

TEST_F(ThreeSchemaRun, SuccessSignalsTheWrapperAndWritesTheNewModel) {
  RunResult result = identifiedRun().run();

  EXPECT_EQ(0, result.exitStatus) << result.report << result.errors;
  EXPECT_EQ(0u, result.report.find(kSuccess)) << result.report;
  EXPECT_TRUE(result.rollback.empty());
  EXPECT_EQ((std::vector<std::string>{"Equipment.xml", "Radio.xml", "Transport.xml"}), result.modelFiles());
  EXPECT_TRUE(result.discardedFiles().empty());
  for (const char* schema : {"Radio", "Transport", "Equipment"}) {
    EXPECT_TRUE(result.logged(std::string(schema) + ": UPGRADE IS DONE")) << schema;
  }
  EXPECT_TRUE(result.logged("Starting upgrader: e2eUpgrader, for schemas: Equipment Radio Transport "));
  EXPECT_TRUE(result.logged("Radio: Conversion path size: 2 modification files"));
  EXPECT_TRUE(result.logged("Radio: Processing of modification file " + firstFile + " was a SUCCESS"));
  EXPECT_TRUE(result.logged("Radio: Processing of modification file " + secondFile + " was a SUCCESS"));

  // Both classes were read by a file, so both are written from memory, in
  // class order, values and multiple values intact.
  EXPECT_EQ((std::vector<std::string>{"radioId=1", "radioPortId=1,radioId=1", "radioPortId=2,radioId=1"}),
            result.modelDns("Radio"));
  const std::string radio = result.model("Radio");
  for (const char* value : {"<value>root of Radio</value>", "<value>12345678901</value>", "<value>-7</value>",
                            "<value>a</value>", "<value>b</value>"}) {
    EXPECT_NE(std::string::npos, radio.find(value)) << value << "\n" << radio;
  }
}

TEST_F(ThreeSchemaRun, WrongArgumentCountAbortsBeforeAnythingElse) {
  const struct {
    const char* args;
    const char* message;
  } cases[] = {
      {"", "Expected exactly two argument, got 1"},
      {"@socket second", "Expected exactly two argument, got 3"},
  };
  for (const auto& c : cases) {
    RunResult result = WholeRun(node).args(c.args).run();
    EXPECT_EQ(3, result.exitStatus) << c.args;
    EXPECT_EQ(0u, result.report.find("Outcome: crash, the upgrader was ended by signal 6 (SIGABRT)\n"))
        << result.report;
    EXPECT_TRUE(result.logged(c.message)) << c.args;
    EXPECT_EQ(0u, result.loggedParts("Getting modification files")) << c.args;
    EXPECT_FALSE(TempDir::exists(result.outPath + "/model"));
  }
}

TEST(WholeRunTest, EmptySchemaListSignalsSuccess) {
  TempDir dir;
  NodeBuilder node(dir.path());
  RunResult result = WholeRun(node).run();

  EXPECT_EQ(0, result.exitStatus) << result.report << result.errors;
  EXPECT_EQ(0u, result.report.find(kSuccess)) << result.report;
  EXPECT_TRUE(result.logged("Found 0 schemas to be upgraded, schema list: []"));
  EXPECT_TRUE(result.logged("Starting upgrader: voskOamUpgrader, for schemas: "));
  EXPECT_EQ(0u, result.loggedParts("UPGRADE STARTING"));
}

// The front's exit codes and messages are checked in FrontProcessTest; here
// that the wrapper reports a front failure by its result name.
TEST(WholeRunTest, FrontFailureEndsTheRunWithTheResultName) {
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Radio", "1_0_0", "1_0_0"));
  node.remove("package/share/models/Radio/imm/Radio_imm_classes.xml");
  RunResult result = WholeRun(node).run();

  EXPECT_EQ(2, result.exitStatus);
  EXPECT_EQ(0u, result.report.find("Outcome: front failed with exit status 5 (APP_RESULT_FAILED_TO_FIND_IMM_FILE)\n"))
      << result.report;
  EXPECT_FALSE(TempDir::exists(result.outPath + "/model"));
}

}  // namespace
}  // namespace e2e
