#include "client/UpgradeClientIf.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "FakeClock.h"
#include "LogRecorder.h"
#include "TempDir.h"
#include "client/WrapperSignal.h"
#include "common/MessageFormatter.h"

namespace {

// A listening UNIX-domain socket that counts the connections it accepts.
class Listener {
 public:
  explicit Listener(const std::string& path) : path_(path) {
    fd_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (::bind(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || ::listen(fd_, 4) != 0) {
      throw std::runtime_error("cannot listen on " + path);
    }
  }
  ~Listener() { ::close(fd_); }
  // True when a connection is waiting; accepts it.
  bool accepted() {
    int client = ::accept4(fd_, nullptr, nullptr, SOCK_NONBLOCK);
    if (client < 0) return false;
    ::close(client);
    return true;
  }
  void nonBlocking() { ::fcntl(fd_, F_SETFL, O_NONBLOCK); }

 private:
  std::string path_;
  int fd_;
};

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

TEST(WrapperSignalTest, TheSignalIsABareConnect) {
  TempDir dir;
  Listener listener(dir.path() + "/wrapper.sock");
  listener.nonBlocking();
  EXPECT_TRUE(WrapperSignal::send(dir.path() + "/wrapper.sock"));
  EXPECT_TRUE(listener.accepted());
}

TEST(WrapperSignalTest, AFailedConnectIsReported) {
  TempDir dir;
  for (const std::string& path : {dir.path() + "/nobody.sock", dir.path() + "/%s.sock"}) {
    EXPECT_FALSE(WrapperSignal::send(path));
    EXPECT_TRUE(LogRecorder::installed().contains("Failed to connect to " + path)) << path;
  }
}

// Ends the never-ending loop from a test by throwing out of a sleep.
class StoppingClock : public FakeClock {
 public:
  unsigned int sleepSeconds(unsigned int seconds) override {
    if (sleeps.size() == 3) throw std::runtime_error("stop");
    return FakeClock::sleepSeconds(seconds);
  }
};

TEST(UpgradeClientIfTest, TheLoopSleepsInTenSecondStepsAndReportsDisturbances) {
  StoppingClock clock;
  clock.interruptions = {0, 4};
  testing::internal::CaptureStdout();
  EXPECT_THROW(UpgradeClientIf::sleepForever(clock), std::runtime_error);
  EXPECT_EQ(
      "Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n"
      "sleep was disturbed, time left: 4s (sleep interval: 10s).",
      testing::internal::GetCapturedStdout());
  EXPECT_EQ((std::vector<unsigned int>{10, 10, 10}), clock.sleeps);
}

TEST(UpgradeClientIfTest, ANonUpgradeRestartSucceedsWithoutASession) {
  unsetenv("RESTART_TYPE");
  unsetenv("RESTART_TYPE_3");
  FakeClock clock;
  UpgradeClientIf::useClock(&clock);
  UpgradeClientIf::upgradeSchema({"RadioNode", "/nonexistent/RadioNode_imm.xml", "RadioNode", ""}, {}, {});
  UpgradeClientIf::useClock(nullptr);
  MessageFormatter::setPrefix(nullptr);
  EXPECT_TRUE(UpgradeClientIf::succeeded());
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RadioNode: UPGRADE STARTING"));
  EXPECT_TRUE(log.contains("RadioNode: Non-upgrade restart, nothing to do."));
  EXPECT_TRUE(log.contains("RadioNode: UPGRADE IS DONE"));
}

TEST(UpgradeClientIfDeathTest, AWrongArgumentCountAborts) {
  std::vector<UpgradeActionIf*> actions;
  char program[] = "vosk-oam-upgrader";
  char extra[] = "extra";
  char* none[] = {program, nullptr};
  char* two[] = {program, extra, extra, nullptr};
  EXPECT_DEATH(UpgradeClientIf::upgrade(1, none, std::vector<SchemaData>{}, actions), "");
  EXPECT_DEATH(UpgradeClientIf::upgrade(3, two, std::vector<SchemaData>{}, actions), "");
}

}  // namespace
