#include "RecordingAction.h"

namespace modtool {

namespace {

// Numbered names ("structType#") are read as structType1, structType2, ...
// up to the first one missing, as the actions read them.
void copyArguments(ActionArgumentsIf& args, const std::vector<std::string>& names, ActionSite* site) {
  for (const std::string& name : names) {
    std::string value;
    if (name.empty() || name.back() != '#') {
      if (args.getArgument(name, value)) site->args[name] = value;
      continue;
    }
    const std::string stem = name.substr(0, name.size() - 1);
    for (int n = 1; args.getArgument(stem + std::to_string(n), value); ++n)
      site->args[stem + std::to_string(n)] = value;
  }
}

std::optional<std::string> field(const OperationArgumentIf& operation,
                                 void (OperationArgumentIf::*getter)(bool&, std::string&) const) {
  bool isSet = false;
  std::string value;
  (operation.*getter)(isSet, value);
  if (!isSet) return std::nullopt;
  return value;
}

}  // namespace

bool RecordingAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  record(args);
  return action_->validateArgs(args, ictiHandler);
}

void RecordingAction::record(ActionArgumentsIf& args) const {
  ActionSite site;
  site.action = getName();
  site.line = FailureCollector::lineOf(collector_->context(), file_);
  // The context reads "at <file>:<line>, Mo <class>, <action>".
  const std::string& context = collector_->context();
  const size_t mo = context.find(", Mo ");
  const size_t action = context.rfind(", " + site.action);
  if (mo != std::string::npos && action != std::string::npos && action > mo) {
    site.className = context.substr(mo + 5, action - mo - 5);
  }
  copyArguments(args, argumentNames(), &site);
  for (const OperationArgumentIf* operation : args.getOperations()) {
    site.operations.push_back({field(*operation, &OperationArgumentIf::getValue),
                               field(*operation, &OperationArgumentIf::getRangeStart),
                               field(*operation, &OperationArgumentIf::getRangeEnd)});
  }
  sites_->push_back(std::move(site));
}

}  // namespace modtool
