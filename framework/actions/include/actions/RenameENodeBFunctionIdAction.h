// Renames the naming attribute of the radio node function instances (the
// action's class) and makes the instances below the function follow.
//
// Argument: `newENodeBFunctionIdName` (required), the new name of the
// function's naming attribute. An instance "oldId=1,managedElementId=1"
// becomes "<new>=1,managedElementId=1"; a function that already has the new
// name is left alone, so the action can run twice.
//
// The subtree is the instances of a fixed list of classes: 149 MO classes
// that live below the function, then 56 struct classes used below it. Every
// instance of these classes whose parent name lies in the renamed function's
// subtree (the parent is the function, or its name ends in ",<function's old
// distinguished name>") gets the function's RDN in its parent name replaced;
// names outside the subtree are logged and left unchanged. The references
// such an instance holds are rewritten the same way: the values of its
// "reservedBy" attribute and of every name attribute that name the function
// or an instance below it. References held by instances of other classes are
// not touched. A listed MO
// class that the model does not know fails the action; a struct class never
// does.

#ifndef VOSK_ACTIONS_RENAME_ENODEB_FUNCTION_ID_ACTION_H
#define VOSK_ACTIONS_RENAME_ENODEB_FUNCTION_ID_ACTION_H

#include <cstddef>
#include <string>
#include <vector>

#include "runtime/UpgradeAction.h"

class RenameENodeBFunctionIdAction : public UpgradeAction {
 public:
  static constexpr size_t kMoClassCount = 149;
  static constexpr size_t kStructClassCount = 56;

  RenameENodeBFunctionIdAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;

  // The MO classes, then the struct classes, in the order they are rewritten.
  const std::vector<std::string>& classNames() const { return classNames_; }

 private:
  struct Rename;

  static bool renameFunction(InstanceIf& function, ActionContext& context);
  static bool rewriteSubtree(IctiHandlerIf& handler, const std::string& className, const Rename& rename);
  static void rewriteInstance(InstanceIf& instance, const Rename& rename);
  static void rewriteReferences(AttributeInternalIf& attribute, const Rename& rename);

  std::vector<std::string> classNames_;
};

#endif
