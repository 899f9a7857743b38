// Sets, changes or copies the values of one attribute (`name`) of every
// instance of the class that the filter admits, by the `Operation`
// elements of the action in document order (see ValueOperations for the
// operators and OperationSource for where values come from). "=" without a
// range replaces all values, creating the attribute when absent; every
// other operation changes the existing values in its range. With
// `oldAttributeValue`, only the values equal to it are changed.

#ifndef VOSK_ACTIONS_SET_ATTRIBUTE_VALUE_ACTION_H
#define VOSK_ACTIONS_SET_ATTRIBUTE_VALUE_ACTION_H

#include "runtime/UpgradeAction.h"

class SetAttributeValueAction : public UpgradeAction {
 public:
  SetAttributeValueAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
};

#endif
