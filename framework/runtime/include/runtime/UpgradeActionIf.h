// An upgrade action as the modification-file parser sees it: registered
// once under its name, then called for every `MoAction` element with that
// name, with the arguments of the element.

#ifndef VOSK_RUNTIME_UPGRADE_ACTION_IF_H
#define VOSK_RUNTIME_UPGRADE_ACTION_IF_H

#include <string>
#include <vector>

#include "icti/IctiHandlerIf.h"
#include "icti/InstanceGroupIf.h"
#include "runtime/ActionArgumentsIf.h"

class UpgradeActionIf {
 public:
  virtual ~UpgradeActionIf() = default;

  // Applies the action to the instance group of the class named by the
  // enclosing `Mo` element; the group is null when the class has none.
  virtual bool execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) = 0;
  // Checks that the arguments are complete and consistent without touching
  // any instance; logs why when they are not.
  virtual bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) = 0;
  // The name under which the parser finds the action.
  virtual const char* getName() const = 0;
  // The `Arg` names the action reads; the parser refuses any other, since a
  // misspelt name would silently change what the action does. A name ending
  // in "#" stands for that name followed by a number ("structAttr#" for
  // structAttr1, structAttr2, ...). Empty: every name is taken.
  virtual std::vector<std::string> argumentNames() const { return {}; }
};

#endif
