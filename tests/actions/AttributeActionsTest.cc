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

const Strings kAbsent = {"<absent>"};

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

TEST_F(AttributeActionsTest, AddAttributeSkipsFilteredInstancesAndKeepsExistingValues) {
  EXPECT_TRUE(
      model.run(add, "Cell", {{"name", "added"}, {"type", "SA_UINT32_T"}, {"defaultValue", "9"}, {"rdnValue", "2"}}));
  EXPECT_EQ(kAbsent, ActionModel::values(first, "added"));
  EXPECT_EQ(Strings{"9"}, ActionModel::values(second, "added"));
  EXPECT_TRUE(model.run(add, "Cell", {{"name", "old"}, {"type", "SA_INT32_T"}, {"defaultValue", "7|8"}}));
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
}

TEST_F(AttributeActionsTest, RenameAttributeFailsForAnInstanceWithoutItAndGoesOn) {
  second.eraseAttribute("old");
  EXPECT_FALSE(model.run(rename, "Cell", {{"name", "old"}, {"newName", "new"}}));
  EXPECT_EQ(Strings{"Instance cellId=2,ME=1 has no attribute old"}, model.failures);
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "new"));
}

TEST_F(AttributeActionsTest, FailuresChangeNoInstance) {
  const struct {
    UpgradeActionIf* action;
    const char* args;
    bool withGroup;
    std::string failure;
  } cases[] = {
      {&add, "type=SA_INT32_T defaultValue=1", true, "AddAttributeAction requires args: name, type and defaultValue."},
      {&add, "name=added type=SA_INT32_T defaultValue=1|2", false,
       "Action Failed: addAttribute: No instance group to operate on. Adding attribute to non-existing MO class is "
       "not permitted. Action arguments: name = added, value = 1|2 "},
      {&remove, "value=x", true, "RemoveAttributeAction requires argument name"},
      {&remove, "name=old value=x", false,
       "Action Failed: RemoveAttribute: No instance group to operate on. Action arguments: name = old, value = x "},
      {&rename, "name=old", true, "RenameAttributeAction requires arguments name and newName."},
      {&rename, "name=old newName=new", false,
       "Action Failed: renameAttribute: No instance group to operate on. Action arguments: old name = old, new name = "
       "new "}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failure);
    model.failures.clear();
    EXPECT_FALSE(model.runOn(*c.action, c.withGroup ? &model.group("Cell") : nullptr, argsOf(c.args)));
    EXPECT_EQ(Strings{c.failure}, model.failures);
    EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
    EXPECT_EQ(kAbsent, ActionModel::values(first, "added"));
    EXPECT_EQ(kAbsent, ActionModel::values(first, "new"));
  }
}

TEST(MoTypeActionsTest, CreateKeepsAnExistingClassAndDeleteToleratesAnAbsentOne) {
  ActionModel model;
  CreateMoTypeAction create;
  DeleteMoTypeAction remove;
  EXPECT_FALSE(model.runOn(create, nullptr, {{"moTypeName", "Fresh"}}));
  EXPECT_EQ(Strings{"CreateMoTypeAction: moTypeName Fresh is a class that neither the old nor the new model defines"},
            model.failures);
  model.failures.clear();
  model.defined.insert("Fresh");
  EXPECT_TRUE(model.runOn(create, nullptr, {{"moTypeName", "Fresh"}}));
  ASSERT_TRUE(model.has("Fresh"));
  EXPECT_EQ(0u, model.group("Fresh").getNumberOfInstances());

  model.add("Fresh", "", "1");
  InstanceGroupIf* existing = model.getInstanceGroup("Fresh");
  EXPECT_TRUE(model.runOn(create, existing, {{"moTypeName", "Fresh"}}));
  EXPECT_EQ(existing, model.getInstanceGroup("Fresh"));
  EXPECT_EQ(Strings{"freshId=1"}, model.ldns("Fresh"));
  EXPECT_EQ(Strings{}, model.failures);

  EXPECT_FALSE(model.runOn(create, nullptr, {{"name", "Other"}}));
  EXPECT_FALSE(model.has("Other"));
  EXPECT_EQ(Strings{"validateArgs failed in CreateMoType. Action did not have mandatory value moTypeName."},
            model.failures);

  model.group("Kept");
  EXPECT_TRUE(model.run(remove, "Fresh", {}));
  EXPECT_FALSE(model.has("Fresh"));
  EXPECT_TRUE(model.has("Kept"));
  EXPECT_TRUE(model.run(remove, "Fresh", {{"name", "ignored"}}));
  EXPECT_EQ(1u, model.failures.size());
}

}  // namespace
