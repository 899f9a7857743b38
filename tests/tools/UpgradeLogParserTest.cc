#include "UpgradeLogParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wrappersim {
namespace {

std::string record(const std::string& text, const char* severity = "IN") {
  static int id = 0;
  ++id;
  char head[64];
  std::snprintf(head, sizeof head, "[2026-11-21 09:15:%02d] %010d %s ", id % 60, id, severity);
  return head + text + "\n";
}

std::string log(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += record(text);
  return result;
}

std::vector<SchemaReport> parse(const std::string& text) {
  UpgradeLogParser parser;
  parser.add(text);
  return parser.schemas();
}

const char kPathA[] = "/n/lmhi/RadioNode/modification_files/LM_R1A/modification_1_0_0_to_1_1_0.xml";
const char kPathB[] = "/n/lmhi/RadioNode/modification_files/LM_R2A/modification_1_1_0_to_2_0_0.xml";
const char kPathC[] = "/n/lmhi/RadioNode/modification_files/LM_R2A/modification_2_0_0_to_3_0_0.xml";

TEST(UpgradeLogParserTest, ThreeKindsOfUpgradeInOneRun) {
  auto schemas = parse(log({
      "UpgradeHandler::UpgradeHandler(int, char **).",
      "Getting modification files using tag RadioNode ",
      "Starting upgrader: voskOamUpgrader, for schemas: Equipment RadioNode Transport ",
      "RadioNode: UPGRADE STARTING",
      "Transport: UPGRADE STARTING",
      "RadioNode: Upgrading from (ver_rel_corr): 1_0_0 to 2_0_0",
      "Transport: Upgrading from (ver_rel_corr): 3_1_0 to 3_1_0",
      "Transport: Same from and to-version (3_1_0) for Transport",
      "RadioNode: Conversion path size: 2 modification files",
      std::string("RadioNode: Processing modification file ") + kPathA,
      std::string("RadioNode: Processing of modification file ") + kPathA + " was a SUCCESS",
      std::string("RadioNode: Processing modification file ") + kPathB,
      std::string("RadioNode: Processing of modification file ") + kPathB + " was a SUCCESS",
      "Equipment: Upgrading from (ver_rel_corr): 0_0_0 to 1_0_0",
      "Equipment: New IMM schema Equipment introduced through upgrade",
      "Transport: UPGRADE IS DONE",
      "RadioNode: Upgrade done in 57 ms (icti init took 3 ms, actions took 40 ms, finalize took 14 ms, UpgType=2 )",
      "RadioNode: UPGRADE IS DONE",
  }));
  ASSERT_EQ(3u, schemas.size());
  EXPECT_EQ("Equipment", schemas[0].name);
  EXPECT_EQ("RadioNode", schemas[1].name);
  EXPECT_EQ("Transport", schemas[2].name);

  EXPECT_EQ(SchemaReport::Kind::kNewSchema, schemas[0].kind);
  EXPECT_EQ("0_0_0", schemas[0].fromVersion);
  EXPECT_EQ(SchemaReport::Result::kNotFinished, schemas[0].result);

  const SchemaReport& radio = schemas[1];
  EXPECT_EQ(SchemaReport::Kind::kConversion, radio.kind);
  EXPECT_EQ("1_0_0", radio.fromVersion);
  EXPECT_EQ("2_0_0", radio.toVersion);
  EXPECT_EQ(2, radio.announcedPathSize);
  ASSERT_EQ(2u, radio.path.size());
  EXPECT_EQ(kPathA, radio.path[0].file);
  EXPECT_EQ(kPathB, radio.path[1].file);
  EXPECT_EQ(ConversionStep::State::kSuccess, radio.path[1].state);
  EXPECT_EQ(SchemaReport::Result::kDone, radio.result);
  EXPECT_EQ("Upgrade done in 57 ms (icti init took 3 ms, actions took 40 ms, finalize took 14 ms, UpgType=2 )",
            radio.timing);

  EXPECT_EQ(SchemaReport::Kind::kSameVersion, schemas[2].kind);
  EXPECT_EQ(SchemaReport::Result::kDone, schemas[2].result);
  EXPECT_TRUE(schemas[2].timing.empty());
}

// A failed file makes every later file of the path report FAILURE; the
// upgrader's own failure line ends with a line end, so its record continues
// on an empty line.
TEST(UpgradeLogParserTest, FailedPathKeepsEveryFileWithItsWord) {
  auto schemas = parse(log({
      "RadioNode: Conversion path size: 3 modification files",
      std::string("RadioNode: Processing modification file ") + kPathA,
      std::string("RadioNode: Processing of modification file ") + kPathA + " was a SUCCESS",
      std::string("RadioNode: Processing modification file ") + kPathB,
      std::string("RadioNode: Processing of modification file ") + kPathB + " was a FAILURE",
      std::string("RadioNode: Processing modification file ") + kPathC,
      std::string("RadioNode: Processing of modification file ") + kPathC + " was a FAILURE",
      "RadioNode: Upgrade of RadioNode failed. No signal is sent to upgradeWrapper because QRN will do a rollback so "
      "there is no point in signaling a success.\n",
      "Some later main-thread line",
  }));
  ASSERT_EQ(1u, schemas.size());
  const std::vector<ConversionStep>& path = schemas[0].path;
  ASSERT_EQ(3u, path.size());
  EXPECT_EQ(ConversionStep::State::kSuccess, path[0].state);
  EXPECT_EQ(ConversionStep::State::kFailure, path[1].state);
  EXPECT_EQ(ConversionStep::State::kFailure, path[2].state);
  EXPECT_EQ(kPathC, path[2].file);
  EXPECT_EQ(SchemaReport::Result::kFailed, schemas[0].result);
}

struct ResultCase {
  const char* name;
  std::vector<std::string> texts;
  SchemaReport::Result result;
  size_t pathSize;
  ConversionStep::State lastStep;
};

void PrintTo(const ResultCase& c, std::ostream* out) { *out << c.name; }

class UpgradeLogParserResultTest : public testing::TestWithParam<ResultCase> {};

TEST_P(UpgradeLogParserResultTest, SchemaEndsAsLogged) {
  auto schemas = parse(log(GetParam().texts));
  ASSERT_EQ(1u, schemas.size());
  EXPECT_EQ("S1", schemas[0].name);
  EXPECT_EQ(GetParam().result, schemas[0].result);
  ASSERT_EQ(GetParam().pathSize, schemas[0].path.size());
  if (!schemas[0].path.empty()) {
    EXPECT_EQ(GetParam().lastStep, schemas[0].path.back().state);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UpgradeLogParserResultTest,
    testing::Values(
        ResultCase{"NonUpgradeRestart", {"S1: Non-upgrade restart, nothing to do.", "S1: UPGRADE IS DONE"},
                   SchemaReport::Result::kDone, 0, ConversionStep::State::kNotFinished},
        ResultCase{"OnlyNonUpgradeRestart", {"S1: Non-upgrade restart, nothing to do."},
                   SchemaReport::Result::kNonUpgradeRestart, 0, ConversionStep::State::kNotFinished},
        ResultCase{"CutOffInsideAFile", {"S1: UPGRADE STARTING", "S1: Processing modification file x/modification_1_0_0_to_2_0_0.xml"},
                   SchemaReport::Result::kNotFinished, 1, ConversionStep::State::kNotFinished},
        // The start of the log was rotated away: only the end line is left.
        ResultCase{"OnlyTheResultLine", {"S1: Processing of modification file f.xml was a FAILURE"},
                   SchemaReport::Result::kNotFinished, 1, ConversionStep::State::kFailure},
        ResultCase{"SameFileTwiceInAPath",
                   {"S1: Processing modification file f.xml", "S1: Processing of modification file f.xml was a SUCCESS",
                    "S1: Processing modification file f.xml", "S1: Processing of modification file f.xml was a FAILURE"},
                   SchemaReport::Result::kNotFinished, 2, ConversionStep::State::kFailure}),
    [](const testing::TestParamInfo<ResultCase>& info) { return std::string(info.param.name); });

// Texts that look like "<name>: ..." but are none of a schema thread's
// messages the report uses must not make up schemas.
TEST(UpgradeLogParserTest, IgnoresLinesThatAreNoSchemaMessages) {
  auto schemas = parse(log({
      "Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT",
      "Unable to find mods file: /pkg/appdata/voskOamUpgradeModLm.xml",
      "UPGRADE FAIL: Application identity: wmtName = x, wmtNumber = y, wmtRevision = z, wpkRevision = w. Final Fail",
      "ABN: something odd",
      "S1: UPGRADE STARTING",
      "S1: Inserting class EUtranCellFDD, rdn attr eUtranCellFDDId",
  }));
  ASSERT_EQ(1u, schemas.size());
  EXPECT_EQ("S1", schemas[0].name);
}

TEST(UpgradeLogParserTest, ContinuationLinesBelongToTheRecordBefore) {
  UpgradeLogParser parser;
  parser.add(record("first") + "second line\n" + record("S1: UPGRADE IS DONE"));
  ASSERT_EQ(2u, parser.records().size());
  EXPECT_EQ("first\nsecond line", parser.records()[0]);
  EXPECT_EQ("S1: UPGRADE IS DONE", parser.records()[1]);
}

TEST(UpgradeLogParserTest, RotatedFilesAddUpInOrder) {
  UpgradeLogParser parser;
  parser.add(log({"S1: Upgrading from (ver_rel_corr): 1_0_0 to 1_0_1"}));
  parser.add(log({"S1: Upgrading from (ver_rel_corr): 1_0_1 to 1_0_2", "S1: UPGRADE IS DONE"}));
  auto schemas = parser.schemas();
  ASSERT_EQ(1u, schemas.size());
  EXPECT_EQ("1_0_1", schemas[0].fromVersion);
  EXPECT_EQ("1_0_2", schemas[0].toVersion);
}

TEST(UpgradeLogParserTest, AcceptsOnlyWellFormedRecordHeads) {
  UpgradeLogParser parser;
  parser.add(
      "[2026-11-21 09:15:00] 0000000001 ER an error\n"
      "[2026-11-21 09:15:00] 0000000002 IN \n"
      "[2026-11-21 09:15:00] 00000003 IN short number\n"
      "2026-11-21 09:15:00] 0000000004 IN no bracket\n");
  ASSERT_EQ(2u, parser.records().size());
  EXPECT_EQ("an error", parser.records()[0]);
  EXPECT_EQ("\n[2026-11-21 09:15:00] 00000003 IN short number\n2026-11-21 09:15:00] 0000000004 IN no bracket",
            parser.records()[1]);
}

TEST(UpgradeLogParserTest, SchemaListWithoutOtherLinesStillNamesEverySchema) {
  auto schemas = parse(log({"Starting upgrader: ( null ), for schemas: B A "}));
  ASSERT_EQ(2u, schemas.size());
  EXPECT_EQ("B", schemas[0].name);
  EXPECT_EQ("A", schemas[1].name);
  EXPECT_EQ(SchemaReport::Result::kNotFinished, schemas[1].result);
}

}  // namespace
}  // namespace wrappersim
