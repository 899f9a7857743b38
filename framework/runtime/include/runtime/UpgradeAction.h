// The base of the built-in actions. It fixes the order in which an action
// is checked and applied:
//
//   1. a null ICTI handler is a programming error: logged, then abort;
//   2. validateInstanceGroup: when it says no, the action reports the
//      missing group itself (reportMissingInstanceGroup) and fails;
//   3. validateArgs: when it says no, the action fails;
//   4. executeAction: by default, the instance operation is called for
//      every instance of the group that a Filter over the arguments is
//      handed to, continuing after a failing instance; the result is the
//      AND of all calls (true for an empty group).
//
// Actions keep no per-call state in their fields: one object serves every
// `MoAction` of its name. The instance operation gets the running call as
// an ActionContext (xml/ActionContext.h).

#ifndef VOSK_RUNTIME_UPGRADE_ACTION_H
#define VOSK_RUNTIME_UPGRADE_ACTION_H

#include <string>
#include <utility>
#include <vector>

#include "runtime/ActionContext.h"
#include "runtime/Filter.h"
#include "runtime/UpgradeActionIf.h"

class UpgradeAction : public UpgradeActionIf {
 public:
  // `name` is not copied: it must live as long as the action (a literal).
  // `instanceOperation` may be null for an action that replaces
  // executeAction or execute and never works instance by instance.
  // `argumentNames` are the `Arg` names the action reads (see
  // UpgradeActionIf::argumentNames).
  UpgradeAction(const char* name, InstanceOperation instanceOperation, std::vector<std::string> argumentNames = {})
      : name_(name), instanceOperation_(instanceOperation), argumentNames_(std::move(argumentNames)) {}

  bool execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args) override;
  const char* getName() const override { return name_; }
  std::vector<std::string> argumentNames() const override { return argumentNames_; }

  // Builds the action's failure text for a missing instance group (with its
  // main arguments) and passes it to ictiHandler->failUpgrade.
  virtual void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) = 0;
  // True exactly when there is a group.
  virtual bool validateInstanceGroup(InstanceGroupIf* instanceGroup);
  virtual bool executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args);

  // The value of the first RDN of a distinguished name: the text after its
  // first "=" up to the first separating comma, unescaped ("aId=1,bId=2"
  // gives "1", "aId=x\,y,bId=2" gives "x,y"). Empty when there is no "=".
  static std::string rdnValue(const std::string& ldn);
  // True for a name that can stand in a distinguished name as a class or
  // attribute name: letters, digits, '_' and '-' only, not empty.
  static bool isPlainName(const std::string& name);
  // True when `name` is the attribute that names `instance` (its RDN's).
  static bool isNamingAttribute(const InstanceIf& instance, const std::string& name);
  // Formats the reason (without the thread's message prefix) and has the
  // handler fail the upgrade with it.
  static void fail(IctiHandlerIf* ictiHandler, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
  // False, after reporting it, when `className` (given as `argument` of
  // `action`) is a class that neither the old nor the new model defines.
  static bool requireDefinedClass(IctiHandlerIf* ictiHandler, const char* action, const char* argument,
                                  const std::string& className);

 protected:
  // Calls the instance operation for every instance of `instanceGroup` with
  // a context over `args` and its filter, continuing after a failing
  // instance; the AND of all calls, and false when the filter could not
  // judge an instance.
  bool visitInstances(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args,
                      InstanceGroupIf* targetGroup = nullptr) const;

  // A null handler is a programming error: logs `message` at error level and
  // aborts the process.
  static void requireHandler(IctiHandlerIf* ictiHandler, const char* message = "ICTI handler pointer is NULL");
  // False, after reporting why, when `filter` could not judge an instance.
  static bool filterJudged(const Filter& filter, IctiHandlerIf* ictiHandler);
  // `names` and the arguments of the instance filter.
  static std::vector<std::string> withFilter(std::vector<std::string> names);

 private:
  const char* const name_;
  const InstanceOperation instanceOperation_;
  const std::vector<std::string> argumentNames_;
};

#endif
