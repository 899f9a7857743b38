// Adds values to a multi-valued attribute (`name`) of every instance of the
// class that the filter admits: the `elementValue` argument, or every value
// the `Operation` elements (operator "=", no range) give, in order. With
// `index` they are inserted from that position on, otherwise appended. An
// absent attribute is created (type from the `type` argument or the source
// attribute). All values are checked against the type before one is added.

#ifndef VOSK_ACTIONS_ADD_ARRAY_ELEMENT_ACTION_H
#define VOSK_ACTIONS_ADD_ARRAY_ELEMENT_ACTION_H

#include "runtime/UpgradeAction.h"

class AddArrayElementAction : public UpgradeAction {
 public:
  AddArrayElementAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
};

#endif
