// Stands in for vosk-oam-upgrader in the wrapper's process tests. What it
// does is chosen by FAKE_MODE:
//   connect        connects to argv[1], prints the loop line, waits to be killed
//   loop           prints the loop line without a connect and waits
//   exit=N         exits with status N
//   abort          aborts
//   hang           prints nothing and waits
//   stubborn       ignores SIGTERM, prints the loop line and waits
//   args           prints its argument count and arguments, then the loop line
//   env            prints the variables named in FAKE_PRINT (comma-separated),
//                  "NAME=<unset>" for unset ones, then the loop line
//   failed-run     writes a log, rollback requests and a discarded model the
//                  way the simulated node does for a failed schema, then
//                  prints the loop line without a connect
// Waiting is pause(): the wrapper ends it with a signal.

#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char kLoopLine[] =
    "Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n";

void connectTo(const char* path) {
  int fd = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path);
  if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) std::perror("connect");
  close(fd);
}

[[noreturn]] void loopForever() {
  std::fputs(kLoopLine, stdout);
  std::fflush(stdout);
  for (;;) pause();
}

std::string out() {
  const char* value = std::getenv("VOSK_SIM_OUT");
  return value != nullptr ? value : ".";
}

void makeDirectories(const std::string& path) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    mkdir(path.substr(0, slash).c_str(), 0755);
  }
  mkdir(path.c_str(), 0755);
}

void writeFile(const std::string& path, const std::string& content) {
  makeDirectories(path.substr(0, path.rfind('/')));
  FILE* file = std::fopen(path.c_str(), "w");
  std::fputs(content.c_str(), file);
  std::fclose(file);
}

std::string record(int id, const char* severity, const std::string& text) {
  char head[64];
  std::snprintf(head, sizeof head, "[2026-11-21 08:00:%02d] %010d %s ", id % 60, id, severity);
  return head + text + "\n";
}

void writeFailedRun() {
  const std::string dir = "/lmhi/Transport/modification_files/LM1/";
  std::string identity =
      "UPGRADE FAIL: Application identity: wmtName = voskOamUpgrader, wmtNumber = CXC1740923, wmtRevision = R4A12, "
      "wpkRevision = R4A12. ";
  std::string log = record(1, "IN", "Starting upgrader: voskOamUpgrader, for schemas: Transport ") +
                    record(2, "IN", "Transport: UPGRADE STARTING") +
                    record(3, "IN", "Transport: Upgrading from (ver_rel_corr): 1_0_0 to 1_1_0") +
                    record(4, "IN", "Transport: Conversion path size: 1 modification files") +
                    record(5, "IN", "Transport: Processing modification file " + dir + "modification_1_0_0_to_1_1_0.xml") +
                    record(6, "IN", "Transport: Processing of modification file " + dir +
                                        "modification_1_0_0_to_1_1_0.xml was a FAILURE") +
                    record(7, "IN",
                           "Transport: Upgrade of Transport failed. No signal is sent to upgradeWrapper because QRN "
                           "will do a rollback so there is no point in signaling a success.\n");
  writeFile(out() + "/log/saLogUpgrade/upgrade.log", log);
  writeFile(out() + "/rollback", identity + "Failed to process modification file " + dir +
                                     "modification_1_0_0_to_1_1_0.xml\n" + identity + "Final Fail\n");
  writeFile(out() + "/discarded/Transport.xml", "<imm:IMM-contents/>\n");
}

void printEnvironment() {
  const char* names = std::getenv("FAKE_PRINT");
  std::string list = names != nullptr ? names : "";
  size_t start = 0;
  while (start <= list.size()) {
    size_t end = list.find(',', start);
    if (end == std::string::npos) end = list.size();
    std::string name = list.substr(start, end - start);
    const char* value = std::getenv(name.c_str());
    std::printf("%s=%s\n", name.c_str(), value != nullptr ? value : "<unset>");
    start = end + 1;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const char* modeText = std::getenv("FAKE_MODE");
  std::string mode = modeText != nullptr ? modeText : "";
  if (mode == "connect") {
    connectTo(argv[1]);
  } else if (mode.compare(0, 5, "exit=") == 0) {
    return std::atoi(mode.c_str() + 5);
  } else if (mode == "abort") {
    std::abort();
  } else if (mode == "hang") {
    for (;;) pause();
  } else if (mode == "stubborn") {
    signal(SIGTERM, SIG_IGN);
  } else if (mode == "args") {
    std::printf("argc=%d", argc);
    for (int i = 1; i < argc; ++i) std::printf(" [%s]", argv[i]);
    std::printf("\n");
  } else if (mode == "env") {
    printEnvironment();
  } else if (mode == "failed-run") {
    writeFailedRun();
  } else if (mode != "loop") {
    std::fprintf(stderr, "unknown FAKE_MODE '%s'\n", mode.c_str());
    return 99;
  }
  loopForever();
}
