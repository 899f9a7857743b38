// Stands in for vosk-oam-upgrader in the wrapper's process tests. FAKE_MODE
// chooses what it does: "exit=N", "abort", "hang" (waits silently), or one of
// these before the loop line: "connect" (to argv[1]), "loop", "stubborn"
// (ignores SIGTERM), "args" (prints them), "env" (prints the variables named in
// FAKE_PRINT), "failed-run" (writes a log, rollback requests, a refused call
// and a discarded model the way the simulated node does for a failed schema).
// Modes joined by "+" run in turn ("failed-run+connect"). Waiting is pause():
// the wrapper ends it with a signal.

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : otherwise;
}

void writeFile(const std::string& relative, const std::string& content) {
  std::filesystem::path path = environment("VOSK_SIM_OUT", ".") + "/" + relative;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path) << content;
}

void writeFailedRun() {
  const std::string file = "/lmhi/Transport/modification_files/LM1/modification_1_0_0_to_1_1_0.xml";
  const std::string identity =
      "UPGRADE FAIL: Application identity: wmtName = voskOamUpgrader, wmtNumber = CXC1740923, wmtRevision = R4A12, "
      "wpkRevision = R4A12. ";
  const std::string cause =
      "Unsupported action: RenameAtributeAction (at " + file + ":14, Mo Cell, RenameAtributeAction)";
  const std::string texts[] = {
      "Starting upgrader: voskOamUpgrader, for schemas: Transport ",
      "Transport: UPGRADE STARTING",
      "Transport: Upgrading from (ver_rel_corr): 1_0_0 to 1_1_0",
      "Transport: Modification file " + file + " takes the schema from 1_0_0 to 1_1_0",
      "Transport: Conversion path size: 1 modification files",
      "Transport: Processing modification file " + file,
      // Cut, as the log's record size cuts a longer one: the rollback file has it whole.
      "Transport: " + identity + cause.substr(0, cause.size() - 10),
      "Transport: " + identity + "Failed to process modification file " + file,
      "Transport: Processing of modification file " + file + " was a FAILURE",
      "Transport: " + identity + "Final Fail",
      "Transport: Upgrade of Transport failed. No signal is sent to upgradeWrapper because QRN will do a rollback so "
      "there is no point in signaling a success.\n"};
  std::string log;
  int id = 0;
  for (const std::string& text : texts) {
    char head[64];
    ++id;
    std::snprintf(head, sizeof head, "[2026-11-21 08:00:%02d] %010d IN ", id, id);
    log += head + text + "\n";
  }
  writeFile("log/saLogUpgrade/upgrade.log", log);
  writeFile("rollback", identity + cause + "\n" + identity + "Failed to process modification file " + file + "\n" +
                            identity + "Final Fail\n");
  writeFile("platform-errors.log",
            "safcImmCtReadInstances_2 [Cell] error 12: class Cell is defined neither in the old nor in the new model\n");
  writeFile("discarded/Transport.xml", "<imm:IMM-contents/>\n");
}

}  // namespace

int main(int argc, char** argv) {
  std::string mode = environment("FAKE_MODE", "");
  if (mode.compare(0, 11, "failed-run+") == 0) {
    writeFailedRun();
    mode = mode.substr(11);
  }
  if (mode == "connect") {
    int fd = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s", argv[1]);
    if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) std::perror("connect");
    close(fd);
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
    std::istringstream names(environment("FAKE_PRINT", ""));
    for (std::string name; std::getline(names, name, ',');) {
      std::printf("%s=%s\n", name.c_str(), environment(name.c_str(), "<unset>").c_str());
    }
  } else if (mode == "failed-run") {
    writeFailedRun();
  } else if (mode != "loop") {
    std::fprintf(stderr, "unknown FAKE_MODE '%s'\n", mode.c_str());
    return 99;
  }
  std::fputs("Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n",
             stdout);
  std::fflush(stdout);
  for (;;) pause();
}
