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
  SchemaReport failed = schema("RadioNode", Kind::kConversion, Result::kFailed, "1_0_0", "2_0_0", 2,
                               {{"/m/modification_1_0_0_to_1_1_0.xml", State::kSuccess},
                                {"/m/modification_1_1_0_to_2_0_0.xml", State::kFailure}});
  failed.timing = "Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )";
  const struct {
    const char* name;
    RunOutcome::Kind kind;
    int exitStatus;
    RunFindings findings;
    const char* report;
  } cases[] = {
      {"front failure without log",
       RunOutcome::Kind::kFrontFailed,
       6,
       {},
       "Outcome: front failed with exit status 6 (APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME)\n"
       "Schemas: none in the persistent log\n"
       "Persistent log: none\n"
       "Model files: none\n"
       "Discarded model files: none\n"},
      {"rolled back, every kind of schema",
       RunOutcome::Kind::kRolledBack,
       0,
       {{"UPGRADE FAIL: a. Failed to process modification file x", "UPGRADE FAIL: a. Final Fail"},
        {},
        {failed, schema("Equipment", Kind::kNewSchema, Result::kDone, "0_0_0", "1_0_0"),
         schema("Transport", Kind::kSameVersion, Result::kDone, "3_1_0", "3_1_0"),
         schema("S", Kind::kUnknown, Result::kNonUpgradeRestart),
         schema("NoPath", Kind::kConversion, Result::kFailed, "1_0_0", "9_0_0", 0),
         schema("Rotated", Kind::kUnknown, Result::kNotFinished, "", "", -1, {{"f.xml", State::kNotFinished}})},
        {"/o/log/saLogUpgrade/upgrade.log.1", "/o/log/saLogUpgrade/upgrade.log"},
        {"/o/model/Equipment.xml", "/o/model/Equipment.xml.bak.xml", "/o/model/MyTransport.xml"},
        {"/o/discarded/RadioNode.xml"}},
       "Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node rolls back\n"
       "Rollback reasons (2):\n"
       "  UPGRADE FAIL: a. Failed to process modification file x\n"
       "  UPGRADE FAIL: a. Final Fail\n"
       "Schemas (6):\n"
       "  RadioNode\n"
       "    versions: 1_0_0 -> 2_0_0 (conversion)\n"
       "    conversion path: 2 modification files\n"
       "      1. /m/modification_1_0_0_to_1_1_0.xml: SUCCESS\n"
       "      2. /m/modification_1_1_0_to_2_0_0.xml: FAILURE\n"
       "    result: failed\n"
       "    timing: Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )\n"
       "    discarded model: /o/discarded/RadioNode.xml\n"
       "  Equipment\n    versions: 0_0_0 -> 1_0_0 (new schema)\n    result: done\n"
       "    new model: /o/model/Equipment.xml\n"
       "  Transport\n    versions: 3_1_0 -> 3_1_0 (same version)\n    result: done\n    new model: none written\n"
       "  S\n    result: non-upgrade restart, nothing to do\n    new model: none written\n"
       "  NoPath\n    versions: 1_0_0 -> 9_0_0 (conversion)\n    conversion path: 0 modification files\n"
       "    result: failed\n    new model: none written\n"
       "  Rotated\n    conversion path: size not logged\n      1. f.xml: not finished\n"
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

TEST(ReportBuilderTest, CodesPastTheAppResultTableAreNotDecoded) {
  EXPECT_EQ("APP_RESULT_OK", appResultName(0));
  EXPECT_EQ("APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME", appResultName(6));
  EXPECT_EQ("NOT_DECODED (7)", appResultName(7));
  EXPECT_EQ("NOT_DECODED (-1)", appResultName(-1));
}

}  // namespace
}  // namespace wrappersim
