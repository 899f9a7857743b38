#include "actions/CreateChildInstanceAction.h"

#include <vector>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "runtime/Filter.h"

CreateChildInstanceAction::CreateChildInstanceAction()
    : UpgradeAction("CreateChildInstanceAction", createUnderParent,
                    withFilter({"childType", "childRdnValue", "parentRdnValue"})) {}

bool CreateChildInstanceAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler, "ICTI handler pointer is nullptr");
  std::string rdnValue, childType;
  bool complete = args.getArgument("childRdnValue", rdnValue);
  complete = args.getArgument("childType", childType) && complete;
  if (!complete) fail(ictiHandler, "CreateChildInstanceAction requires args: childRdnValue and childType");
  return complete;
}

void CreateChildInstanceAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler,
       "Action Failed: CreateChildInstance: No instanceGroup to operate on. Action arguments: childRdnValue =  %s, "
       "childType = %s.",
       argumentValue(args, "childRdnValue").c_str(), argumentValue(args, "childType").c_str());
}

bool CreateChildInstanceAction::validateInstanceGroup(InstanceGroupIf* /*instanceGroup*/) { return true; }

bool CreateChildInstanceAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                              ActionArgumentsIf& args) {
  const std::string childType = argumentValue(args, "childType");
  InstanceGroupIf* childGroup = ictiHandler->getInstanceGroup(childType);
  if (childGroup == nullptr) return requireDefinedClass(ictiHandler, getName(), "childType", childType);

  Filter filter(&args);
  ActionContext context{*ictiHandler, args, filter, instanceGroup, childGroup};
  if (instanceGroup == nullptr || instanceGroup->getNumberOfInstances() == 0) {
    const std::string rdnValue = argumentValue(args, "childRdnValue");
    TAV_TRACE(INFO, "Create a new Instance of root MO class %s rdn=%s", childType.c_str(), rdnValue.c_str());
    return createChild(context, "", rdnValue);
  }
  // The parents as they are now: children of the parent's own class created
  // here are not parents of this run. The first failure ends the walk.
  for (InstanceIf* parent : instanceGroup->getInstances()) {
    if (!createUnderParent(*parent, context)) return false;
  }
  return filterJudged(filter, ictiHandler);
}

bool CreateChildInstanceAction::createUnderParent(InstanceIf& parent, ActionContext& context) {
  const std::string rdnValue = argumentValue(context.args, "childRdnValue");
  const std::string parentLdn = parent.getLdn();
  if (!context.filter.applies(parent, 0)) return true;
  std::string parentRdnValue;
  if (context.args.getArgument("parentRdnValue", parentRdnValue) &&
      parentRdnValue != UpgradeAction::rdnValue(parentLdn)) {
    return true;
  }
  return createChild(context, parentLdn, rdnValue);
}

bool CreateChildInstanceAction::createChild(ActionContext& context, const std::string& parentLdn,
                                            const std::string& rdnValue) {
  InstanceGroupIf* childGroup = context.targetGroup;
  const std::string childType = childGroup->getClassName();
  TAV_TRACE(INFO, "Create a new Instance of class %s rdn=%s with parent %s", childType.c_str(), rdnValue.c_str(),
          parentLdn.c_str());
  if (childGroup->createInstance(parentLdn, rdnValue, false, "") != nullptr) return true;
  fail(&context.handler, "CreateChildInstance: Failed to create instance for parent %s, RDN %s of class %s",
       parentLdn.c_str(), rdnValue.c_str(), childType.c_str());
  return false;
}
