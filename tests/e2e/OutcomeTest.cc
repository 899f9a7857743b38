// Whole runs that end in each outcome the upgrade wrapper tells apart, other
// than a rollback (FaultMatrixTest's): success with every kind of schema, a
// failed front step, an abort on a wrong command line.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

const char* kSuccess = "Outcome: success, the upgrader connected to the wrapper socket\n";

// One schema of each kind: Radio converts over two files in two load modules
// (each reading one class), Transport keeps its version (its file would fail
// if processed), Equipment is new, Shelf is new and created by a file.
TEST(OutcomeTest, EveryKindOfSchemaTakesItsPath) {
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add({sampleSchema("Radio", "1_0_0", "2_0_0"), sampleSchema("Transport", "3_1_0", "3_1_0"),
            sampleSchema("Equipment", "0_0_0", "1_0_0"), sampleSchema("Shelf", "0_0_0", "1_0_0")});
  node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                        NodeBuilder::readingModificationFile({"RadioPort"}));
  node.modificationFile("Radio", "CXC1_R2A", "modification_1_1_0_to_2_0_0.xml",
                        NodeBuilder::readingModificationFile({"Radio"}));
  node.modificationFile("Transport", "CXC1_R1A", "modification_3_1_0_to_3_1_0.xml",
                        modifications(mo("Transport", moAction("NoSuchAction", ""))));
  node.modificationFile("Shelf", "CXC1_R1A", "modification_0_0_0_to_1_0_0.xml",
                        NodeBuilder::readingModificationFile({"ShelfPort"}));
  RunResult run = WholeRun(node).env("WMT_NAME=e2eUpgrader").run();

  EXPECT_EQ(0, run.exitStatus) << run.report << run.errors;
  EXPECT_EQ(0u, run.report.find(kSuccess)) << run.report;
  EXPECT_TRUE(run.rollback.empty());
  EXPECT_EQ((std::vector<std::string>{"Equipment.xml", "Radio.xml", "Shelf.xml", "Transport.xml"}), run.modelFiles());
  EXPECT_TRUE(run.discardedFiles().empty());
  for (const std::string& record :
       std::vector<std::string>{"Found 4 schemas to be upgraded, schema list: [Equipment,Radio,Shelf,Transport]",
                                "Starting upgrader: e2eUpgrader, for schemas: Equipment Radio Shelf Transport ",
                                "Transport: Same from and to-version (3_1_0) for Transport",
                                "Equipment: New IMM schema Equipment introduced through upgrade",
                                "Shelf: Conversion path size: 1 modification files", "Radio: UPGRADE IS DONE",
                                "Transport: UPGRADE IS DONE", "Equipment: UPGRADE IS DONE", "Shelf: UPGRADE IS DONE"}) {
    EXPECT_TRUE(run.logged(record)) << record;
  }
  EXPECT_EQ(0u, run.loggedParts("Transport: Processing"));
  // Classes a file read are written from memory, in class order.
  std::vector<std::string> dns;
  for (const ModelObject& object : run.objectList("Radio")) dns.push_back(object.dn);
  EXPECT_EQ((std::vector<std::string>{"radioId=1", "radioPortId=1,radioId=1", "radioPortId=2,radioId=1"}), dns);
  // A new schema's model holds what its files made: nothing, or the class read.
  EXPECT_EQ(std::string::npos, run.model("Equipment").find("<class")) << run.model("Equipment");
  EXPECT_NE(std::string::npos, run.model("Shelf").find("<class name=\"ShelfPort\">")) << run.model("Shelf");
  EXPECT_EQ(std::string::npos, run.model("Shelf").find("<object")) << run.model("Shelf");
}

TEST(OutcomeTest, EmptySchemaListSignalsSuccess) {
  TempDir dir;
  NodeBuilder node(dir.path());
  RunResult run = WholeRun(node).run();

  EXPECT_EQ(0, run.exitStatus) << run.report << run.errors;
  EXPECT_EQ(0u, run.report.find(kSuccess)) << run.report;
  EXPECT_TRUE(run.logged("Found 0 schemas to be upgraded, schema list: []"));
  EXPECT_TRUE(run.logged("Starting upgrader: voskOamUpgrader, for schemas: "));
  EXPECT_EQ(0u, run.loggedParts("UPGRADE STARTING"));
}

// A failed front step ends the process with its result: its record is the
// last one, the wrapper names the result, no model is written.
TEST(OutcomeTest, AFailedFrontStepEndsTheRun) {
  const std::string appdata = "package/appdata/voskOamUpgradeModLm.xml";
  const std::string classes = "package/share/models/Radio/imm/Radio_imm_classes.xml";
  const struct {
    const char* unset;                      // a variable of the upgrader's environment
    std::string removed, written, content;  // below the root
    const char* result;                     // "<exit status> (<name>)"
    std::string cause, last;                // part of a record; the last record
  } cases[] = {
      {"WPK_PATH", "", "", "", "1 (APP_RESULT_NO_WPK_ROOT)", "Unable to get WPK_PATH environment variable.",
       "Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT"},
      {"", appdata, "", "", "2 (APP_RESULT_FAILED_TO_FIND_MODS)",
       "Unable to find mods file: ", "Failed to find mods files, result : APP_RESULT_FAILED_TO_FIND_MODS"},
      {"", "", appdata, "<r><lmlist boardType=\"Radio\"></r>", "3 (APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE)",
       "Unable to detect schema name from modification file: ",
       "Failed to parse mods files result : APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"},
      {"", classes, "", "", "5 (APP_RESULT_FAILED_TO_FIND_IMM_FILE)",
       "Ignored schemas due to missed imm files: [Radio]",
       "Failed to find IMM file, result : APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
      {"", classes, "package/share/models/Radio/imm/Radio_classes.xml", "<imm/>",
       "6 (APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME)", "expected path pattern: *<SchemaName>_*.xml, found line: ",
       "Failed to find IMM file, result : APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.result);
    TempDir dir;
    NodeBuilder node(dir.path());
    node.add(sampleSchema("Radio", "1_0_0", "1_0_0"));
    if (!c.removed.empty()) node.remove(c.removed);
    if (!c.written.empty()) dir.write(c.written, c.content);
    RunResult run = (*c.unset != '\0' ? WholeRun(node).env(c.unset) : WholeRun(node)).run();

    EXPECT_EQ(2, run.exitStatus);
    EXPECT_EQ(0u, run.report.find(std::string("Outcome: front failed with exit status ") + c.result + "\n"))
        << run.report;
    EXPECT_EQ(1u, run.loggedParts(c.cause));
    ASSERT_FALSE(run.log.empty());
    EXPECT_EQ(c.last, run.log.back());
    EXPECT_FALSE(TempDir::exists(run.outPath + "/model"));
  }
}

TEST(OutcomeTest, WrongArgumentCountAbortsBeforeAnythingElse) {
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Radio", "1_0_0", "1_0_0"));
  for (const auto& [args, message] : {std::pair<const char*, const char*>{"", "Expected exactly two argument, got 1"},
                                      {"@socket second", "Expected exactly two argument, got 3"}}) {
    RunResult run = WholeRun(node).args(args).run();
    EXPECT_EQ(3, run.exitStatus) << args;
    EXPECT_EQ(0u, run.report.find("Outcome: crash, the upgrader was ended by signal 6 (SIGABRT)\n")) << run.report;
    EXPECT_TRUE(run.logged(message)) << args;
    EXPECT_EQ(0u, run.loggedParts("Getting modification files")) << args;
    EXPECT_FALSE(TempDir::exists(run.outPath + "/model"));
  }
}

}  // namespace
}  // namespace e2e
