// Drops the instance group of the enclosing `Mo` element's class, so that
// none of its instances reach the new model. Takes no argument. Deleting a
// class that has no group is a success.

#ifndef VOSK_ACTIONS_DELETE_MO_TYPE_ACTION_H
#define VOSK_ACTIONS_DELETE_MO_TYPE_ACTION_H

#include "runtime/UpgradeAction.h"

class DeleteMoTypeAction : public UpgradeAction {
 public:
  DeleteMoTypeAction();

  // Does the whole work itself; the common check sequence does not apply.
  bool execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;
  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  // Never reached (execute does not ask for it); only checks the handler.
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
};

#endif
