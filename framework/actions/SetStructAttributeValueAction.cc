#include "actions/SetStructAttributeValueAction.h"

#include "actions/ArgumentValue.h"
#include "actions/ValueOperations.h"
#include "common/Log.h"

namespace {

constexpr const char* kName = "SetStructAttributeValueAction";

// The names of the struct instances the filter admits among the values of
// the reference attribute.
std::vector<std::string> referredStructs(InstanceIf& instance, AttributeInternalIf& references, FilterIf& filter) {
  std::vector<std::string> ldns;
  for (uint32_t i = 0; i < references.getNumberOfValues(); ++i) {
    const std::string ldn = references.readValueAtIndex(i).value_or("");
    if (!ldn.empty() && filter.applies(instance, i)) ldns.push_back(ldn);
  }
  return ldns;
}

bool setStructAttributeValue(InstanceIf& instance, ActionContext& context) {
  IctiHandlerIf& handler = context.handler;
  ActionArgumentsIf& args = context.args;
  FilterIf& filter = context.filter;
  std::string name, structType, structAttribute;
  args.getArgument("name", name);
  args.getArgument("structType", structType);
  args.getArgument("structAttribute", structAttribute);
  ValueOperations operations(handler, kName, args);
  if (!operations.admits(instance, name, filter)) return true;
  AttributeInternalIf* references = instance.getAttribute(name);
  if (references == nullptr || references->getNumberOfValues() == 0) {
    TAV_TRACE(INFO, "%s: %s has no value in attribute %s, nothing to change", kName, instance.getLdn().c_str(),
            name.c_str());
    return true;
  }
  InstanceGroupIf* structs = handler.getInstanceGroup(structType, "", false);
  auto everyPosition = [](uint32_t) { return true; };
  bool result = true;
  for (const std::string& ldn : referredStructs(instance, *references, filter)) {
    InstanceIf* target = structs == nullptr ? nullptr : structs->getInstance(ldn);
    if (target == nullptr) {
      OperationSource::report(handler, "%s: struct instance %s of %s not found", kName, ldn.c_str(),
                              structType.c_str());
      result = false;
      continue;
    }
    result = operations.apply(instance, *target, structAttribute, everyPosition, true) && result;
  }
  return result;
}

}  // namespace

SetStructAttributeValueAction::SetStructAttributeValueAction() : UpgradeAction(kName, setStructAttributeValue, withFilter({"name", "structType", "structAttribute", "type"})) {}

bool SetStructAttributeValueAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string value;
  if (!args.getArgument("name", value) || !args.getArgument("structType", value) ||
      !args.getArgument("structAttribute", value)) {
    fail(ictiHandler, "SetStructAttributeValueAction requires arguments name, structType and structAttribute.");
    return false;
  }
  if (args.getOperations().empty()) {
    fail(ictiHandler, "SetStructAttributeValueAction requires at least one Operation.");
    return false;
  }
  return ValueOperations::check(args, *ictiHandler, kName, false, true);
}

bool SetStructAttributeValueAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                                  ActionArgumentsIf& args) {
  const std::string structType = argumentValue(args, "structType");
  if (!requireDefinedClass(ictiHandler, getName(), "structType", structType)) return false;
  return UpgradeAction::executeAction(ictiHandler, instanceGroup, args);
}

void SetStructAttributeValueAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler,
       "Action Failed: SetStructAttributeValueAction: No instance group to operate on. Action arguments: %s",
       args.argumentsToString().c_str());
}
