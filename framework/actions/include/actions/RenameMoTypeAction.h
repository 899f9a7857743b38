// Moves every instance of a class into a new instance group under a new
// class name, so that it is written as an instance of the new class.
//
// Arguments:
//   newName                      required: the new class name
//   name                         optional: only quoted when the class has no
//                                instance group
//   structAttrN, structTypeN     struct attributes of the renamed class and
//                                their struct classes, in pairs
//   descendantN                  classes with instances below renamed ones
//   morefAttrN, referringMoTypeN reference attributes in other classes that
//                                point at renamed instances, in pairs
// Numbered arguments count from 1; the first missing number ends the list.
//
// The naming attribute follows the class: Foo renamed Bar turns fooId=7 into
// barId=7. Names below a renamed instance (descendants' parent names, the
// struct instances of its struct attributes and their references) and the
// reference values that point at it or below it have every RDN whose
// attribute is "fooId" renamed to "barId", value kept. Nothing else in a
// name changes.
//
// An instance reaches the new group only when all of its dependants could be
// renamed; each missing class, struct instance or reference attribute fails
// the upgrade. The old group is removed afterwards. A struct class cannot be
// renamed.

#ifndef VOSK_ACTIONS_RENAME_MO_TYPE_ACTION_H
#define VOSK_ACTIONS_RENAME_MO_TYPE_ACTION_H

#include <string>

#include "runtime/UpgradeAction.h"

class RenameMoTypeAction : public UpgradeAction {
 public:
  RenameMoTypeAction();

  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;

  // `name` with every RDN "<oldRdnAttribute>=<value>" turned into
  // "<newRdnAttribute>=<value>"; other RDNs stay as they are.
  static std::string renameRdns(const std::string& name, const std::string& oldRdnAttribute,
                                const std::string& newRdnAttribute);
};

#endif
