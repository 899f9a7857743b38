// Moves the values of an attribute into a new attribute of the same type
// under another name, in index order, and drops the old attribute, on every
// instance of a class that the filter admits.
//
// Arguments: `name` (the old name) and `newName`, both required. Unlike
// removal, an admitted instance without the attribute fails the upgrade.

#ifndef VOSK_ACTIONS_RENAME_ATTRIBUTE_ACTION_H
#define VOSK_ACTIONS_RENAME_ATTRIBUTE_ACTION_H

#include "runtime/UpgradeAction.h"

class RenameAttributeAction : public UpgradeAction {
 public:
  RenameAttributeAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;

 private:
  static bool renameAttribute(InstanceIf& instance, ActionContext& context);
};

#endif
