#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "LogRecorder.h"
#include "MockEnv.h"
#include "TempDir.h"
#include "client/UpgradeClientIf.h"
#include "client/WrapperSignal.h"

namespace {

TEST(WrapperSignalTest, ThePathIsAFormatWithoutArguments) {
  struct Case {
    const char* path;
    bool accepted;
    const char* expanded;
  };
  const Case cases[] = {{"/tmp/wrapper.sock", true, "/tmp/wrapper.sock"},
                        {"/tmp/100%%.sock", true, "/tmp/100%.sock"},
                        {"/tmp/%s.sock", false, ""},
                        {"/tmp/%d", false, ""},
                        {"/tmp/end%", false, ""}};
  for (const Case& c : cases) {
    std::string expanded;
    EXPECT_EQ(c.accepted, WrapperSignal::expandPath(c.path, &expanded)) << c.path;
    if (c.accepted) {
      EXPECT_EQ(c.expanded, expanded);
    }
  }
  std::string expanded;
  EXPECT_TRUE(WrapperSignal::expandPath(std::string(300, 'a'), &expanded));
  EXPECT_EQ(107u, expanded.size());
}

TEST(WrapperSignalTest, AFailedConnectIsReported) {
  TempDir dir;
  for (const std::string& path : {dir.path() + "/nobody.sock", dir.path() + "/%s.sock"}) {
    EXPECT_FALSE(WrapperSignal::send(path));
    EXPECT_TRUE(LogRecorder::installed().contains("Failed to connect to " + path)) << path;
  }
}

TEST(UpgradeClientIfTest, TheLoopSleepsInTenSecondStepsAndReportsDisturbances) {
  testing::NiceMock<MockEnv> env;
  EXPECT_CALL(env, sleepSeconds(10))
      .WillOnce(testing::Return(0))
      .WillOnce(testing::Return(4))
      .WillOnce(testing::Throw(std::runtime_error("stop")));
  testing::internal::CaptureStdout();
  EXPECT_THROW(UpgradeClientIf::sleepForever(env), std::runtime_error);
  EXPECT_EQ(
      "Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n"
      "sleep was disturbed, time left: 4s (sleep interval: 10s).",
      testing::internal::GetCapturedStdout());
}

}  // namespace
