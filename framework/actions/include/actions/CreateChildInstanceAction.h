// Creates one instance of a child class below every instance of the
// action's class that the filter (and an optional `parentRdnValue`) admits,
// or a single root instance when the action's class has no instances.
//
// Arguments: `childType` (required) the class to create, `childRdnValue`
// (required) the value of the new instance's naming attribute,
// `parentRdnValue` (optional) create only below the parent whose own RDN
// value equals it. The filter arguments of Filter apply to the parents.
//
// A child class the model does not know is not an error: nothing is created.
// Creating a child that exists already fails the upgrade; the first failure
// ends the walk over the parents.

#ifndef VOSK_ACTIONS_CREATE_CHILD_INSTANCE_ACTION_H
#define VOSK_ACTIONS_CREATE_CHILD_INSTANCE_ACTION_H

#include <string>

#include "runtime/UpgradeAction.h"

class CreateChildInstanceAction : public UpgradeAction {
 public:
  CreateChildInstanceAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  // Always true: without parents the child becomes a root instance.
  bool validateInstanceGroup(InstanceGroupIf* instanceGroup) override;
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;

 private:
  static bool createUnderParent(InstanceIf& parent, ActionContext& context);
  static bool createChild(ActionContext& context, const std::string& parentLdn, const std::string& rdnValue);
};

#endif
