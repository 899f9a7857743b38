// One `MoAction` as the parser handed it to its action: the class of the
// enclosing `Mo`, the action's name, where it stands, and the texts of its
// arguments and operations. `check` judges these against the models.

#ifndef VOSK_TOOLS_MODTOOL_ACTION_SITE_H
#define VOSK_TOOLS_MODTOOL_ACTION_SITE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace modtool {

struct OperationTexts {
  std::optional<std::string> value;
  std::optional<std::string> rangeStart;
  std::optional<std::string> rangeEnd;
};

struct ActionSite {
  std::string className;
  std::string action;
  long line = 0;    // of the `MoAction`
  long moLine = 0;  // of the enclosing `Mo`
  std::map<std::string, std::string> args;
  std::vector<OperationTexts> operations;

  const std::string* arg(const std::string& name) const {
    auto found = args.find(name);
    return found == args.end() ? nullptr : &found->second;
  }
};

}  // namespace modtool

#endif
