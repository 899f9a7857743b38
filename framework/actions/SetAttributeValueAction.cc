#include "actions/SetAttributeValueAction.h"

#include "actions/ValueOperations.h"
#include "common/Log.h"

namespace {

constexpr const char* kName = "SetAttributeValueAction";

bool setAttributeValue(InstanceIf& instance, ActionContext& context) {
  ActionArgumentsIf& args = context.args;
  std::string name;
  args.getArgument("name", name);
  ValueOperations operations(context.handler, kName, args);
  if (!operations.admits(instance, name, context.filter)) return true;
  // Selecting values by their old value leaves no room for replacing them
  // all: "=" then sets each selected value.
  std::string oldValue;
  bool wholeAssignment = !args.getArgument("oldAttributeValue", oldValue);
  auto admits = [&](uint32_t index) { return context.filter.applies(instance, index); };
  return operations.apply(instance, instance, name, admits, wholeAssignment);
}

}  // namespace

SetAttributeValueAction::SetAttributeValueAction() : UpgradeAction(kName, setAttributeValue, withFilter({"name", "type"})) {}

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
       args.argumentsToString().c_str());
}
