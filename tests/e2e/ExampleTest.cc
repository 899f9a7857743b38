// The bundled example, upgraded as `make demo` does: the node accepts every
// class written or copied, so the demo shows the upgrader's work, never a
// broken example. What each kind of schema does is OutcomeTest's.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

TEST(ExampleTest, UpgradesCompletelyOnItsNode) {
  TempDir scratch;
  const std::string examples = EXAMPLES_DIR;
  RunResult run =
      WholeRun(RunFolders{examples + "/package", examples + "/node", scratch.path() + "/out", scratch.path()}).run();
  ASSERT_EQ(0, run.exitStatus) << run.report;
  EXPECT_EQ(std::vector<std::string>{}, run.rollback);
  EXPECT_EQ((std::vector<std::string>{"Equipment.xml", "RadioNode.xml", "Transport.xml"}), run.modelFiles());
  // The persistent log tells the run's story, counts per class included;
  // records of single instances and values go to the trace only.
  EXPECT_TRUE(run.logged("RadioNode: Class EUtranCellFDD: 9 instances to write"));
  EXPECT_EQ(0u, run.loggedParts("ATTRIBUTE("));
  EXPECT_EQ(0u, run.loggedParts("init::attr"));

  // The converted schema: renamed, dropped and added classes, every parent there.
  std::set<std::string> dns;
  for (const ModelObject& object : run.objectList("RadioNode")) dns.insert(object.dn);
  EXPECT_LE(200u, dns.size());
  for (const std::string& dn : dns) {
    const size_t comma = dn.find(',');
    EXPECT_TRUE(comma == std::string::npos || dns.count(dn.substr(comma + 1)) == 1) << "no parent for " << dn;
  }
}

}  // namespace
}  // namespace e2e
