#include "runtime/UpgradeAction.h"

#include <cctype>
#include <cstdarg>
#include <cstdlib>

#include "common/Log.h"
#include "icti/DistinguishedName.h"
#include "runtime/Filter.h"

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

bool UpgradeAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                  ActionArgumentsIf& args) {
  if (instanceOperation_ == nullptr || instanceGroup == nullptr) {
    // Only an action that replaces executeAction may lack an operation or
    // accept a missing group; reaching here is a defect of that action.
    TAV_LOG(ERROR, "%s::executeAction() has no instance operation or no instance group", getName());
    return false;
  }
  return visitInstances(ictiHandler, instanceGroup, args);
}

bool UpgradeAction::visitInstances(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                   ActionArgumentsIf& args, InstanceGroupIf* targetGroup) const {
  Filter filter(&args);
  ActionContext context{*ictiHandler, args, filter, instanceGroup, targetGroup};
  const InstanceOperation operation = instanceOperation_;
  bool result = instanceGroup->forEachInstance([&](InstanceIf& instance) { return operation(instance, context); });
  return filterJudged(filter, ictiHandler) && result;
}

bool UpgradeAction::filterJudged(const Filter& filter, IctiHandlerIf* ictiHandler) {
  if (filter.failure().empty()) return true;
  fail(ictiHandler, "%s", filter.failure().c_str());
  return false;
}

std::vector<std::string> UpgradeAction::withFilter(std::vector<std::string> names) {
  names.insert(names.end(), {"ldnValue", "rdnValue", "parentName", "oldAttributeValue"});
  return names;
}

bool UpgradeAction::requireDefinedClass(IctiHandlerIf* ictiHandler, const char* action, const char* argument,
                                        const std::string& className) {
  if (ictiHandler->classDefined(className)) return true;
  fail(ictiHandler, "%s: %s %s is a class that neither the old nor the new model defines", action, argument,
       className.c_str());
  return false;
}

std::string UpgradeAction::rdnValue(const std::string& ldn) { return DistinguishedName::rdnValue(ldn); }

bool UpgradeAction::isPlainName(const std::string& name) {
  if (name.empty()) return false;
  for (char c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '-') return false;
  }
  return true;
}

bool UpgradeAction::isNamingAttribute(const InstanceIf& instance, const std::string& name) {
  const std::string rdn = instance.getRdn();
  return rdn.size() > name.size() && rdn.compare(0, name.size(), name) == 0 && rdn[name.size()] == '=';
}
