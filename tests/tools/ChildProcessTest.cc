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

// Reads the child's output until a line end came or its pipe closed.
std::string firstLine(const ChildProcess& child) {
  std::string text;
  while (text.find('\n') == std::string::npos) {
    pollfd output{child.outputFd(), POLLIN, 0};
    if (poll(&output, 1, 5000) <= 0) break;
    char buffer[256];
    ssize_t size = read(child.outputFd(), buffer, sizeof buffer);
    if (size <= 0) break;
    text.append(buffer, static_cast<size_t>(size));
  }
  return text.substr(0, text.find('\n'));
}

struct StopCase {
  const char* mode;
  int graceMs;
  int signal;
};

void PrintTo(const StopCase& c, std::ostream* out) { *out << c.mode << " grace " << c.graceMs << " ms"; }

class ChildProcessStopTest : public testing::TestWithParam<StopCase> {};

TEST_P(ChildProcessStopTest, StopEndsTheChild) {
  ChildProcess child;
  std::string error;
  ASSERT_TRUE(child.start(FAKE_UPGRADER, {"unused"}, {std::string("FAKE_MODE=") + GetParam().mode}, &error)) << error;
  // The loop line comes after the fake has set up its signals.
  EXPECT_EQ(0u, firstLine(child).find("Entering the never ending loop"));
  EXPECT_FALSE(child.reap());
  child.stop(GetParam().graceMs);
  ASSERT_TRUE(child.ended());
  ASSERT_TRUE(WIFSIGNALED(child.waitStatus()));
  EXPECT_EQ(GetParam().signal, WTERMSIG(child.waitStatus()));
  EXPECT_NE(0, kill(child.pid(), 0)) << "still there";
}

INSTANTIATE_TEST_SUITE_P(Cases, ChildProcessStopTest,
                         testing::Values(StopCase{"loop", 2000, SIGTERM}, StopCase{"stubborn", 100, SIGKILL},
                                         StopCase{"loop", 0, SIGKILL}));

TEST(ChildProcessTest, ExitIsSeenOnTheExitDescriptor) {
  ChildProcess child;
  std::string error;
  ASSERT_TRUE(child.start(FAKE_UPGRADER, {}, {"FAKE_MODE=exit=4"}, &error)) << error;
  pollfd exit{child.exitFd(), POLLIN, 0};
  ASSERT_EQ(1, poll(&exit, 1, 5000));
  ASSERT_TRUE(child.reap());
  EXPECT_EQ(4, WEXITSTATUS(child.waitStatus()));
  child.stop(1000);  // nothing left to stop
  EXPECT_EQ(4, WEXITSTATUS(child.waitStatus()));
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

TEST(WrapperSocketTest, AConnectIsSeenOnceAndThePathGoesWithTheSocket) {
  TempDir dir;
  std::string path = dir.path() + "/w.sock";
  {
    WrapperSocket socket;
    std::string error;
    ASSERT_TRUE(socket.listen(path, &error)) << error;
    EXPECT_FALSE(socket.acceptPending());
    ASSERT_TRUE(connectTo(path));
    EXPECT_TRUE(socket.acceptPending());
    EXPECT_FALSE(socket.acceptPending());
  }
  EXPECT_FALSE(TempDir::exists(path));
}

TEST(WrapperSocketTest, ReplacesAStaleSocketButNothingElse) {
  TempDir dir;
  std::string path = dir.path() + "/w.sock";
  std::string error;
  {
    WrapperSocket stale;
    ASSERT_TRUE(stale.listen(path, &error)) << error;
    WrapperSocket fresh;
    EXPECT_TRUE(fresh.listen(path, &error)) << error;
    ASSERT_TRUE(connectTo(path));
    EXPECT_TRUE(fresh.acceptPending());
  }
  std::string file = dir.write("plain", "data");
  WrapperSocket socket;
  EXPECT_FALSE(socket.listen(file, &error));
  EXPECT_EQ(file + " exists and is no socket", error);
  EXPECT_EQ("data", TempDir::read(file));
  EXPECT_FALSE(socket.listen("", &error));
  EXPECT_FALSE(socket.listen("/" + std::string(107, 'x'), &error));
}

}  // namespace
}  // namespace wrappersim
