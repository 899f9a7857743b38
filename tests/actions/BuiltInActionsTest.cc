#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "AbortReport.h"
#include "ActionTestSupport.h"
#include "actions/BuiltInActions.h"
#include "xml/UpgradeActionIf.h"

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

const std::vector<std::string> kModelActions = {"AddAttributeAction", "RemoveAttributeAction", "DeleteMoTypeAction",
                                                "CreateMoTypeAction", "RenameMoTypeAction",    "RenameAttributeAction"};

TEST(BuiltInActionsTest, AllFourteenAreRegisteredInTheirOrder) {
  const std::vector<std::string> expected = {
      "AddAttributeAction",         "RemoveAttributeAction",         "CreateChildInstanceAction",
      "RemoveChildInstanceAction",  "DeleteMoTypeAction",            "CreateMoTypeAction",
      "CreateChildStructAction",    "SetAttributeValueAction",       "RenameMoTypeAction",
      "RenameAttributeAction",      "AddArrayElementAction",         "RemoveArrayElementAction",
      "RenameENodeBFunctionIdAction", "SetStructAttributeValueAction"};
  std::vector<std::string> seen;
  for (const auto& action : builtInActions()) seen.push_back(action->getName());
  EXPECT_EQ(expected, seen);
}

TEST(BuiltInActionsDeathTest, NullHandlerAbortsValidation) {
  Actions actions = builtInActions();
  auto args = makeArguments({});
  for (const std::string& name : kModelActions) {
    SCOPED_TRACE(name);
    UpgradeActionIf* action = find(actions, name);
    ASSERT_NE(nullptr, action);
    EXPECT_DEATH(
        {
          reportOnAbort("ICTI handler pointer is NULL");
          action->validateArgs(*args, nullptr);
        },
        kAbortedAfterLogging);
  }
}

}  // namespace
