// Changes an attribute (`structAttribute`) of the struct instances of class
// `structType` that the attribute `name` of each instance refers to by
// their distinguished names. The operations work on the struct attribute as
// SetAttributeValueAction's work on an instance's attribute; their value
// sources are resolved against the owning instance. The filter chooses the
// owning instances; `oldAttributeValue` chooses the referred struct
// instances by name.

#ifndef VOSK_ACTIONS_SET_STRUCT_ATTRIBUTE_VALUE_ACTION_H
#define VOSK_ACTIONS_SET_STRUCT_ATTRIBUTE_VALUE_ACTION_H

#include "runtime/UpgradeAction.h"

class SetStructAttributeValueAction : public UpgradeAction {
 public:
  SetStructAttributeValueAction();

  // Refuses a struct class that no model defines, then changes the instances.
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;
  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
};

#endif
