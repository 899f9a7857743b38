// The attribute actions (add, remove, rename) and the MO type actions (create, delete).

#include <gtest/gtest.h>

#include "ActionModel.h"
#include "LogRecorder.h"
#include "actions/AddAttributeAction.h"
#include "actions/CreateMoTypeAction.h"
#include "actions/DeleteMoTypeAction.h"
#include "actions/RemoveAttributeAction.h"
#include "actions/RenameAttributeAction.h"
#include "safcImmCt.h"

namespace {

const Strings kAbsent = {"<absent>"};

// cellId=1 (old = 1, 2) and cellId=2 (old = 3) below ME=1.
class AttributeActionsTest : public testing::Test {
 protected:
  AttributeActionsTest()
      : first(model.add("Cell", "ME=1", "1", {{"old", SA_IMM_ATTR_SAINT32T, {"1", "2"}}})),
        second(model.add("Cell", "ME=1", "2", {{"old", SA_IMM_ATTR_SAINT32T, {"3"}}})) {}

  ActionModel model;
  InstanceIf& first;
  InstanceIf& second;
  AddAttributeAction add;
  RemoveAttributeAction remove;
  RenameAttributeAction rename;
};

TEST_F(AttributeActionsTest, AddAttributeSplitsTheDefaultAtEveryBar) {
  const struct {
    const char* type;
    const char* defaultValue;
    Strings values;
  } cases[] = {{"SA_INT32_T", "1|2|3", {"1", "2", "3"}},
               {"SA_INT32_T", "5", {"5"}},
               {"SA_INT32_T", "", {}},
               // The empty middle piece makes no number, and the last one still counts.
               {"SA_INT32_T", "-4||7", {"-4", "7"}},
               {"SA_STRING_T", "a||b", {"a", "", "b"}},
               {"SA_STRING_T", "|", {"", ""}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.type) + " " + c.defaultValue);
    first.eraseAttribute("added");
    second.eraseAttribute("added");
    EXPECT_TRUE(model.run(add, "Cell", {{"name", "added"}, {"type", c.type}, {"defaultValue", c.defaultValue}}));
    EXPECT_EQ(c.values, ActionModel::values(first, "added"));
    EXPECT_EQ(c.values, ActionModel::values(second, "added"));
  }
  const std::string prefix = "Adding attribute added to ldn cellId=2,ME=1 with values, string to parse: a||b, ";
  for (const char* piece :
       {"substring start: 0, substring end: 1, substring: a",
        "substring start: 2, substring end: 2, substring: ", "substring start: 3, substring end: -1, substring: b"}) {
    EXPECT_TRUE(LogRecorder::installed().contains(prefix + piece)) << piece;
  }
  EXPECT_EQ(Strings{}, model.failures);
}

TEST_F(AttributeActionsTest, AddAttributeSkipsFilteredInstancesAndKeepsExistingValues) {
  EXPECT_TRUE(
      model.run(add, "Cell", {{"name", "added"}, {"type", "SA_UINT32_T"}, {"defaultValue", "9"}, {"rdnValue", "2"}}));
  EXPECT_EQ(kAbsent, ActionModel::values(first, "added"));
  EXPECT_EQ(Strings{"9"}, ActionModel::values(second, "added"));
  EXPECT_TRUE(model.run(add, "Cell", {{"name", "old"}, {"type", "SA_INT32_T"}, {"defaultValue", "7|8"}}));
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
}

TEST_F(AttributeActionsTest, RemoveAttributeFromTheAdmittedInstancesEvenWhereItIsGone) {
  EXPECT_TRUE(model.run(remove, "Cell", {{"name", "old"}, {"ldnValue", "cellId=2,ME=1"}}));
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "old"));
  EXPECT_EQ(kAbsent, ActionModel::values(second, "old"));
  LogRecorder::installed().clear();
  EXPECT_TRUE(model.run(remove, "Cell", {{"name", "old"}}));
  EXPECT_EQ(kAbsent, ActionModel::values(first, "old"));
  EXPECT_EQ(1u, LogRecorder::installed().count("Tried to remove non-existing Attribute old"));
  EXPECT_EQ(Strings{}, model.failures);
}

