#include "ReportBuilder.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <string>

namespace wrappersim {
namespace {

RunOutcome outcome(RunOutcome::Kind kind, int exitStatus = 0, int signal = 0) {
  RunOutcome o;
  o.kind = kind;
  o.exitStatus = exitStatus;
  o.signal = signal;
  o.timeoutSeconds = 1.5;
  return o;
}

struct OutcomeCase {
  RunOutcome outcome;
  int wrapperExitStatus;
  const char* line;
};

void PrintTo(const OutcomeCase& c, std::ostream* out) { *out << c.line; }

class RunOutcomeTest : public testing::TestWithParam<OutcomeCase> {};

TEST_P(RunOutcomeTest, ExitStatusAndOutcomeLine) {
  EXPECT_EQ(GetParam().wrapperExitStatus, GetParam().outcome.wrapperExitStatus());
  EXPECT_EQ(GetParam().line, GetParam().outcome.describe());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RunOutcomeTest,
    testing::Values(
        OutcomeCase{outcome(RunOutcome::Kind::kSuccess), 0,
                    "Outcome: success, the upgrader connected to the wrapper socket"},
        OutcomeCase{outcome(RunOutcome::Kind::kRolledBack), 1,
                    "Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node "
                    "rolls back"},
        OutcomeCase{outcome(RunOutcome::Kind::kFrontFailed, 1), 2,
                    "Outcome: front failed with exit status 1 (APP_RESULT_NO_WPK_ROOT)"},
        OutcomeCase{outcome(RunOutcome::Kind::kFrontFailed, 6), 2,
                    "Outcome: front failed with exit status 6 (APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME)"},
        OutcomeCase{outcome(RunOutcome::Kind::kTimeOut), 3, "Outcome: time-out, no outcome within 1.5 s"},
        OutcomeCase{outcome(RunOutcome::Kind::kCrashed, 0, SIGABRT), 3,
                    "Outcome: crash, the upgrader was ended by signal 6 (SIGABRT)"},
        OutcomeCase{outcome(RunOutcome::Kind::kUnexpectedExit, 0), 3,
                    "Outcome: crash, the upgrader exited with unexpected status 0 (APP_RESULT_OK)"},
        OutcomeCase{outcome(RunOutcome::Kind::kUnexpectedExit, 17), 3,
                    "Outcome: crash, the upgrader exited with unexpected status 17 (NOT_DECODED (17))"}));

SchemaReport conversion() {
  SchemaReport s;
  s.name = "RadioNode";
  s.fromVersion = "1_0_0";
  s.toVersion = "2_0_0";
  s.kind = SchemaReport::Kind::kConversion;
  s.announcedPathSize = 2;
  s.path = {{"/m/modification_1_0_0_to_1_1_0.xml", ConversionStep::State::kSuccess},
            {"/m/modification_1_1_0_to_2_0_0.xml", ConversionStep::State::kFailure}};
  s.result = SchemaReport::Result::kFailed;
  s.timing = "Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )";
  return s;
}

TEST(ReportBuilderTest, RolledBackRunListsReasonsPathAndDiscardedModel) {
  RunFindings findings;
  findings.rollbackReasons = {"UPGRADE FAIL: a. Failed to process modification file x", "UPGRADE FAIL: a. Final Fail"};
  findings.schemas = {conversion()};
  findings.logFiles = {"/o/log/saLogUpgrade/upgrade.log"};
  findings.discardedFiles = {"/o/discarded/RadioNode.xml"};
  EXPECT_EQ(
      "Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node rolls back\n"
      "Rollback reasons (2):\n"
      "  UPGRADE FAIL: a. Failed to process modification file x\n"
      "  UPGRADE FAIL: a. Final Fail\n"
      "Schemas (1):\n"
      "  RadioNode\n"
      "    versions: 1_0_0 -> 2_0_0 (conversion)\n"
      "    conversion path: 2 modification files\n"
      "      1. /m/modification_1_0_0_to_1_1_0.xml: SUCCESS\n"
      "      2. /m/modification_1_1_0_to_2_0_0.xml: FAILURE\n"
      "    result: failed\n"
      "    timing: Upgrade done in 5 ms (icti init took 1 ms, actions took 2 ms, finalize took 2 ms, UpgType=2 )\n"
      "    discarded model: /o/discarded/RadioNode.xml\n"
      "Persistent log:\n"
      "  /o/log/saLogUpgrade/upgrade.log\n"
      "Model files: none\n"
      "Discarded model files:\n"
      "  /o/discarded/RadioNode.xml\n",
      ReportBuilder::build(outcome(RunOutcome::Kind::kRolledBack), findings));
}

struct SchemaLineCase {
  const char* name;
  SchemaReport schema;
  std::vector<std::string> modelFiles;
  const char* expected;  // the schema's lines
};

SchemaReport schema(const char* name, SchemaReport::Kind kind, SchemaReport::Result result, const char* from = "",
                    const char* to = "") {
  SchemaReport s;
  s.name = name;
  s.kind = kind;
  s.result = result;
  s.fromVersion = from;
  s.toVersion = to;
  return s;
}

void PrintTo(const SchemaLineCase& c, std::ostream* out) { *out << c.name; }

class ReportSchemaTest : public testing::TestWithParam<SchemaLineCase> {};

TEST_P(ReportSchemaTest, SchemaLines) {
  RunFindings findings;
  findings.schemas = {GetParam().schema};
  findings.modelFiles = GetParam().modelFiles;
  std::string report = ReportBuilder::build(outcome(RunOutcome::Kind::kSuccess), findings);
  size_t start = report.find("Schemas (1):\n");
  size_t end = report.find("Persistent log");
  ASSERT_NE(std::string::npos, start);
  EXPECT_EQ(GetParam().expected, report.substr(start + 13, end - start - 13));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ReportSchemaTest,
    testing::Values(
        SchemaLineCase{"NewSchema",
                       schema("Equipment", SchemaReport::Kind::kNewSchema, SchemaReport::Result::kDone, "0_0_0",
                              "1_0_0"),
                       {"/o/model/Equipment.xml", "/o/model/Equipment.xml.bak.xml"},
                       "  Equipment\n    versions: 0_0_0 -> 1_0_0 (new schema)\n    result: done\n"
                       "    new model: /o/model/Equipment.xml\n"},
        SchemaLineCase{"SameVersionModelOfAnotherSchemaOnly",
                       schema("Transport", SchemaReport::Kind::kSameVersion, SchemaReport::Result::kDone, "3_1_0",
                              "3_1_0"),
                       {"/o/model/MyTransport.xml"},
                       "  Transport\n    versions: 3_1_0 -> 3_1_0 (same version)\n    result: done\n"
                       "    new model: none written\n"},
        SchemaLineCase{"NonUpgradeRestart",
                       schema("S", SchemaReport::Kind::kUnknown, SchemaReport::Result::kNonUpgradeRestart),
                       {},
                       "  S\n    result: non-upgrade restart, nothing to do\n    new model: none written\n"},
        SchemaLineCase{"NoPathFound",
                       [] {
                         SchemaReport s = schema("S", SchemaReport::Kind::kConversion,
                                                 SchemaReport::Result::kFailed, "1_0_0", "9_0_0");
                         s.announcedPathSize = 0;
                         return s;
                       }(),
                       {},
                       "  S\n    versions: 1_0_0 -> 9_0_0 (conversion)\n    conversion path: 0 modification files\n"
                       "    result: failed\n    new model: none written\n"},
        SchemaLineCase{"PathSizeRotatedAway",
                       [] {
                         SchemaReport s = schema("S", SchemaReport::Kind::kUnknown, SchemaReport::Result::kNotFinished);
                         s.path = {{"f.xml", ConversionStep::State::kNotFinished}};
                         return s;
                       }(),
                       {},
                       "  S\n    conversion path: size not logged\n      1. f.xml: not finished\n"
                       "    result: not finished\n    new model: none written\n"}),
    [](const testing::TestParamInfo<SchemaLineCase>& info) { return std::string(info.param.name); });

TEST(ReportBuilderTest, FrontFailureWithoutLogSaysSo) {
  std::string report = ReportBuilder::build(outcome(RunOutcome::Kind::kFrontFailed, 2), RunFindings());
  EXPECT_EQ(
      "Outcome: front failed with exit status 2 (APP_RESULT_FAILED_TO_FIND_MODS)\n"
      "Schemas: none in the persistent log\n"
      "Persistent log: none\n"
      "Model files: none\n"
      "Discarded model files: none\n",
      report);
}

}  // namespace
}  // namespace wrappersim
