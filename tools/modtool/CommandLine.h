// The options and operands of one vosk-modtool subcommand: "--name VALUE" or
// "--name=VALUE" for options that take a value (repeatable), "--name" for
// flags, everything else an operand.

#ifndef VOSK_TOOLS_MODTOOL_COMMAND_LINE_H
#define VOSK_TOOLS_MODTOOL_COMMAND_LINE_H

#include <map>
#include <set>
#include <string>
#include <vector>

namespace modtool {

// Every subcommand's exit status.
constexpr int kExitClean = 0;
constexpr int kExitFound = 1;  // errors or differences found
constexpr int kExitCouldNotRun = 2;

class CommandLine {
 public:
  // Reads argv[first..argc). False, with `error` set, for an option the
  // subcommand does not know or a value that is missing. "--help" and "-h"
  // are flags everywhere.
  bool parse(int argc, const char* const* argv, int first, const std::set<std::string>& valueOptions,
             const std::set<std::string>& flags, std::string* error);

  bool has(const std::string& name) const { return options_.count(name) != 0; }
  // The last value of an option, or `otherwise`.
  std::string value(const std::string& name, const std::string& otherwise = "") const;
  std::vector<std::string> values(const std::string& name) const;
  const std::vector<std::string>& operands() const { return operands_; }
  bool help() const { return has("--help"); }

 private:
  std::map<std::string, std::vector<std::string>> options_;
  std::vector<std::string> operands_;
};

}  // namespace modtool

#endif
