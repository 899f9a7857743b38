#include "UpgradeLogParser.h"

#include <gtest/gtest.h>

#include <cstdio>
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

// One line for all the parser found about a schema.
std::string summary(const SchemaReport& s) {
  const char* kinds[] = {"unknown", "same", "new", "conversion"};
  const char* results[] = {"not finished", "done", "failed", "non-upgrade restart"};
  const char* states[] = {"?", "SUCCESS", "FAILURE"};
  const char* uses[] = {"", " ignored", " never used"};
  std::string text = s.name + " " + kinds[static_cast<int>(s.kind)] + " " + s.fromVersion + "->" + s.toVersion;
  for (const CandidateFile& c : s.candidates) {
    text += " [" + c.file + uses[static_cast<int>(c.use)] + " " + c.fromVersion + "->" + c.toVersion +
            (c.why.empty() ? "" : ": " + c.why) + "]";
  }
  const PathBreak& b = s.pathBreak;
  if (!b.from.empty() || !b.missingVersion.empty() || !b.repeatedFile.empty()) {
    text += " break from " + b.from + " at " + b.missingVersion + " twice " + b.repeatedFile;
  }
  text += " path " + std::to_string(s.announcedPathSize) + ":";
  for (const ConversionStep& step : s.path) {
    text += " " + step.file + "=" + states[static_cast<int>(step.state)] +
            (step.cause.empty() ? "" : "(" + step.cause + ")");
  }
  return text + " " + results[static_cast<int>(s.result)] + (s.timing.empty() ? "" : " | " + s.timing);
}

// A failure request as the upgrader logs it; a dot and a blank in the name do
// not end the identity.
std::string failure(const std::string& reason) {
  return "UPGRADE FAIL: Application identity: wmtName = vosk. Upgrader, wmtNumber = CXC1740923, wmtRevision = R4A12, "
         "wpkRevision = R4A12. " + reason;
}

const std::string kTiming =
    "Upgrade done in 57 ms (icti init took 3 ms, actions took 40 ms, finalize took 14 ms, UpgType=2 )";

