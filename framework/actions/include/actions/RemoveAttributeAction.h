// Drops an attribute from every instance of a class that the filter admits.
//
// Argument: `name`, required. An instance without the attribute is left as
// it is, which counts as success.

#ifndef VOSK_ACTIONS_REMOVE_ATTRIBUTE_ACTION_H
#define VOSK_ACTIONS_REMOVE_ATTRIBUTE_ACTION_H

#include "runtime/UpgradeAction.h"

class RemoveAttributeAction : public UpgradeAction {
 public:
  RemoveAttributeAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
};

#endif
