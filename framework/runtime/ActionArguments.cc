#include "runtime/ActionArguments.h"

#include "common/Log.h"

bool ActionArguments::addArgument(const std::string& name, const std::string& value) {
  if (arguments_.count(name) != 0) {
    TAV_LOG(INFO_ABN, "Argument with name: %s already added", name.c_str());
    return false;
  }
  TAV_LOG(TRACE1, "addArgument: name = %s and value = %s", name.c_str(), value.c_str());
  arguments_.emplace(name, value);
  return true;
}

bool ActionArguments::getArgument(const std::string& name, std::string& value) const {
  auto found = arguments_.find(name);
  if (found == arguments_.end()) return false;
  value = found->second;
  return true;
}

void ActionArguments::addOperation(OperationArgumentIf* operation) {
  owned_.emplace_back(operation);
  operations_.push_back(operation);
}

void ActionArguments::logArguments() const {
  for (const auto& argument : arguments_) {
    TAV_LOG(INFO, "Argument %s=%s", argument.first.c_str(), argument.second.c_str());
  }
  for (const OperationArgumentIf* operation : operations_) TAV_LOG(INFO, "%s", operation->toString().c_str());
}

std::string ActionArguments::argumentsToString() const {
  std::string text;
  for (const auto& argument : arguments_) {
    if (!text.empty()) text += ", ";
    text += argument.first;
    text += '=';
    text += argument.second;
  }
  return text;
}
