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

TEST(BuiltInActionsTest, ModelActionsAreRegisteredInTheirOrder) {
  Actions actions = builtInActions();
  std::vector<std::string> seen;
  for (const auto& action : actions) {
    if (std::count(kModelActions.begin(), kModelActions.end(), action->getName()) != 0)
      seen.push_back(action->getName());
  }
  EXPECT_EQ(kModelActions, seen);
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
