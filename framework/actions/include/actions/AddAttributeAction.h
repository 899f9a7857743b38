// Gives every instance of a class that the filter admits a new attribute of
// a stated type, filled from a "|"-separated default value list.
//
// Arguments: `name`, `type` (a type name of AttributeTypes) and
// `defaultValue`, all required. "1|2|3" gives three values, "5" one, and an
// empty text an attribute without values. An instance that already has the
// attribute keeps it as it is.

#ifndef VOSK_ACTIONS_ADD_ATTRIBUTE_ACTION_H
#define VOSK_ACTIONS_ADD_ATTRIBUTE_ACTION_H

#include "runtime/UpgradeAction.h"

class AddAttributeAction : public UpgradeAction {
 public:
  AddAttributeAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;

 private:
  static bool addAttribute(InstanceIf& instance, ActionContext& context);
};

#endif
