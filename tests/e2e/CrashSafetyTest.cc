// Crash safety: the upgrader is killed (SIGKILL, by the simulated node inside
// it) at a list of points of a three-schema run: at every fourth platform
// call until a run gets through, and after each of the first objects put into
// a model file during a finalize. After each kill, every model file is a
// whole IMM document or absent, and the rollback file holds whole lines. The
// runs are made twice: once succeeding, once with a schema whose finalize
// fails, so that rollback lines are written and models move to discarded/.

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

bool wholeImmDocument(const std::string& path) {
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  bool whole = doc != nullptr && xmlStrcmp(xmlDocGetRootElement(doc)->name, BAD_CAST "IMM-contents") == 0;
  xmlFreeDoc(doc);
  return whole;
}

// Kills the run at `killPoint` (an environment setting) and checks what it left; returns whether it was killed.
bool killedRunLeavesWholeFiles(const std::string& faults, const std::string& killPoint) {
  SCOPED_TRACE(faults + " " + killPoint);
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add({sampleSchema("Radio", "1_0_0", "1_1_0"), sampleSchema("Transport", "3_1_0", "3_1_0"),
            sampleSchema("Equipment", "1_0_0", "1_1_0")});
  for (const std::string schema : {"Radio", "Equipment"}) {
    node.modificationFile(schema, "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                          NodeBuilder::readingModificationFile({schema + "Port"}));
  }
  RunResult result = WholeRun(node).faults(faults).env(killPoint).run();

  const bool killed = result.report.find("Outcome: crash, the upgrader was ended by signal 9 ") == 0;
  EXPECT_TRUE(killed || result.report.find("Outcome: crash") == std::string::npos) << result.report;
  for (const std::string folder : {"/model/", "/discarded/"}) {
    for (const std::string& file : folder == "/model/" ? result.modelFiles() : result.discardedFiles()) {
      EXPECT_TRUE(wholeImmDocument(result.outPath + folder + file)) << file;
    }
  }
  const std::string rollback = TempDir::read(result.outPath + "/rollback");
  EXPECT_TRUE(rollback.empty() || rollback.back() == '\n') << rollback;
  for (const std::string& line : result.rollback) EXPECT_EQ(0u, line.find("UPGRADE FAIL: ")) << line;
  return killed;
}

TEST(CrashSafetyTest, EveryKillLeavesWholeModelsAndRollbackLines) {
  for (const char* faults : {"", "Finalize@Equipment=21"}) {
    int kills = 0;
    for (int calls = 0; killedRunLeavesWholeFiles(faults, "VOSK_SIM_KILL_AFTER=" + std::to_string(calls));
         calls += 4) {
      ++kills;
    }
    EXPECT_GT(kills, 10) << "the kill points spread over the run";
    for (int objects = 1; objects <= 3; ++objects) {
      EXPECT_TRUE(killedRunLeavesWholeFiles(faults, "VOSK_SIM_KILL_AFTER_OBJECTS=" + std::to_string(objects)))
          << objects << " objects, killed during a finalize";
    }
  }
}

}  // namespace
}  // namespace e2e
