// One run of the simulated upgrade wrapper: prepares the output folder,
// listens on the socket, starts the upgrader, waits for the outcome, stops
// the upgrader and prints the report.

#ifndef VOSK_TOOLS_UPGRADE_WRAPPER_SIM_H
#define VOSK_TOOLS_UPGRADE_WRAPPER_SIM_H

#include <ostream>
#include <string>
#include <vector>

#include "RunOutcome.h"
#include "WrapperOptions.h"

namespace wrappersim {

class UpgradeWrapperSim {
 public:
  // The exit status for a command line or a run that could not be prepared.
  static constexpr int kSetupFailed = 4;
  // How long the upgrader has to end after SIGTERM before SIGKILL.
  static constexpr int kStopGraceMs = 2000;

  // `selfPath` is this tool's own executable (for the default upgrader);
  // `environment` the wrapper's NAME=VALUE entries. The report goes to `out`,
  // problems of the wrapper itself to `err`.
  UpgradeWrapperSim(std::string selfPath, std::vector<std::string> environment, std::ostream& out,
                    std::ostream& err);

  // Returns the wrapper's exit status.
  int run(const WrapperOptions& options);

  // The built upgrader: next to `selfPath` or in the build tree beside it;
  // empty when none is found.
  static std::string defaultProgram(const std::string& selfPath);

 private:
  int fail(const std::string& reason);

  const std::string selfPath_;
  const std::vector<std::string> environment_;
  std::ostream& out_;
  std::ostream& err_;
};

}  // namespace wrappersim

#endif
