#include "actions/RenameAttributeAction.h"

#include <cstdint>
#include <string>

#include "actions/ArgumentValue.h"

namespace {

// The value moves as it is, bit for bit.
bool copyValue(AttributeInternalIf& from, AttributeInternalIf& to, uint32_t index) {
  AttributeValue value;
  return from.getValue(index, &value) && to.addValue(value);
}

}  // namespace

RenameAttributeAction::RenameAttributeAction() : UpgradeAction("RenameAttributeAction", renameAttribute, withFilter({"name", "newName"})) {}

bool RenameAttributeAction::renameAttribute(InstanceIf& instance, ActionContext& context) {
  IctiHandlerIf* handler = &context.handler;
  std::string name;
  std::string newName;
  context.args.getArgument("name", name);
  context.args.getArgument("newName", newName);
  if (!context.filter.applies(instance, 0)) return true;

  AttributeInternalIf* oldAttribute = instance.getAttribute(name);
  if (oldAttribute == nullptr) {
    fail(handler, "Instance %s has no attribute %s", instance.getLdn().c_str(), name.c_str());
    return false;
  }
  AttributeInternalIf* newAttribute = nullptr;
  if (!instance.addAttribute(newName, oldAttribute->getType(), &newAttribute) || newAttribute == nullptr) {
    handler->failUpgrade("Unable to create new attribute");
    return false;
  }
  const uint32_t count = oldAttribute->getNumberOfValues();
  for (uint32_t index = 0; index < count; ++index) {
    if (!copyValue(*oldAttribute, *newAttribute, index)) {
      fail(handler, "Failed to copy data from old attribute %s to new attribute %s", name.c_str(), newName.c_str());
      return false;
    }
  }
  instance.eraseAttribute(name);
  return true;
}

bool RenameAttributeAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string name;
  std::string newName;
  if (args.getArgument("name", name) && args.getArgument("newName", newName)) return true;
  ictiHandler->failUpgrade("RenameAttributeAction requires arguments name and newName.");
  return false;
}

void RenameAttributeAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  fail(ictiHandler,
       "Action Failed: renameAttribute: No instance group to operate on. Action arguments: old name = %s, new name = "
       "%s ",
       argumentValue(args, "name").c_str(), argumentValue(args, "newName").c_str());
}
