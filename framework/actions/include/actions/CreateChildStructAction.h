// Creates a struct instance below every instance of the action's class that
// the filter admits, and makes the parent refer to it.
//
// Arguments (all required): `structType` the struct class, `childRdnValue`
// the struct instance's name, `structRefName` the parent's reference
// attribute. The struct instance is named "id=<childRdnValue>" below the
// parent, as the model names every struct instance. Its distinguished name is
// appended to the parent's `structRefName` attribute (created as a name
// attribute when the parent lacks it) unless the attribute holds it already.
// A struct instance that exists already is linked, not created again, so the
// action can run twice.

#ifndef VOSK_ACTIONS_CREATE_CHILD_STRUCT_ACTION_H
#define VOSK_ACTIONS_CREATE_CHILD_STRUCT_ACTION_H

#include "runtime/UpgradeAction.h"

class CreateChildStructAction : public UpgradeAction {
 public:
  CreateChildStructAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;

 private:
  static bool createUnderParent(InstanceIf& parent, ActionContext& context);
};

#endif
