// Removes instances of a child class below the instances of the action's
// class.
//
// Arguments: `childType` (required) the class of the children,
// `childRdnValue` (optional) remove only the child with this value of its
// naming attribute, else every child of the class directly below the parent,
// `parentRdnValue` (optional) act only below the parent whose own RDN value
// equals it. The filter arguments of Filter apply to the parents.
//
// A removed child's own children are not removed: remove them first. When
// the action's class has no instances, the first instance that the child
// class lists is removed, and only that one. Removing a child that is not
// there is not a failure.

#ifndef VOSK_ACTIONS_REMOVE_CHILD_INSTANCE_ACTION_H
#define VOSK_ACTIONS_REMOVE_CHILD_INSTANCE_ACTION_H

#include <string>

#include "runtime/UpgradeAction.h"

class RemoveChildInstanceAction : public UpgradeAction {
 public:
  RemoveChildInstanceAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  // Always true: without parents the child class is still worked on.
  bool validateInstanceGroup(InstanceGroupIf* instanceGroup) override;
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;

  // The distinguished name of the child named by `childRdnValue` below
  // `parentLdn`; empty when the argument is absent. A struct child is named
  // "id=<value>", any other "<childType, first letter lower-cased>Id=<value>".
  static std::string getTargetLdn(const std::string& parentLdn, const std::string& childType, bool isStruct,
                                  ActionArgumentsIf& args);

 private:
  static bool removeUnderParent(InstanceIf& parent, ActionContext& context);
};

#endif
