// The attribute actions (add, remove, rename) and the MO type actions (create, delete).

#include <gtest/gtest.h>

#include "ActionModel.h"
#include "actions/AddAttributeAction.h"
#include "actions/CreateMoTypeAction.h"
#include "actions/DeleteMoTypeAction.h"
#include "actions/RemoveAttributeAction.h"
#include "actions/RenameAttributeAction.h"
#include "icti/ValueType.h"

namespace {


// cellId=1 (old = 1, 2) and cellId=2 (old = 3) below ME=1.
class AttributeActionsTest : public testing::Test {
 protected:
  AttributeActionsTest()
      : first(model.add("Cell", "ME=1", "1", {{"old", ValueType::kInt32, {"1", "2"}}})),
        second(model.add("Cell", "ME=1", "2", {{"old", ValueType::kInt32, {"3"}}})) {}

  ActionModel model;
  InstanceIf& first;
  InstanceIf& second;
  AddAttributeAction add;
  RemoveAttributeAction remove;
  RenameAttributeAction rename;
};

// Adding to every instance is part of the whole runs.
TEST_F(AttributeActionsTest, AddAttributeKeepsExistingValues) {
  EXPECT_TRUE(model.run(add, "Cell", {{"name", "old"}, {"type", "SA_INT32_T"}, {"defaultValue", "7|8"}}));
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
}

TEST_F(AttributeActionsTest, RenameAttributeFailsForAnInstanceWithoutItAndGoesOn) {
  second.eraseAttribute("old");
  EXPECT_FALSE(model.run(rename, "Cell", {{"name", "old"}, {"newName", "new"}}));
  EXPECT_EQ(Strings{"Instance cellId=2,ME=1 has no attribute old"}, model.failures);
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "new"));
}

// A missing group is reported by the action base (tests/runtime).
TEST_F(AttributeActionsTest, FailuresChangeNoInstance) {
  const struct {
    UpgradeActionIf* action;
    const char* args;
    std::string failure;
  } cases[] = {
      {&add, "type=SA_INT32_T defaultValue=1", "AddAttributeAction requires args: name, type and defaultValue."},
      {&remove, "value=x", "RemoveAttributeAction requires argument name"},
      {&rename, "name=old", "RenameAttributeAction requires arguments name and newName."}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failure);
    model.failures.clear();
    EXPECT_FALSE(model.run(*c.action, "Cell", argsOf(c.args)));
    EXPECT_EQ(Strings{c.failure}, model.failures);
    EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
  }
}

// Creating a class (also one that exists) and deleting one are part of the whole runs.
TEST(MoTypeActionsTest, CreateNeedsADefinedClassAndDeleteToleratesAnAbsentOne) {
  ActionModel model;
  CreateMoTypeAction create;
  DeleteMoTypeAction remove;
  EXPECT_FALSE(model.runOn(create, nullptr, {{"moTypeName", "Fresh"}}));
  EXPECT_FALSE(model.runOn(create, nullptr, {{"name", "Other"}}));
  EXPECT_FALSE(model.has("Fresh") || model.has("Other"));
  EXPECT_EQ((Strings{"CreateMoTypeAction: moTypeName Fresh is a class that neither the old nor the new model defines",
                     "validateArgs failed in CreateMoType. Action did not have mandatory value moTypeName."}),
            model.failures);
  model.group("Kept");
  EXPECT_TRUE(model.run(remove, "Fresh", {{"name", "ignored"}}));
  EXPECT_TRUE(model.has("Kept"));
}

}  // namespace
