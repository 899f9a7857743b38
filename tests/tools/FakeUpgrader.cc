// Stands in for vosk-oam-upgrader in the wrapper's process tests. FAKE_MODE
// chooses what it does: "exit=N", "hang" (waits silently), or one of these
// before the loop line: "connect" (to argv[1]), "loop", "stubborn" (ignores
// SIGTERM), "env" (prints the variables named in FAKE_PRINT). Waiting is
// pause(): the wrapper ends it with a signal.

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

std::string environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : otherwise;
}

}  // namespace

int main(int, char** argv) {
  const std::string mode = environment("FAKE_MODE", "");
  if (mode == "connect") {
    int fd = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s", argv[1]);
    if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) std::perror("connect");
    close(fd);
  } else if (mode.compare(0, 5, "exit=") == 0) {
    return std::atoi(mode.c_str() + 5);
  } else if (mode == "hang") {
    for (;;) pause();
  } else if (mode == "stubborn") {
    signal(SIGTERM, SIG_IGN);
  } else if (mode == "env") {
    std::istringstream names(environment("FAKE_PRINT", ""));
    for (std::string name; std::getline(names, name, ',');) {
      std::printf("%s=%s\n", name.c_str(), environment(name.c_str(), "<unset>").c_str());
    }
  } else if (mode != "loop") {
    std::fprintf(stderr, "unknown FAKE_MODE '%s'\n", mode.c_str());
    return 99;
  }
  std::fputs("Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n",
             stdout);
  std::fflush(stdout);
  for (;;) pause();
}