TEST_F(AttributeActionsTest, RenameAttributeMovesTheValuesInOrderWithTheirType) {
  const struct {
    uint32_t type;
    Strings values;
  } cases[] = {{SA_IMM_ATTR_SAINT64T, {"-3", "1", "2"}},
               {SA_IMM_ATTR_SANAMET, {"cellId=9,ME=1", "cellId=3,ME=1"}},
               {SA_IMM_ATTR_SASTRINGT, {"b", "", "a"}},
               {SA_IMM_ATTR_SAUINT32T, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    for (InstanceIf* instance : {&first, &second}) {
      ActionModel::set(*instance, "old", c.type, c.values);
      instance->eraseAttribute("new");
    }
    EXPECT_TRUE(model.run(rename, "Cell", {{"name", "old"}, {"newName", "new"}}));
    for (InstanceIf* instance : {&first, &second}) {
      EXPECT_EQ(c.values, ActionModel::values(*instance, "new"));
      EXPECT_EQ(kAbsent, ActionModel::values(*instance, "old"));
      EXPECT_EQ(c.type, instance->getAttribute("new")->getType());
    }
  }
  AttributeInternalIf* bytes = nullptr;
  first.addAttribute("raw", SA_IMM_ATTR_SAANYT, &bytes);
  bytes->addCopy(std::vector<uint8_t>{0x00, 0xff, 0x10});
  EXPECT_TRUE(model.run(rename, "Cell", {{"name", "raw"}, {"newName", "bytes"}, {"rdnValue", "1"}}));
  ASSERT_NE(nullptr, first.getAttribute("bytes"));
  EXPECT_EQ((std::vector<uint8_t>{0x00, 0xff, 0x10}), first.getAttribute("bytes")->getRawDataValueAtIndex(0));
  EXPECT_EQ(Strings{}, model.failures);
}

TEST_F(AttributeActionsTest, RenameAttributeFailsForAnInstanceWithoutItAndGoesOn) {
  second.eraseAttribute("old");
  EXPECT_FALSE(model.run(rename, "Cell", {{"name", "old"}, {"newName", "new"}}));
  EXPECT_EQ(Strings{"Instance cellId=2,ME=1 has no attribute old"}, model.failures);
  EXPECT_EQ((Strings{"1", "2"}), ActionModel::values(first, "new"));
}

TEST_F(AttributeActionsTest, FailuresChangeNoInstance) {
  const std::string addArgs = "AddAttributeAction requires args: name, type and defaultValue.";
  const std::string renameArgs = "RenameAttributeAction requires arguments name and newName.";
  const struct {
    UpgradeActionIf* action;
    const char* args;
    bool withGroup;
    std::string failure;
  } cases[] = {
      {&add, "type=SA_INT32_T defaultValue=1", true, addArgs},
      {&add, "name=added defaultValue=1", true, addArgs},
      {&add, "name=added type=SA_INT32_T", true, addArgs},
      {&add, "name=added type=SA_INT32_T defaultValue=1|2", false,
       "Action Failed: addAttribute: No instance group to operate on. Adding attribute to non-existing MO class is "
       "not permitted. Action arguments: name = added, value = 1|2 "},
      {&remove, "value=x", true, "RemoveAttributeAction requires argument name"},
      {&remove, "name=old value=x", false,
       "Action Failed: RemoveAttribute: No instance group to operate on. Action arguments: name = old, value = x "},
      {&rename, "name=old", true, renameArgs},
      {&rename, "newName=new", true, renameArgs},
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
  EXPECT_TRUE(model.runOn(create, nullptr, {{"moTypeName", "Fresh"}}));
  ASSERT_TRUE(model.has("Fresh"));
  EXPECT_EQ(0u, model.group("Fresh").getNumberOfInstances());
  EXPECT_TRUE(LogRecorder::installed().contains("moTypeName is Fresh"));

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
  EXPECT_EQ(1u, LogRecorder::installed().count("DeleteMoTypeAction::execute(): trying to delete a MO Type that does "
                                               "not exist. This is not a failure so continue."));
  EXPECT_EQ(1u, model.failures.size());
}

}  // namespace
