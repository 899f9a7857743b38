#include "CommandLine.h"

namespace modtool {

bool CommandLine::parse(int argc, const char* const* argv, int first, const std::set<std::string>& valueOptions,
                        const std::set<std::string>& flags, std::string* error) {
  for (int i = first; i < argc; ++i) {
    std::string word = argv[i];
    if (word == "-h") word = "--help";
    if (word.size() < 3 || word.compare(0, 2, "--") != 0) {
      operands_.push_back(word);
      continue;
    }
    const size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    if (valueOptions.count(name) != 0) {
      if (equals == std::string::npos && i + 1 >= argc) {
        *error = "option " + name + " needs a value";
        return false;
      }
      options_[name].push_back(equals != std::string::npos ? word.substr(equals + 1) : argv[++i]);
    } else if ((flags.count(name) != 0 || name == "--help") && equals == std::string::npos) {
      options_[name];
    } else {
      *error = "unknown option " + word;
      return false;
    }
  }
  return true;
}

std::string CommandLine::value(const std::string& name, const std::string& otherwise) const {
  auto found = options_.find(name);
  return found == options_.end() || found->second.empty() ? otherwise : found->second.back();
}

std::vector<std::string> CommandLine::values(const std::string& name) const {
  auto found = options_.find(name);
  return found == options_.end() ? std::vector<std::string>() : found->second;
}

}  // namespace modtool