TEST(UpgradeLogParserTest, GathersWhatEachSchemaThreadLogged) {
  const struct {
    const char* name;
    std::vector<std::string> texts;  // record texts; "@file" starts the next rotated file
    std::vector<std::string> schemas;
    std::vector<std::string> rollback = {};  // the node's rollback file
  } cases[] = {
      {"three kinds of upgrade in one run",
       {"UpgradeHandler::UpgradeHandler(int, char **).", "Getting modification files using tag RadioNode ",
        "Starting upgrader: voskOamUpgrader, for schemas: Equipment RadioNode Transport ",
        "RadioNode: UPGRADE STARTING", "Transport: UPGRADE STARTING",
        "RadioNode: Upgrading from (ver_rel_corr): 1_0_0 to 2_0_0",
        "Transport: Upgrading from (ver_rel_corr): 3_1_0 to 3_1_0",
        "Transport: Same from and to-version (3_1_0) for Transport",
        "RadioNode: Conversion path size: 2 modification files",
        "RadioNode: Processing modification file /m/LM_R1A/modification_1_0_0_to_1_1_0.xml",
        "RadioNode: Processing of modification file /m/LM_R1A/modification_1_0_0_to_1_1_0.xml was a SUCCESS",
        "RadioNode: Processing modification file /m/b.xml", "RadioNode: Processing of modification file /m/b.xml was a SUCCESS",
        "Equipment: Upgrading from (ver_rel_corr): 0_0_0 to 1_0_0",
        "Equipment: New IMM schema Equipment introduced through upgrade", "Transport: UPGRADE IS DONE",
        "RadioNode: " + kTiming, "RadioNode: UPGRADE IS DONE"},
       {"Equipment new 0_0_0->1_0_0 path -1: not finished",
        "RadioNode conversion 1_0_0->2_0_0 path 2: /m/LM_R1A/modification_1_0_0_to_1_1_0.xml=SUCCESS "
        "/m/b.xml=SUCCESS done | " + kTiming,
        "Transport same 3_1_0->3_1_0 path -1: done"}},
      // The failure line ends with a line end, so its record continues on an empty line.
      {"a failed file makes every later file of the path FAILURE; a file's first reason is its cause",
       {"S1: Conversion path size: 3 modification files", "S1: " + failure("Before any file"),
        "S1: Processing modification file a.xml", "S1: Processing of modification file a.xml was a SUCCESS",
        "S1: Processing modification file b.xml", "S1: " + failure("Bad value\nof x (at b.xml:3, Mo C, A)\n"),
        "S1: " + failure("Failed to process modification file b.xml"),
        "S1: Processing of modification file b.xml was a FAILURE", "S1: Processing modification file c.xml",
        "S1: Processing of modification file c.xml was a FAILURE", "S1: " + failure("Final Fail"),
        "S1: Upgrade of S1 failed. No signal is sent to upgradeWrapper because QRN will do a rollback so there is no "
        "point in signaling a success.\n",
        "Some later main-thread line"},
       {"S1 conversion -> path 3: a.xml=SUCCESS b.xml=FAILURE(Bad value of x (at b.xml:3, Mo C, A)) c.xml=FAILURE "
        "failed"}},
      // The log cuts long records; the rollback file has the whole request, and a whole cause is kept even when a
      // longer request starts with it.
      {"a cause cut in the log is taken whole from the rollback file",
       {"S1: Processing modification file a.xml", "S1: " + failure("Failed to process modification file a.xml"),
        "S1: Processing modification file b.xml", "S1: " + failure("Bad value xxx (at b.x")},
       {"S1 unknown -> path -1: a.xml=?(Failed to process modification file a.xml) "
        "b.xml=?(Bad value xxx (at b.xml:3, Mo C, A)) not finished"},
       {failure("Failed to process modification file a.xml.old"), failure("Failed to process modification file a.xml"),
        failure("Bad value xxx (at b.xml:3, Mo C, A)")}},
      {"the files given, and chains that break where no file starts or come back to a file",
       {"S1: Modification file /m/a.xml takes the schema from 1_0_0 to 1_1_0",
        "S1: Modification file /m/b (from 1_0_0).xml (from 1_0_0 to 2_0_0) is never used: /m/a.xml starts at 1_0_0 "
        "too and comes first",
        "S1: Modification file /m/a-b.xml is ignored: its name is not modification_<from>_to_<to>.xml",
        "S1: A modfile with from-version 1_1_0 could not be found",
        "S1: Could not calculate Conversion Path between versions from: 1_0_0 and to: 2_0_0",
        "S1: " + failure("Unable to find a conversion path"), "S1: Conversion path size: 0 modification files",
        "S2: A modfile, /m/a.xml, was found more than once in the upgrade path",
        "S2: Could not calculate Conversion Path between versions from: 3_0_0 and to: 4_0_0"},
       {"S1 conversion -> [/m/a.xml 1_0_0->1_1_0] [/m/b (from 1_0_0).xml never used 1_0_0->2_0_0: /m/a.xml starts at "
        "1_0_0 too and comes first] [/m/a-b.xml ignored ->: its name is not modification_<from>_to_<to>.xml] "
        "break from 1_0_0 at 1_1_0 twice  path 0: not finished",
        "S2 unknown -> break from 3_0_0 at  twice /m/a.xml path -1: not finished"}},
      {"only the non-upgrade restart", {"S1: Non-upgrade restart, nothing to do."},
       {"S1 unknown -> path -1: non-upgrade restart"}},
      {"cut off inside a file", {"S1: UPGRADE STARTING", "S1: Processing modification file x/m.xml"},
       {"S1 unknown -> path -1: x/m.xml=? not finished"}},
      {"the start was rotated away, only the end line is left",
       {"S1: Processing of modification file f.xml was a FAILURE"}, {"S1 unknown -> path -1: f.xml=FAILURE not finished"}},
      {"the same file twice in a path",
       {"S1: Processing modification file f.xml", "S1: Processing of modification file f.xml was a SUCCESS",
        "S1: Processing modification file f.xml", "S1: Processing of modification file f.xml was a FAILURE"},
       {"S1 unknown -> path -1: f.xml=SUCCESS f.xml=FAILURE not finished"}},
      {"lines that are no schema messages make up no schemas",
       {"Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT",
        "Unable to find mods file: /pkg/appdata/voskOamUpgradeModLm.xml",
        "UPGRADE FAIL: Application identity: wmtName = x, wmtNumber = y, wmtRevision = z, wpkRevision = w. Final Fail",
        "ABN: something odd", "S1: UPGRADE STARTING", "S1: Inserting class EUtranCellFDD, rdn attr eUtranCellFDDId",
        "S1: Modification file /m/a.xml declares a document type; modification files take no DTD",
        "S2: Upgrading from (ver_rel_corr): 1_0_0"},
       {"S1 unknown -> path -1: not finished"}},
      {"rotated files add up in order",
       {"S1: Upgrading from (ver_rel_corr): 1_0_0 to 1_0_1", "@file", "S1: Upgrading from (ver_rel_corr): 1_0_1 to 1_0_2",
        "S1: UPGRADE IS DONE"},
       {"S1 unknown 1_0_1->1_0_2 path -1: done"}},
      {"the schema list alone names every schema in its order", {"Starting upgrader: ( null ), for schemas: B A "},
       {"B unknown -> path -1: not finished", "A unknown -> path -1: not finished"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    UpgradeLogParser parser;
    std::string file;
    for (const std::string& text : c.texts) {
      if (text != "@file") {
        file += record(text);
        continue;
      }
      parser.add(file);
      file.clear();
    }
    parser.add(file);
    std::vector<std::string> schemas;
    for (const SchemaReport& schema : parser.schemas(c.rollback)) schemas.push_back(summary(schema));
    EXPECT_EQ(c.schemas, schemas);
  }
}

// A line that does not start like a record continues the record before it.
TEST(UpgradeLogParserTest, RecordsAreTheWellFormedHeadsWithTheirContinuationLines) {
  UpgradeLogParser parser;
  parser.add(record("first") + "second line\n" + record("an error", "ER") + record("") +
             "[2026-11-21 09:15:00] 00000003 IN short number\n"
             "2026-11-21 09:15:00] 0000000004 IN no bracket\n");
  EXPECT_EQ((std::vector<std::string>{"first\nsecond line", "an error",
                                      "\n[2026-11-21 09:15:00] 00000003 IN short number\n"
                                      "2026-11-21 09:15:00] 0000000004 IN no bracket"}),
            parser.records());
}

}  // namespace
}  // namespace wrappersim
