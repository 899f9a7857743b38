#include "actions/AddArrayElementAction.h"

#include "actions/ValueOperations.h"
#include "common/Log.h"
#include "icti/ValueText.h"

namespace {

constexpr const char* kName = "AddArrayElementAction";

bool parsePosition(const std::string& text, uint32_t& position) {
  unsigned long long value = 0;
  if (!ValueText::parseUnsigned(ValueType::kUint32, text, value)) return false;
  position = static_cast<uint32_t>(value);
  return true;
}

// The values to add: `elementValue`, or those of every operation in order.
bool valuesToAdd(InstanceIf& instance, ActionArgumentsIf& args, OperationSource& source, OperationSource::Values& all) {
  std::string element;
  if (args.getArgument("elementValue", element)) {
    all.values.push_back(AttributeValue::ofString(element));
    return true;
  }
  for (OperationArgumentIf* operation : args.getOperations()) {
    OperationSource::Values values;
    if (!source.resolve(*operation, instance, values)) return false;
    all.values.insert(all.values.end(), values.values.begin(), values.values.end());
    if (all.type == ValueType::kNone) all.type = values.type;
  }
  return true;
}

bool addArrayElement(InstanceIf& instance, ActionContext& context) {
  ActionArgumentsIf& args = context.args;
  std::string name;
  args.getArgument("name", name);
  ValueOperations operations(context.handler, kName, args);
  if (!operations.admits(instance, name, context.filter)) return true;
  const std::string ldn = instance.getLdn();
  OperationSource::Values values;
  if (!valuesToAdd(instance, args, operations.source(), values)) return false;
  AttributeInternalIf* attribute = operations.targetAttribute(instance, name, values.type);
  std::vector<AttributeValue> converted;
  if (attribute == nullptr || !operations.convertAll(*attribute, values.values, ldn, converted)) return false;
  std::string indexText;
  uint32_t position = attribute->getNumberOfValues();
  if (args.getArgument("index", indexText)) parsePosition(indexText, position);
  for (const AttributeValue& value : converted) {
    attribute->insertValue(position++, value);
    TAV_TRACE(INFO, "%s: added a value to %s of %s at index %u", kName, name.c_str(), ldn.c_str(), position - 1);
  }
  return true;
}

}  // namespace

AddArrayElementAction::AddArrayElementAction() : UpgradeAction(kName, addArrayElement, withFilter({"name", "elementValue", "index", "type"})) {}

bool AddArrayElementAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string value;
  if (!args.getArgument("name", value)) {
    fail(ictiHandler, "AddArrayElementAction requires argument name.");
    return false;
  }
  bool hasElement = args.getArgument("elementValue", value);
  if (hasElement == !args.getOperations().empty()) {
    fail(ictiHandler, hasElement ? "AddArrayElementAction takes elementValue or Operation elements, not both."
                                 : "AddArrayElementAction requires elementValue or at least one Operation.");
    return false;
  }
  uint32_t position = 0;
  if (args.getArgument("index", value) && !parsePosition(value, position)) {
    fail(ictiHandler, "AddArrayElementAction: index %s is not a position", value.c_str());
    return false;
  }
  return ValueOperations::check(args, *ictiHandler, kName, true, false);
}

void AddArrayElementAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler, "Action Failed: AddArrayElementAction: No instance group to operate on. Action arguments: %s",
       args.argumentsToString().c_str());
}
