// The child actions: creating and removing child instances, creating struct children.

#include <gtest/gtest.h>

#include "ActionModel.h"
#include "actions/CreateChildInstanceAction.h"
#include "actions/CreateChildStructAction.h"
#include "actions/RemoveChildInstanceAction.h"
#include "icti/ValueType.h"

namespace {

// Parents cellId=1 and cellId=2 below topId=1, each with children relationId=1 and 2 and a struct child id=plmn.
void addChildren(ActionModel& model) {
  for (const char* cell : {"1", "2"}) {
    const std::string parent = model.add("Cell", "topId=1", cell).getLdn();
    for (const char* relation : {"1", "2"}) model.add("Relation", parent, relation);
    model.add("Plmn", parent, "plmn", {}, "id");
  }
}

TEST(CreateChildInstanceActionTest, MakesOneRootInstanceWhenTheParentClassHasNoInstances) {
  ActionModel model;
  CreateChildInstanceAction action;
  InstanceGroup emptyParents("", "Cell");
  for (InstanceGroupIf* parents :
       {static_cast<InstanceGroupIf*>(nullptr), static_cast<InstanceGroupIf*>(&emptyParents)}) {
    model.group("Child").eraseInstance("childId=9");
    EXPECT_TRUE(model.runOn(action, parents, {{"childType", "Child"}, {"childRdnValue", "9"}}));
    EXPECT_EQ(Strings{"childId=9"}, model.ldns("Child"));
  }
}

TEST(CreateChildInstanceActionTest, ExistingChildFailsAndEndsTheWalk) {
  ActionModel model;
  CreateChildInstanceAction action;
  for (const char* value : {"1", "2"}) model.add("Cell", "topId=1", value);
  model.add("Child", "cellId=1,topId=1", "9");
  EXPECT_FALSE(model.run(action, "Cell", {{"childType", "Child"}, {"childRdnValue", "9"}}));
  EXPECT_EQ(Strings{"CreateChildInstance: Failed to create instance for parent cellId=1,topId=1, RDN 9 of class Child"},
            model.failures);
  EXPECT_EQ(Strings{"childId=9,cellId=1,topId=1"}, model.ldns("Child"));
}

TEST(RemoveChildInstanceActionTest, StructChildrenGoByIdButNotWithAParentRdnValue) {
  ActionModel model;
  RemoveChildInstanceAction action;
  addChildren(model);
  EXPECT_TRUE(model.run(action, "Cell", {{"childType", "Plmn"}, {"parentRdnValue", "1"}}));
  EXPECT_EQ(2u, model.group("Plmn").getNumberOfInstances());
  EXPECT_TRUE(model.run(action, "Cell", {{"childType", "Plmn"}, {"childRdnValue", "plmn"}, {"rdnValue", "2"}}));
  EXPECT_EQ(Strings{"id=plmn,cellId=1,topId=1"}, model.ldns("Plmn"));
}

TEST(RemoveChildInstanceActionTest, WithoutParentsOnlyTheFirstListedChildGoes) {
  InstanceGroup emptyParents("", "Cell");
  RemoveChildInstanceAction action;
  for (InstanceGroupIf* parents :
       {static_cast<InstanceGroupIf*>(nullptr), static_cast<InstanceGroupIf*>(&emptyParents)}) {
    ActionModel model;
    addChildren(model);
    EXPECT_TRUE(model.runOn(action, parents, {{"childType", "Relation"}}));
    EXPECT_EQ(
        (Strings{"relationId=2,cellId=1,topId=1", "relationId=1,cellId=2,topId=1", "relationId=2,cellId=2,topId=1"}),
        model.ldns("Relation"));
    EXPECT_EQ(Strings{}, model.failures);
  }
}

// Creating and linking a struct below every parent is part of the whole runs; a class no model defines is
// the action base's check (MoTypeActionsTest).
TEST(CreateChildStructActionTest, AStructIsLinkedOnceAndAMissingStructGroupFails) {
  ActionModel model;
  CreateChildStructAction action;
  InstanceIf& first =
      model.add("Cell", "topId=1", "1", {{"mappingRef", ValueType::kName, {"id=other,cellId=1,topId=1"}}});
  const Args args = {{"structType", "Plmn"}, {"childRdnValue", "mapping"}, {"structRefName", "mappingRef"}};
  model.defined.insert("Plmn");
  EXPECT_FALSE(model.run(action, "Cell", args));
  EXPECT_EQ(Strings{"CreateChildStruct: Can not get struct instance id=mapping,cellId=1,topId=1"}, model.failures);
  model.group("Plmn");
  Args filtered = args;
  filtered.emplace_back("rdnValue", "2");
  EXPECT_TRUE(model.run(action, "Cell", filtered)) << "a parent the filter leaves out is no failure";
  EXPECT_TRUE(model.run(action, "Cell", args));
  EXPECT_TRUE(model.run(action, "Cell", args));
  EXPECT_EQ((Strings{"id=mapping,cellId=1,topId=1"}), model.ldns("Plmn"));
  EXPECT_EQ((Strings{"id=other,cellId=1,topId=1", "id=mapping,cellId=1,topId=1"}),
            ActionModel::values(first, "mappingRef"));
}

}  // namespace
