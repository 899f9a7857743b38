#include "actions/CreateChildStructAction.h"

#include <string>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "icti/DistinguishedName.h"
#include "icti/ValueText.h"
#include "icti/ValueType.h"
#include "runtime/FilterIf.h"

namespace {

// The arguments the action requires, in the order they are checked.
constexpr const char* kProperties[] = {"structType", "childRdnValue", "structRefName"};

bool holdsValue(AttributeInternalIf& attribute, const std::string& value) {
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    if (attribute.readValueAtIndex(i) == value) return true;
  }
  return false;
}

// Appends `reference` to the parent's reference attribute, which must hold
// names (or their text).
bool linkStruct(IctiHandlerIf& handler, InstanceIf& parent, const std::string& refName, const std::string& reference) {
  AttributeInternalIf* attribute = parent.getAttribute(refName);
  if (attribute == nullptr && !parent.addAttribute(refName, ValueType::kName, &attribute)) return false;
  if (attribute == nullptr) return false;
  if (attribute->getType() != ValueType::kName && attribute->getType() != ValueType::kString) {
    UpgradeAction::fail(&handler,
                        "CreateChildStructAction: structRefName %s is an attribute of type %s on %s, not a reference",
                        refName.c_str(), ValueText::typeName(attribute->getType()), parent.getLdn().c_str());
    return false;
  }
  if (holdsValue(*attribute, reference)) return true;
  return attribute->addCopy(reference.c_str());
}

}  // namespace

CreateChildStructAction::CreateChildStructAction() : UpgradeAction("CreateChildStructAction", createUnderParent,
                    withFilter({"structType", "childRdnValue", "structRefName"})) {}

bool CreateChildStructAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  bool complete = true;
  for (const char* property : kProperties) {
    std::string value;
    if (args.getArgument(property, value)) continue;
    fail(ictiHandler, "CreateChildStructAction: Failed to read argument %s for CreateChildStructAction", property);
    complete = false;
  }
  return complete;
}

void CreateChildStructAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(ictiHandler,
       "CreateChildStruct failed: No instance group to operate on. Parent MO class non-existent. Action arguments: "
       "attributeName = %s, childRndValue = %s ",
       argumentValue(args, "structType").c_str(), argumentValue(args, "childRdnValue").c_str());
}

bool CreateChildStructAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                            ActionArgumentsIf& args) {
  const std::string structType = argumentValue(args, "structType");
  InstanceGroupIf* structGroup = ictiHandler->getInstanceGroup(structType);
  if (structGroup == nullptr && !requireDefinedClass(ictiHandler, getName(), "structType", structType)) {
    return false;
  }
  return visitInstances(ictiHandler, instanceGroup, args, structGroup);
}

bool CreateChildStructAction::createUnderParent(InstanceIf& parent, ActionContext& context) {
  if (!context.filter.applies(parent, 0)) return true;
  ActionArgumentsIf& args = context.args;
  const std::string structType = argumentValue(args, "structType");
  const std::string rdnValue = argumentValue(args, "childRdnValue");
  const std::string parentLdn = parent.getLdn();
  TAV_TRACE(INFO, "Create a new struct Instance of class %s rdn=%s with parent %s", structType.c_str(), rdnValue.c_str(),
          parentLdn.c_str());
  const std::string structLdn = "id=" + DistinguishedName::escapeValue(rdnValue) + "," + parentLdn;
  InstanceGroupIf* group = context.targetGroup;
  InstanceIf* created = group != nullptr ? group->createInstance(parentLdn, rdnValue, true, structType) : nullptr;
  InstanceIf* instance = created != nullptr ? created : (group != nullptr ? group->getInstance(structLdn) : nullptr);
  if (instance == nullptr) {
    fail(&context.handler, "CreateChildStruct: Can not get struct instance %s", structLdn.c_str());
    return false;
  }
  return linkStruct(context.handler, parent, argumentValue(args, "structRefName"), instance->getLdn());
}
