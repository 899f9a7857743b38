// The attribute actions (add, rename) and the MO type actions (create, delete); removing an attribute is the
// whole runs'.

#include <gtest/gtest.h>

#include "ActionModel.h"
#include "actions/AddAttributeAction.h"
#include "actions/CreateMoTypeAction.h"
#include "actions/DeleteMoTypeAction.h"
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
  RenameAttributeAction rename;
};

// Adding to every instance is part of the whole runs.
TEST_F(AttributeActionsTest, AddAttributeKeepsExistingValues) {
  EXPECT_TRUE(model.run(add, "Cell", {{"name", "old"}, {"type", "SA_INT32_T"}, {"defaultValue", "7|8"}}));
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
}

TEST_F(AttributeActionsTest, RenameAttributeFailsForAnInstanceWithoutItAndGoesOn) {
  first.eraseAttribute("old");
  EXPECT_FALSE(model.run(rename, "Cell", {{"name", "old"}, {"newName", "new"}}));
  EXPECT_EQ(Strings{"Instance cellId=1,ME=1 has no attribute old"}, model.failures);
  EXPECT_EQ(Strings{"3"}, ActionModel::values(second, "new"));
}

// The action base: without a group or with invalid arguments no instance is visited.
TEST_F(AttributeActionsTest, AMissingGroupOrInvalidArgumentsChangeNothing) {
  EXPECT_FALSE(model.run(rename, "Nowhere", {{"name", "old"}, {"newName", "new"}}));
  EXPECT_FALSE(model.run(rename, "Cell", {{"name", "old"}}));
  EXPECT_EQ(2u, model.failures.size());
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
}

// Creating a class (also one that exists) and deleting one are part of the whole runs.
TEST(MoTypeActionsTest, CreateNeedsADefinedClassAndDeleteToleratesAnAbsentOne) {
  ActionModel model;
  CreateMoTypeAction create;
  DeleteMoTypeAction remove;
  EXPECT_FALSE(model.runOn(create, nullptr, {{"moTypeName", "Fresh"}}));
  EXPECT_FALSE(model.has("Fresh"));
  EXPECT_EQ(Strings{"CreateMoTypeAction: moTypeName Fresh is a class that neither the old nor the new model defines"},
            model.failures);
  model.group("Kept");
  EXPECT_TRUE(model.run(remove, "Fresh", {{"name", "ignored"}}));
  EXPECT_TRUE(model.has("Kept"));
}

}  // namespace
