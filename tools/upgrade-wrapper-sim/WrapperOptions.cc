#include "WrapperOptions.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace wrappersim {

namespace {

std::vector<std::string> words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> result;
  for (std::string word; in >> word;) result.push_back(word);
  return result;
}

bool parseSeconds(const std::string& text, double* seconds) {
  char* end = nullptr;
  double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0' || !(value > 0)) return false;
  *seconds = value;
  return true;
}

// Applies an option that takes a value; false with a reason when the value
// is not acceptable or the option is unknown.
bool applyValue(const std::string& name, const std::string& value, WrapperOptions* o, std::string* error) {
  if (name == "--program") {
    o->program = value;
  } else if (name == "--package") {
    o->package = value;
  } else if (name == "--node") {
    o->node = value;
  } else if (name == "--out") {
    o->out = value;
  } else if (name == "--socket") {
    o->socket = value;
  } else if (name == "--restart-type") {
    o->restartType = value;
  } else if (name == "--faults") {
    o->faults = value;
  } else if (name == "--args") {
    o->args = words(value);
  } else if (name == "--env") {
    size_t equals = value.find('=');
    std::string variable = value.substr(0, equals);
    if (variable.empty()) {
      *error = "--env needs NAME=VALUE or NAME, not '" + value + "'";
      return false;
    }
    o->env.emplace_back(variable, equals == std::string::npos ? std::nullopt
                                                              : std::optional<std::string>(value.substr(equals + 1)));
  } else if (name == "--timeout") {
    if (!parseSeconds(value, &o->timeoutSeconds)) {
      *error = "--timeout needs a positive number of seconds, not '" + value + "'";
      return false;
    }
  } else {
    *error = "unknown option " + name;
    return false;
  }
  return true;
}

}  // namespace

bool WrapperOptions::parse(int argc, const char* const* argv, WrapperOptions* options, std::string* error) {
  WrapperOptions o;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      o.help = true;
      continue;
    }
    if (arg == "--verbose" || arg == "-v") {
      o.verbose = true;
      continue;
    }
    if (arg.compare(0, 2, "--") != 0) {
      *error = "unexpected argument '" + arg + "'";
      return false;
    }
    size_t equals = arg.find('=');
    std::string name = arg.substr(0, equals);
    std::string value;
    if (equals != std::string::npos) {
      value = arg.substr(equals + 1);
    } else if (i + 1 < argc) {
      value = argv[++i];
    } else {
      *error = "option " + name + " needs a value";
      return false;
    }
    if (!applyValue(name, value, &o, error)) return false;
  }
  if (!o.help && o.node.empty()) {
    *error = "--node is required";
    return false;
  }
  *options = o;
  return true;
}

std::string WrapperOptions::outFolder() const { return out.empty() ? node + "/out" : out; }

std::string WrapperOptions::socketPath() const {
  // Absolute, since the upgrader may change its directory before it connects.
  return absolutePath(socket.empty() ? outFolder() + "/upgradeWrapper.sock" : socket);
}

std::string WrapperOptions::absolutePath(const std::string& path) {
  return std::filesystem::absolute(path).lexically_normal().string();
}

std::vector<std::string> WrapperOptions::programArguments() const {
  if (!args) return {socketPath()};
  std::vector<std::string> result;
  for (const std::string& arg : *args) result.push_back(arg == kSocketPlaceholder ? socketPath() : arg);
  return result;
}

std::string WrapperOptions::usage() {
  return R"(Usage: upgrade-wrapper-sim --node DIR [options]

Plays the node's upgrade wrapper for vosk-oam-upgrader on a simulated node:
empties the output folder, listens on a UNIX-domain socket, starts the
upgrader with the package, the node and an upgrade identity in its
environment and the socket path as its single argument, waits until the
outcome is known, stops the upgrader and prints a report.

Options:
  --node DIR            the simulated node (VOSK_SIM_ROOT); required
  --package DIR         the upgrade package (WPK_PATH); without it WPK_PATH
                        is not set
  --program PATH        the upgrader to start; default: vosk-oam-upgrader
                        next to this tool or in the build tree
  --out DIR             the output folder (VOSK_SIM_OUT), emptied first;
                        default: <node>/out
  --socket PATH         the socket to listen on; default:
                        <out>/upgradeWrapper.sock
  --restart-type TYPE   RESTART_TYPE; default: UPGRADE
  --env NAME=VALUE      sets a variable of the upgrader's environment, after
                        all others (identity: WMT_NAME, WMT_NO, WMT_REV,
                        UP_NO, UP_REV, WPK_REV; also RESTART_TYPE_3, BT)
  --env NAME            removes NAME from the upgrader's environment
  --faults ITEMS        VOSK_SIM_FAULTS, e.g. Initialize=31x2,ReadInstances@EUtranCellFDD=9
  --args "A B ..."      the upgrader's arguments instead of the socket path,
                        split at blanks; @socket stands for the socket path;
                        --args "" starts it without arguments
  --timeout SECONDS     time allowed for an outcome; default: 120
  -v, --verbose         forwards the upgrader's standard output, each line
                        prefixed with "[upgrader] "
  -h, --help            prints this text

Outcome and exit status:
  0  success: the upgrader connected to the socket
  1  upgrade failed: it entered the never-ending loop without a connect;
     the report lists every rollback reason
  2  front failed: it exited with an AppResult code 1..6
  3  time-out, crash (ended by a signal) or another exit status
  4  wrong command line or the run could not be prepared
)";
}

}  // namespace wrappersim
