#include "ReportBuilder.h"

#include <gtest/gtest.h>

#include <string>

namespace wrappersim {
namespace {

SchemaReport schema(const char* name, SchemaReport::Kind kind, SchemaReport::Result result, const char* from = "",
                    const char* to = "", long announcedPathSize = -1, std::vector<ConversionStep> path = {}) {
  SchemaReport s;
  s.name = name;
  s.kind = kind;
  s.result = result;
  s.fromVersion = from;
  s.toVersion = to;
  s.announcedPathSize = announcedPathSize;
  s.path = path;
  return s;
}

TEST(ReportBuilderTest, OutcomeRollbackReasonsSchemasAndFiles) {
  using Kind = SchemaReport::Kind;
  using Result = SchemaReport::Result;
  using State = ConversionStep::State;
  using Use = CandidateFile::Use;
  SchemaReport failed = schema("RadioNode", Kind::kConversion, Result::kFailed, "1_0_0", "2_0_0", 3,
                               {{"/m/modification_1_0_0_to_1_1_0.xml", State::kSuccess, ""},
                                {"/m/modification_1_1_0_to_1_2_0.xml", State::kFailure, "Bad value (at /m/b.xml:3)"},
                                {"/m/modification_1_2_0_to_2_0_0.xml", State::kFailure, ""}});
  failed.candidates = {{"/m/modification_1_0_0_to_1_1_0.xml", Use::kTaken, "1_0_0", "1_1_0", ""},
                       {"/m/modification_1_0_0_to_9_0_0.xml", Use::kNeverUsed, "1_0_0", "9_0_0", "why not"},
                       {"/m/modification_x.xml", Use::kIgnored, "", "", "why ignored"}};
  failed.timing = "Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )";
  SchemaReport noFileFrom = schema("NoPath", Kind::kConversion, Result::kFailed, "1_0_0", "9_0_0", 0);
  noFileFrom.pathBreak = {"1_0_0", "1_1_0", ""};
  SchemaReport cycle = schema("Cycle", Kind::kConversion, Result::kFailed, "1_0_0", "9_0_0", 0);
  cycle.pathBreak = {"1_0_0", "", "/m/a.xml"};
  const struct {
    const char* name;
    RunOutcome::Kind kind;
    int exitStatus;
    RunFindings findings;
    const char* report;
  } cases[] = {
      {"an exit status past the AppResult table, no log",
       RunOutcome::Kind::kUnexpectedExit,
       7,
       {},
       "Outcome: crash, the upgrader exited with unexpected status 7 (NOT_DECODED (7))\n"
       "Schemas: none in the persistent log\n"
       "Persistent log: none\n"
       "Model files: none\n"
       "Discarded model files: none\n"},
      {"rolled back, every kind of schema",
       RunOutcome::Kind::kRolledBack,
       0,
       {{"UPGRADE FAIL: a. Failed to process modification file x", "UPGRADE FAIL: a. Final Fail"},
        {"old model [/n/a.xml] warning: line 3: given twice", "Call [S] error 12: no such class"},
        {failed, schema("Equipment", Kind::kNewSchema, Result::kDone, "0_0_0", "1_0_0"),
         schema("Transport", Kind::kSameVersion, Result::kDone, "3_1_0", "3_1_0"),
         noFileFrom, cycle,
         schema("Rotated", Kind::kUnknown, Result::kNotFinished, "", "", -1,
                {{"e.xml", State::kSuccess, ""}, {"f.xml", State::kFailure, ""},
                 {"g.xml", State::kNotFinished, "Cut short"}})},
        {"/o/log/saLogUpgrade/upgrade.log.1", "/o/log/saLogUpgrade/upgrade.log"},
        {"/o/model/Equipment.xml", "/o/model/Equipment.xml.bak.xml", "/o/model/MyTransport.xml"},
        {"/o/discarded/RadioNode.xml"}},
       "Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node rolls back\n"
       "Rollback reasons (2):\n"
       "  UPGRADE FAIL: a. Failed to process modification file x\n"
       "  UPGRADE FAIL: a. Final Fail\n"
       "Refused by the simulated node (1):\n"
       "  Call [S] error 12: no such class\n"
       "Warnings of the simulated node (1):\n"
       "  old model [/n/a.xml] warning: line 3: given twice\n"
       "Schemas (6):\n"
       "  RadioNode\n"
       "    versions: 1_0_0 -> 2_0_0 (conversion)\n"
       "    modification files found (3):\n"
       "      /m/modification_1_0_0_to_1_1_0.xml: 1_0_0 -> 1_1_0\n"
       "      /m/modification_1_0_0_to_9_0_0.xml: 1_0_0 -> 9_0_0, never used: why not\n"
       "      /m/modification_x.xml: ignored: why ignored\n"
       "    conversion path: 3 modification files\n"
       "      1. /m/modification_1_0_0_to_1_1_0.xml: SUCCESS\n"
       "      2. /m/modification_1_1_0_to_1_2_0.xml: FAILURE\n"
       "         cause: Bad value (at /m/b.xml:3)\n"
       "      3. /m/modification_1_2_0_to_2_0_0.xml: FAILURE\n"
       "         not applied: an earlier file failed\n"
       "    result: failed\n"
       "    timing: Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )\n"
       "    discarded model: /o/discarded/RadioNode.xml\n"
       "  Equipment\n    versions: 0_0_0 -> 1_0_0 (new schema)\n    result: done\n"
       "    new model: /o/model/Equipment.xml\n"
       "  Transport\n    versions: 3_1_0 -> 3_1_0 (same version)\n    result: done\n    new model: none written\n"
       "  NoPath\n    versions: 1_0_0 -> 9_0_0 (conversion)\n"
       "    conversion path: none, the chain from 1_0_0 breaks at 1_1_0: no file starts there\n"
       "    result: failed\n    new model: none written\n"
       "  Cycle\n    versions: 1_0_0 -> 9_0_0 (conversion)\n"
       "    conversion path: none, the chain from 1_0_0 takes /m/a.xml twice\n"
       "    result: failed\n    new model: none written\n"
       "  Rotated\n    conversion path: size not logged\n"
       "      1. e.xml: SUCCESS\n"
       "      2. f.xml: FAILURE\n         cause: none in the log\n"
       "      3. g.xml: not finished\n         cause: Cut short\n"
       "    result: not finished\n    new model: none written\n"
       "Persistent log:\n  /o/log/saLogUpgrade/upgrade.log.1\n  /o/log/saLogUpgrade/upgrade.log\n"
       "Model files:\n  /o/model/Equipment.xml\n  /o/model/Equipment.xml.bak.xml\n  /o/model/MyTransport.xml\n"
       "Discarded model files:\n  /o/discarded/RadioNode.xml\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    RunOutcome outcome;
    outcome.kind = c.kind;
    outcome.exitStatus = c.exitStatus;
    EXPECT_EQ(c.report, ReportBuilder::build(outcome, c.findings));
  }
}

}  // namespace
}  // namespace wrappersim
