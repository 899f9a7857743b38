// The wrapper's command line: what to start, against which package and node,
// with which environment and argument, and how long to wait.

#ifndef VOSK_TOOLS_WRAPPER_OPTIONS_H
#define VOSK_TOOLS_WRAPPER_OPTIONS_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace wrappersim {

struct WrapperOptions {
  // Stands for the socket path in an --args list.
  static constexpr const char* kSocketPlaceholder = "@socket";

  std::string program;  // empty: the built upgrader is looked up
  std::string package;  // empty: WPK_PATH is not set
  std::string node;
  std::string out;     // empty: <node>/out
  std::string socket;  // empty: <out>/upgradeWrapper.sock
  std::string restartType = "UPGRADE";
  std::optional<std::string> faults;
  // In command-line order; a variable without a value is removed.
  std::vector<std::pair<std::string, std::optional<std::string>>> env;
  // Replaces the single socket argument when given.
  std::optional<std::vector<std::string>> args;
  double timeoutSeconds = 120;
  bool verbose = false;
  bool help = false;

  // Fills `options` from the command line; false with a reason on a wrong
  // command line. --help needs no other option.
  static bool parse(int argc, const char* const* argv, WrapperOptions* options, std::string* error);
  static std::string usage();

  std::string outFolder() const;
  // Absolute, like every path handed to the upgrader.
  std::string socketPath() const;
  // The upgrader's arguments after its name.
  std::vector<std::string> programArguments() const;

  static std::string absolutePath(const std::string& path);
};

}  // namespace wrappersim

#endif
