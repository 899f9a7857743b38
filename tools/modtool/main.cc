// vosk-modtool: tools for the authors of modification files, in the style of
// git: `vosk-modtool <subcommand> ...`. See kUsage.

#include <unistd.h>

#include <climits>
#include <cstring>
#include <iostream>

#include "CheckCommand.h"
#include "CommandLine.h"
#include "DiffCommand.h"
#include "DryRunCommand.h"
#include "PlanCommand.h"
#include "common/DiscardingLog.h"
#include "common/PersistentLog.h"

namespace {

const char kUsage[] =
    "usage: vosk-modtool <subcommand> [options]\n"
    "\n"
    "  check     validate modification files (parser, models, types)\n"
    "  plan      the conversion path the upgrader will take for a schema of a node\n"
    "  dry-run   run the upgrade on a copy of a node and report its impact per class\n"
    "  diff      two IMM XML models compared object by object\n"
    "\n"
    "`vosk-modtool <subcommand> --help` describes each one. Exit status: 0 clean, 1 errors or\n"
    "differences found, 2 could not run.\n";

std::string selfPath(const char* argv0) {
  char self[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
  return length > 0 ? std::string(self, static_cast<size_t>(length)) : std::string(argv0);
}

}  // namespace

extern char** environ;

int main(int argc, char** argv) {
  // The framework's parts log as they do in the upgrader, but the records go
  // nowhere: the tool reports for itself and never writes a node's log.
  static DiscardingLog env;
  PersistentLog::chooseEnv(env);
  const char* subcommand = argc > 1 ? argv[1] : "";
  if (std::strcmp(subcommand, "check") == 0) return modtool::CheckCommand::run(argc, argv, std::cout, std::cerr);
  if (std::strcmp(subcommand, "plan") == 0) return modtool::PlanCommand::run(argc, argv, std::cout, std::cerr);
  if (std::strcmp(subcommand, "dry-run") == 0) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) environment.push_back(*entry);
    return modtool::DryRunCommand::run(argc, argv, selfPath(argv[0]), environment, std::cout, std::cerr);
  }
  if (std::strcmp(subcommand, "diff") == 0) return modtool::DiffCommand::run(argc, argv, std::cout, std::cerr);
  if (std::strcmp(subcommand, "--help") == 0 || std::strcmp(subcommand, "-h") == 0 ||
      std::strcmp(subcommand, "help") == 0) {
    std::cout << kUsage;
    return modtool::kExitClean;
  }
  std::cerr << (argc > 1 ? "vosk-modtool: unknown subcommand " + std::string(subcommand) + "\n\n" : "") << kUsage;
  return modtool::kExitCouldNotRun;
}
