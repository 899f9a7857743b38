#include "actions/RemoveArrayElementAction.h"

#include <cstdint>
#include <string>
#include <vector>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "icti/ValueText.h"
#include "icti/ValueType.h"

namespace {

// Removes every value equal to `elementValue`, the highest position first,
// so that the positions still to go do not move.
void removeMatching(AttributeInternalIf& attribute, const std::string& name, const std::string& elementValue) {
  std::vector<uint32_t> matches;
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    if (attribute.readValueAtIndex(i) == elementValue) matches.push_back(i);
  }
  for (auto it = matches.rbegin(); it != matches.rend(); ++it) {
    TAV_TRACE(INFO, "RemoveArrayElement attribute: %s, length: %u, index: %u, remove elementValue with value: %s",
            name.c_str(), attribute.getNumberOfValues(), *it, elementValue.c_str());
    attribute.eraseValueAtIndex(*it);
  }
}

// A whole decimal number that a 32-bit position can take, signed or not,
// as its unsigned position: a negative one is past the end. A larger one
// would wrap around to the front, so it is no index.
bool parseIndex(const std::string& text, uint32_t* index) {
  long long value = 0;
  if (!ValueText::parseSigned(ValueType::kInt64, text, value) || value < INT32_MIN || value > UINT32_MAX) {
    return false;
  }
  *index = static_cast<uint32_t>(value);
  return true;
}

}  // namespace

RemoveArrayElementAction::RemoveArrayElementAction() : UpgradeAction("RemoveArrayElementAction", removeElement, withFilter({"name", "elementValue", "index"})) {}

bool RemoveArrayElementAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string name;
  if (args.getArgument("name", name)) return true;
  fail(ictiHandler, "RemoveArrayElementAction requires argument name.");
  return false;
}

void RemoveArrayElementAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler, "Action Failed: removeArrayElement: No instance group to operate on. Action arguments name = %s",
       argumentValue(args, "name").c_str());
}

bool RemoveArrayElementAction::removeElement(InstanceIf& instance, ActionContext& context) {
  ActionArgumentsIf& args = context.args;
  IctiHandlerIf* handler = &context.handler;
  std::string name;
  if (!args.getArgument("name", name)) {
    fail(handler, "removeArrayElement: Failed to read the required argument name.");
    return false;
  }
  if (!context.filter.applies(instance, 0)) return true;
  AttributeInternalIf* attribute = instance.getAttribute(name);
  if (attribute == nullptr) return true;
  if (isNamingAttribute(instance, name)) {
    fail(handler, "removeArrayElement: attribute %s names %s: its value is the instance's name",
         name.c_str(), instance.getLdn().c_str());
    return false;
  }

  std::string elementValue, indexText;
  if (args.getArgument("elementValue", elementValue)) {
    removeMatching(*attribute, name, elementValue);
  } else if (args.getArgument("index", indexText)) {
    uint32_t index = 0;
    if (!parseIndex(indexText, &index)) {
      fail(handler, "Not able to parse argument index, %s, as an int", indexText.c_str());
      return false;
    }
    attribute->eraseValueAtIndex(index);
  } else {
    // Deliberately out of range: the attribute then removes its last value.
    attribute->eraseValueAtIndex(static_cast<uint32_t>(-1));
  }
  return true;
}
