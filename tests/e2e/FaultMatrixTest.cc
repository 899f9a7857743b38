// The fault matrix: each platform call the simulated node can fail, with the
// result codes that matter, through a whole run of two schemas (Radio
// converts, reading and writing RadioPort and copying Radio; Transport keeps
// its version). Each cell holds the outcome the run must have, and every cell
// checks what must never happen: a crash, a hang, a success connect after a
// rollback request, or a model file outside discarded/ after one. The table
// is published in docs/reliability.md. One cell waits out the real retry
// pause of a session open (5 s), so the test is labelled slow; the pauses
// themselves are counted in IctiHandlerTest.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

enum class Outcome {
  kDone,        // both schemas converted, success connect, no rollback
  kRolledBack,  // "Final Fail", a rollback requested with `text` among its reasons, no model in model/
  kAborted,     // the process aborts (SIGABRT), as it does on purpose for a bad handle on an open session
  kUnrecorded,  // the run fails, but the node refused the rollback request: nothing in the rollback file
};

struct Cell {
  const char* faults;
  Outcome outcome;
  const char* text;  // kRolledBack: part of a rollback reason; otherwise part of a log record ("" none)
  bool fullLog;      // kDone: the log still tells the whole run
};

void PrintTo(const Cell& cell, std::ostream* out) { *out << cell.faults; }

const Cell kCells[] = {
    {"Initialize=31x1", Outcome::kDone, "Initialize ICTI attempt: 1 out of 3.", true},
    {"Initialize=6", Outcome::kRolledBack, "Could not init ICTI session for schemaName: \"Radio\"", true},
    {"Initialize=10x1+1", Outcome::kRolledBack, "Could not init ICTI session for schemaName", true},
    {"Initialize=21", Outcome::kRolledBack, "Could not init ICTI session for schemaName: \"Transport\"", true},
    {"ReadSchemaVersion@Radio=6", Outcome::kRolledBack, "Failed to get schema versions for Radio, error 6!", true},
    {"ReadSchemaVersion@Radio=12", Outcome::kRolledBack, "Failed to get from and to version for schemaName", true},
    {"ReadSchemaVersion=5+1", Outcome::kRolledBack, "Failed to get schema versions for", true},
    {"ReadInstances@RadioPort=6", Outcome::kRolledBack, "", true},
    {"InstanceGroupsMemoryFree=9", Outcome::kRolledBack, "Failed to free memory, error code 9", true},
    {"WriteInstances@Radio=6", Outcome::kRolledBack, "Write instances init failed, SaAisErrorT = 6", true},
    {"CopyInstances@Radio=10", Outcome::kRolledBack, "Copy instances init failed, SaAisErrorT = 10", true},
    {"WriteRtInstances=21", Outcome::kDone, "", true},
    {"Finalize@Radio=6", Outcome::kRolledBack, "Final Fail", true},
    {"Finalize=21+1", Outcome::kRolledBack, "Final Fail", true},
    {"FailUpgrade=21,WriteInstances@Radio=21", Outcome::kUnrecorded, "Failed to trigger rollback. Error: 21", true},
    {"FailUpgrade=9,WriteInstances@Radio=21", Outcome::kAborted, "The program will be aborted.", true},
    {"FailUpgrade=9,Initialize=21x1", Outcome::kUnrecorded, "Failed to trigger rollback. Error: 9", true},
    {"get_lms@Radio=6", Outcome::kRolledBack, "Unable to find a conversion path", true},
    {"LogInitialize=6", Outcome::kDone, "", false},
    {"LogStreamOpen=5", Outcome::kDone, "", false},
    {"LogWriteLogAsync=10+20", Outcome::kDone, "", false},
    {"LogWriteLogAsync=6x1+20", Outcome::kDone, "Failed to write to the stream, error = 6", false},
    {"LogFinalize=9", Outcome::kDone, "", true},
    {"LogWriteLogAsync=2,WriteInstances@Radio=21", Outcome::kRolledBack, "Write instances init failed", false},
};

class FaultMatrixTest : public testing::TestWithParam<Cell> {};

TEST_P(FaultMatrixTest, OutcomeAndInvariants) {
  const Cell& cell = GetParam();
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add({sampleSchema("Radio", "1_0_0", "1_1_0"), sampleSchema("Transport", "3_1_0", "3_1_0")});
  node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                        modifications(mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))));
  RunResult run = WholeRun(node).faults(cell.faults).run();
  SCOPED_TRACE(run.report + run.rollbackText() + run.errors);

  const bool aborted = run.report.find("Outcome: crash, the upgrader was ended by signal 6 ") == 0;
  EXPECT_EQ(cell.outcome == Outcome::kAborted, aborted);
  EXPECT_EQ(std::string::npos, run.report.find("Outcome: time-out"));
  EXPECT_TRUE(aborted || run.report.find("Outcome: crash") == std::string::npos);
  if (!run.rollback.empty()) {
    EXPECT_EQ(std::string::npos, run.report.find("connected to the wrapper socket"));
    EXPECT_EQ(std::vector<std::string>{}, run.modelFiles());
  }
  switch (cell.outcome) {
    case Outcome::kDone:
      EXPECT_EQ(0, run.exitStatus);
      EXPECT_TRUE(run.rollback.empty());
      EXPECT_EQ((std::vector<std::string>{"Radio.xml", "Transport.xml"}), run.modelFiles());
      EXPECT_EQ(3u, run.objects("Radio").size()) << "the model is whole";
      EXPECT_EQ(0u, run.objects("Radio")["radioPortId=2,radioId=1"].attrs.count("weight")) << "and converted";
      EXPECT_EQ(cell.fullLog, run.logged("Radio: UPGRADE IS DONE") && run.logged("Transport: UPGRADE IS DONE"));
      EXPECT_TRUE(*cell.text == '\0' || run.loggedParts(cell.text) == 1);
      break;
    case Outcome::kRolledBack:
      EXPECT_EQ(1, run.exitStatus);
      EXPECT_NE(std::string::npos, run.rollbackText().find(cell.text));
      EXPECT_NE(std::string::npos, run.rollbackText().find("Final Fail"));
      EXPECT_TRUE(!cell.fullLog || run.loggedParts("Final Fail") >= 1);
      break;
    case Outcome::kUnrecorded:
      EXPECT_EQ(1u, run.modelFiles().size()) << "the node saw no rollback: the other schema's model stays";
      [[fallthrough]];
    case Outcome::kAborted:
      EXPECT_NE(0, run.exitStatus);
      EXPECT_TRUE(run.rollback.empty());
      EXPECT_GE(run.loggedParts(cell.text), 1u);
      break;
  }
}

INSTANTIATE_TEST_SUITE_P(Cells, FaultMatrixTest, testing::ValuesIn(kCells), [](const auto& info) {
  std::string name = std::to_string(info.index) + "_" + info.param.faults;
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
});

}  // namespace
}  // namespace e2e
