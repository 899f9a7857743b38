// Makes an empty instance group for a class the old model does not have, so
// that later actions can create its instances and the class is written.
//
// Argument: `moTypeName`, required: the class to create. The action runs
// whether or not the enclosing `Mo` has an instance group; a class that has
// one already keeps it as it is, which still counts as success.

#ifndef VOSK_ACTIONS_CREATE_MO_TYPE_ACTION_H
#define VOSK_ACTIONS_CREATE_MO_TYPE_ACTION_H

#include "runtime/UpgradeAction.h"

class CreateMoTypeAction : public UpgradeAction {
 public:
  CreateMoTypeAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  // Never reached (every group is accepted); only checks the handler.
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  bool validateInstanceGroup(InstanceGroupIf* instanceGroup) override;
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;
};

#endif
