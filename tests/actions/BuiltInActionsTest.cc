#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "AbortReport.h"
#include "ActionModel.h"
#include "actions/BuiltInActions.h"
#include "runtime/UpgradeActionIf.h"

namespace {

using Actions = std::vector<std::unique_ptr<UpgradeActionIf>>;

Actions builtInActions() {
  Actions owned;
  for (UpgradeActionIf* action : createBuiltInActions()) owned.emplace_back(action);
  return owned;
}

UpgradeActionIf* find(const Actions& actions, const std::string& name) {
  for (const auto& action : actions) {
    if (name == action->getName()) return action.get();
  }
  return nullptr;
}

TEST(BuiltInActionsTest, AllFourteenAreRegisteredInTheirOrder) {
  const std::vector<std::string> expected = {
      "AddAttributeAction",           "RemoveAttributeAction",        "CreateChildInstanceAction",
      "RemoveChildInstanceAction",    "DeleteMoTypeAction",           "CreateMoTypeAction",
      "CreateChildStructAction",      "SetAttributeValueAction",      "RenameMoTypeAction",
      "RenameAttributeAction",        "AddArrayElementAction",        "RemoveArrayElementAction",
      "RenameENodeBFunctionIdAction", "SetStructAttributeValueAction"};
  std::vector<std::string> seen;
  for (const auto& action : builtInActions()) seen.push_back(action->getName());
  EXPECT_EQ(expected, seen);
}

TEST(BuiltInActionsDeathTest, NullHandlerAbortsValidation) {
  Actions actions = builtInActions();
  auto args = ActionModel::argumentsOf({});
  const std::string pointer = "ICTI handler pointer is NULL";
  const std::pair<const char*, std::string> cases[] = {
      {"AddAttributeAction", pointer},
      {"RemoveAttributeAction", pointer},
      {"DeleteMoTypeAction", pointer},
      {"CreateMoTypeAction", pointer},
      {"RenameMoTypeAction", pointer},
      {"RenameAttributeAction", pointer},
      {"CreateChildInstanceAction", "ICTI handler pointer is nullptr"}};
  for (const auto& [name, message] : cases) {
    SCOPED_TRACE(name);
    UpgradeActionIf* action = find(actions, name);
    ASSERT_NE(nullptr, action);
    EXPECT_DEATH(
        {
          reportOnAbort(message);
          action->validateArgs(*args, nullptr);
        },
        kAbortedAfterLogging);
  }
}

}  // namespace
