// The signal to the wrapper. The endless loop after it is the whole runs' (its first line is what the
// wrapper reads after a failed upgrade).

#include <gtest/gtest.h>

#include <string>

#include "LogRecorder.h"
#include "TempDir.h"
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

}  // namespace
