// A whole run in which the conversion tool is busy once when the session is
// opened. The upgrader pauses the real 5 seconds before it tries again, so
// this test is labelled slow.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

TEST(SessionRetryTest, BusyConversionToolIsAskedAgainAfterAPause) {
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Radio", "1_0_0", "1_1_0"));
  node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                        NodeBuilder::readingModificationFile({"RadioPort"}));
  auto start = std::chrono::steady_clock::now();
  RunResult result = WholeRun(node).faults("Initialize=31x1").run();
  auto elapsed = std::chrono::steady_clock::now() - start;

  EXPECT_EQ(0, result.exitStatus) << result.report << result.errors;
  EXPECT_EQ(1u, result.loggedParts("Radio: Failed to init upgrade, error 31, handle value "));
  EXPECT_EQ(1u, result.loggedParts(". Initialize ICTI attempt: 1 out of 3."));
  EXPECT_EQ(0u, result.loggedParts("Initialize ICTI attempt: 2 out of 3."));
  EXPECT_TRUE(result.logged("Radio: UPGRADE IS DONE"));
  EXPECT_TRUE(result.rollback.empty());
  EXPECT_EQ(3u, result.modelDns("Radio").size());
  EXPECT_GE(elapsed, std::chrono::seconds(5)) << "the retry comes after the pause";
}

}  // namespace
}  // namespace e2e
