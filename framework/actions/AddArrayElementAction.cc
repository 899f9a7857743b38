#include "actions/AddArrayElementAction.h"

#include <climits>

#include "actions/ValueOperations.h"
#include "actions/ValueText.h"
#include "common/Log.h"
#include "xml/ThreadSlot.h"

namespace {

constexpr const char* kName = "AddArrayElementAction";

using HandlerSlot = ThreadSlot<struct AddArrayElementHandlerTag, IctiHandlerIf*>;

bool parsePosition(const std::string& text, uint32_t& position) {
  unsigned long long value = 0;
  if (!ValueText::parseUnsigned(text, value) || value > UINT_MAX) return false;
  position = static_cast<uint32_t>(value);
  return true;
}

// The values to add: `elementValue`, or those of every operation in order.
bool valuesToAdd(InstanceIf& instance, ActionArgumentsIf& args, OperationSource& source, OperationSource::Values& all) {
  std::string element;
  if (args.getArgument("elementValue", element)) {
    all.texts.push_back(element);
    return true;
  }
  for (OperationArgumentIf* operation : args.getOperations()) {
    OperationSource::Values values;
    if (!source.resolve(*operation, instance, values)) return false;
    all.texts.insert(all.texts.end(), values.texts.begin(), values.texts.end());
    if (all.type == 0) all.type = values.type;
  }
  return true;
}

bool addArrayElement(InstanceIf& instance, ActionArgumentsIf& args, FilterIf& filter) {
  std::string name;
  args.getArgument("name", name);
  ValueOperations operations(*HandlerSlot::get(), kName, args);
  bool admitted = false;
  if (!operations.admits(instance, name, filter, admitted)) return false;
  if (!admitted) return true;
  const std::string ldn = instance.getLdn();
  OperationSource::Values values;
  if (!valuesToAdd(instance, args, operations.source(), values)) return false;
  AttributeInternalIf* attribute = operations.textAttribute(instance, name, values.type);
  if (attribute == nullptr || !operations.allFit(*attribute, values.texts, ldn)) return false;
  std::string indexText;
  uint32_t position = 0;
  bool atPosition = args.getArgument("index", indexText) && parsePosition(indexText, position);
  for (const std::string& text : values.texts) {
    if (atPosition) {
      attribute->insertValueAtIndex(text.c_str(), position++);
    } else {
      attribute->addCopy(text.c_str());
    }
    TAV_LOG(INFO, "%s: added %s to %s of %s", kName, text.c_str(), name.c_str(), ldn.c_str());
  }
  return true;
}

}  // namespace

AddArrayElementAction::AddArrayElementAction() : UpgradeAction(kName, addArrayElement) {}

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
       args.argumentsToString());
}

bool AddArrayElementAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                          ActionArgumentsIf& args) {
  HandlerSlot::Scope keep(ictiHandler);
  return UpgradeAction::executeAction(ictiHandler, instanceGroup, args);
}
