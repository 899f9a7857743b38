#include "actions/SetAttributeValueAction.h"

#include "actions/ValueOperations.h"
#include "common/Log.h"
#include "xml/ThreadSlot.h"

namespace {

constexpr const char* kName = "SetAttributeValueAction";

using HandlerSlot = ThreadSlot<struct SetAttributeValueHandlerTag, IctiHandlerIf*>;

bool setAttributeValue(InstanceIf& instance, ActionArgumentsIf& args, FilterIf& filter) {
  std::string name;
  args.getArgument("name", name);
  ValueOperations operations(*HandlerSlot::get(), kName, args);
  if (!operations.admits(instance, name, filter)) return true;
  // Selecting values by their old value leaves no room for replacing them
  // all: "=" then sets each selected value.
  std::string oldValue;
  bool wholeAssignment = !args.getArgument("oldAttributeValue", oldValue);
  auto admits = [&](uint32_t index) { return filter.applies(instance, index); };
  return operations.apply(instance, instance, name, admits, wholeAssignment);
}

}  // namespace

SetAttributeValueAction::SetAttributeValueAction() : UpgradeAction(kName, setAttributeValue, withFilter({"name", "type"})) {}

bool SetAttributeValueAction::execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                      ActionArgumentsIf& args) {
  HandlerSlot::Scope keep(ictiHandler);
  return UpgradeAction::execute(ictiHandler, instanceGroup, args);
}

bool SetAttributeValueAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string name;
  if (!args.getArgument("name", name)) {
    fail(ictiHandler, "SetAttributeValueAction requires argument name.");
    return false;
  }
  if (args.getOperations().empty()) {
    fail(ictiHandler, "SetAttributeValueAction requires at least one Operation.");
    return false;
  }
  return ValueOperations::check(args, *ictiHandler, kName, false, true);
}

void SetAttributeValueAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler, "Action Failed: SetAttributeValueAction: No instance group to operate on. Action arguments: %s",
       args.argumentsToString());
}
