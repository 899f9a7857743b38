// Removes values from a multi-valued attribute of every instance of the
// action's class that the filter admits.
//
// Arguments: `name` (required) the attribute; `elementValue` (optional)
// remove every value whose text equals it; `index` (optional, used only
// without `elementValue`) remove the value at this position, counted from 0,
// a position past the end removing the last value. With neither, the last
// value is removed. An instance without the attribute is left alone.

#ifndef VOSK_ACTIONS_REMOVE_ARRAY_ELEMENT_ACTION_H
#define VOSK_ACTIONS_REMOVE_ARRAY_ELEMENT_ACTION_H

#include "runtime/UpgradeAction.h"

class RemoveArrayElementAction : public UpgradeAction {
 public:
  RemoveArrayElementAction();

  // Also keeps the handler for the per-instance step.
  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;

 private:
  static bool removeElement(InstanceIf& instance, ActionContext& context);
};

#endif
