#include "xml/UpgradeAction.h"

#include <cstdarg>
#include <cstdlib>

#include "common/Log.h"
#include "xml/Filter.h"

void UpgradeAction::requireHandler(IctiHandlerIf* ictiHandler, const char* message) {
  if (ictiHandler != nullptr) return;
  TAV_LOG(ERROR, "%s", message);
  abort();
}

void UpgradeAction::fail(IctiHandlerIf* ictiHandler, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  std::string reason = MessageFormatter::plainV(fmt, args);
  va_end(args);
  ictiHandler->failUpgrade(reason.c_str());
}

bool UpgradeAction::execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) {
  requireHandler(ictiHandler);
  if (!validateInstanceGroup(instanceGroup)) {
    TAV_LOG(INFO_ABN, "%s::execute() Validate instance group failed.", getName());
    reportMissingInstanceGroup(args, ictiHandler);
    return false;
  }
  if (!validateArgs(args, ictiHandler)) return false;
  return executeAction(ictiHandler, instanceGroup, args);
}

bool UpgradeAction::validateInstanceGroup(InstanceGroupIf* instanceGroup) { return instanceGroup != nullptr; }

bool UpgradeAction::executeAction(IctiHandlerIf* /*ictiHandler*/, InstanceGroupIf* instanceGroup,
                                  ActionArgumentsIf& args) {
  if (instanceOperation_ == nullptr || instanceGroup == nullptr) {
    // Only an action that replaces executeAction may lack an operation or
    // accept a missing group; reaching here is a defect of that action.
    TAV_LOG(ERROR, "%s::executeAction() has no instance operation or no instance group", getName());
    return false;
  }
  Filter filter(&args);
  return instanceGroup->forEachInstance(instanceOperation_, args, filter);
}

std::string UpgradeAction::rdnValue(const std::string& ldn) {
  size_t equals = ldn.find('=');
  if (equals == std::string::npos) return std::string();
  size_t comma = ldn.find(',', equals + 1);
  return ldn.substr(equals + 1, comma == std::string::npos ? std::string::npos : comma - equals - 1);
}
