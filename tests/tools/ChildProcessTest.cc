#include "ChildProcess.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "TempDir.h"
#include "WrapperSocket.h"

namespace wrappersim {
namespace {

TEST(ChildProcessTest, StopEndsTheChildWithTermOrAfterTheGraceWithKill) {
  const struct {
    const char* mode;
    int graceMs;
    int signal;
  } cases[] = {{"loop", 2000, SIGTERM}, {"stubborn", 100, SIGKILL}, {"loop", 0, SIGKILL}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.mode) + " " + std::to_string(c.graceMs));
    ChildProcess child;
    std::string error;
    ASSERT_TRUE(child.start(FAKE_UPGRADER, {"unused"}, {std::string("FAKE_MODE=") + c.mode}, &error)) << error;
    // The loop line comes after the fake has set up its signals.
    pollfd output{child.outputFd(), POLLIN, 0};
    ASSERT_EQ(1, poll(&output, 1, 5000));
    EXPECT_FALSE(child.reap());
    child.stop(c.graceMs);
    ASSERT_TRUE(child.ended());
    ASSERT_TRUE(WIFSIGNALED(child.waitStatus()));
    EXPECT_EQ(c.signal, WTERMSIG(child.waitStatus()));
    EXPECT_NE(0, kill(child.pid(), 0)) << "still there";
  }
}

bool connectTo(const std::string& path) {
  int fd = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  bool connected = connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  close(fd);
  return connected;
}

TEST(WrapperSocketTest, ReplacesAStaleSocketSeesAConnectOnceAndRemovesThePath) {
  TempDir dir;
  std::string path = dir.path() + "/w.sock";
  std::string error;
  {
    WrapperSocket stale;
    ASSERT_TRUE(stale.listen(path, &error)) << error;
    WrapperSocket fresh;
    ASSERT_TRUE(fresh.listen(path, &error)) << error;
    EXPECT_FALSE(fresh.acceptPending());
    ASSERT_TRUE(connectTo(path));
    EXPECT_TRUE(fresh.acceptPending());
    EXPECT_FALSE(fresh.acceptPending());
  }
  EXPECT_FALSE(TempDir::exists(path));
}

}  // namespace
}  // namespace wrappersim
