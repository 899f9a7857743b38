#include "actions/RemoveChildInstanceAction.h"

#include <vector>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "icti/DistinguishedName.h"
#include "icti/Instance.h"
#include "runtime/FilterIf.h"

namespace {

// The children to remove below `parentLdn`: the one that childRdnValue
// names, else every child of the class. A child whose RDN does not take the
// name getTargetLdn gives it (a class whose naming attribute holds the whole
// RDN) is found by its RDN value. A child that is not there is still listed,
// for the report that it could not be erased.
std::vector<std::string> targetsBelow(InstanceGroupIf& children, const std::string& parentLdn, bool isStruct,
                                      ActionArgumentsIf& args) {
  const std::string target =
      RemoveChildInstanceAction::getTargetLdn(parentLdn, children.getClassName(), isStruct, args);
  if (!target.empty() && children.getInstance(target) != nullptr) return {target};
  const std::string rdnValue = argumentValue(args, "childRdnValue");
  std::vector<std::string> targets;
  for (InstanceIf* child : children.getChildInstances(parentLdn)) {
    if (target.empty() || DistinguishedName::rdnValue(child->getRdn()) == rdnValue) targets.push_back(child->getLdn());
  }
  if (targets.empty() && !target.empty()) targets.push_back(target);
  return targets;
}

}  // namespace

RemoveChildInstanceAction::RemoveChildInstanceAction()
    : UpgradeAction("RemoveChildInstanceAction", removeUnderParent,
                    withFilter({"childType", "childRdnValue", "parentRdnValue"})) {}

bool RemoveChildInstanceAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string childType;
  if (args.getArgument("childType", childType)) return true;
  fail(ictiHandler, "RemoveChildInstanceAction requires argument childType");
  return false;
}

void RemoveChildInstanceAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler,
       "Action Failed: RemoveChildInstance: No instanceGroup to operate on. Action argument: childType = %s",
       argumentValue(args, "childType").c_str());
}

bool RemoveChildInstanceAction::validateInstanceGroup(InstanceGroupIf* /*instanceGroup*/) { return true; }

bool RemoveChildInstanceAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                              ActionArgumentsIf& args) {
  const std::string childType = argumentValue(args, "childType");
  InstanceGroupIf* children = ictiHandler->getInstanceGroup(childType);
  if (children == nullptr) return requireDefinedClass(ictiHandler, getName(), "childType", childType);
  if (instanceGroup == nullptr || instanceGroup->getNumberOfInstances() == 0) {
    InstanceIf* first = children->getFirstInstance();
    if (first != nullptr) children->eraseInstance(first->getLdn());
    return true;
  }
  return visitInstances(ictiHandler, instanceGroup, args, children);
}

std::string RemoveChildInstanceAction::getTargetLdn(const std::string& parentLdn, const std::string& childType,
                                                    bool isStruct, ActionArgumentsIf& args) {
  std::string rdnValue;
  if (!args.getArgument("childRdnValue", rdnValue)) {
    TAV_TRACE(INFO, "RemoveChildInstance getTargetLdn:childRdnValue does not exist. return empty string");
    return std::string();
  }
  const std::string rdnAttribute = isStruct ? "id" : Instance::moClassRdnAttribute(childType);
  return rdnAttribute + "=" + DistinguishedName::escapeValue(rdnValue) + "," + parentLdn;
}

bool RemoveChildInstanceAction::removeUnderParent(InstanceIf& parent, ActionContext& context) {
  ActionArgumentsIf& args = context.args;
  const std::string parentLdn = parent.getLdn();
  TAV_TRACE(INFO, "RemoveChildInstance::removeChildInstance: instance.getLdn %s", parentLdn.c_str());
  if (!context.filter.applies(parent, 0)) return true;
  InstanceGroupIf* children = context.targetGroup;
  const bool isStruct = children->isStructGroup();
  std::string parentRdnValue;
  if (args.getArgument("parentRdnValue", parentRdnValue)) {
    if (isStruct) {
      TAV_TRACE(INFO,
              "RemoveChildInstance current childType is struct. struct type cannot be used with parentRdnValue: %s.",
              parentRdnValue.c_str());
      return true;
    }
    const std::string ownRdnValue = UpgradeAction::rdnValue(parentLdn);
    if (ownRdnValue != parentRdnValue) {
      TAV_TRACE(INFO,
              "RemoveChildInstance rdn(%s) for current MO instance does NOT equal to parentRdnValue(%s), do nothing.",
              ownRdnValue.c_str(), parentRdnValue.c_str());
      return true;
    }
  }
  const std::vector<std::string> targets = targetsBelow(*children, parentLdn, isStruct, args);
  bool allErased = true;
  for (const std::string& ldn : targets) {
    if (children->eraseInstance(ldn)) continue;
    TAV_LOG(INFO_ABN, "RemoveChildInstance failed to erase instance for ldn : %s", ldn.c_str());
    allErased = false;
  }
  if (allErased) TAV_TRACE(INFO, "RemoveChildInstance Removed all child instances for parent Ldn: %s", parentLdn.c_str());
  return true;
}
