// upgrade-wrapper-sim: plays the node's upgrade wrapper for vosk-oam-upgrader
// on a simulated node. See WrapperOptions::usage().

#include <unistd.h>

#include <climits>
#include <iostream>

#include "UpgradeWrapperSim.h"
#include "WrapperOptions.h"

extern char** environ;

int main(int argc, char** argv) {
  wrappersim::WrapperOptions options;
  std::string error;
  if (!wrappersim::WrapperOptions::parse(argc, argv, &options, &error)) {
    std::cerr << "upgrade-wrapper-sim: " << error << "\n\n" << wrappersim::WrapperOptions::usage();
    return wrappersim::UpgradeWrapperSim::kSetupFailed;
  }
  if (options.help) {
    std::cout << wrappersim::WrapperOptions::usage();
    return 0;
  }
  char self[PATH_MAX];
  ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
  std::string selfPath = length > 0 ? std::string(self, static_cast<size_t>(length)) : std::string(argv[0]);

  std::vector<std::string> environment;
  for (char** entry = environ; *entry != nullptr; ++entry) environment.push_back(*entry);
  return wrappersim::UpgradeWrapperSim(selfPath, environment, std::cout, std::cerr).run(options);
}
