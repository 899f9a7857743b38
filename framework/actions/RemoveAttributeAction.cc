#include "actions/RemoveAttributeAction.h"

#include <string>

#include "actions/ArgumentValue.h"
#include "common/Log.h"

namespace {

const std::string kNameProperty = "name";

bool removeAttribute(InstanceIf& instance, ActionContext& context) {
  TAV_TRACE(TRACE1, "RemoveAttributeAction::removeAttribute()");
  std::string name;
  context.args.getArgument(kNameProperty, name);
  // The instance logs an attribute it does not have; that is no failure.
  if (context.filter.applies(instance, 0)) instance.eraseAttribute(name);
  return true;
}

}  // namespace

RemoveAttributeAction::RemoveAttributeAction() : UpgradeAction("RemoveAttributeAction", removeAttribute, withFilter({"name", "value"})) {}

bool RemoveAttributeAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string name;
  if (args.getArgument(kNameProperty, name)) return true;
  fail(ictiHandler, "RemoveAttributeAction requires argument %s", kNameProperty.c_str());
  return false;
}

void RemoveAttributeAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  fail(ictiHandler,
       "Action Failed: RemoveAttribute: No instance group to operate on. Action arguments: name = %s, value = %s ",
       argumentValue(args, kNameProperty.c_str()).c_str(), argumentValue(args, "value").c_str());
}
