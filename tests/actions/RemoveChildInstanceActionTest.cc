#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ModelHandler.h"
#include "actions/RemoveChildInstanceAction.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Parents cellId=1 and cellId=2 below topId=1, each with children
// relationId=1 and relationId=2, and one struct child id=plmn.
void addModel(ModelHandler& model) {
  for (const char* cell : {"1", "2"}) {
    Instance& parent = model.add("Cell", "topId=1", "cellId", cell);
    for (const char* relation : {"1", "2"}) model.add("Relation", parent.getLdn(), "relationId", relation);
    model.add("Plmn", parent.getLdn(), "id", "plmn");
  }
}

bool run(ModelHandler& model, const std::map<std::string, std::string>& values, InstanceGroupIf* parents) {
  RemoveChildInstanceAction action;
  auto args = argumentsOf(values);
  return action.execute(&model, parents, *args);
}

TEST(RemoveChildInstanceActionTest, RemovesTheChildrenTheArgumentsName) {
  struct Case {
    const char* name;
    std::map<std::string, std::string> values;
    std::vector<std::string> remaining;
  };
  const Case cases[] = {
      {"every child of the class", {{"childType", "Relation"}}, {}},
      {"one child by RDN value",
       {{"childType", "Relation"}, {"childRdnValue", "2"}},
       {"relationId=1,cellId=1,topId=1", "relationId=1,cellId=2,topId=1"}},
      {"below one parent",
       {{"childType", "Relation"}, {"parentRdnValue", "2"}},
       {"relationId=1,cellId=1,topId=1", "relationId=2,cellId=1,topId=1"}},
      {"below the filtered parent",
       {{"childType", "Relation"}, {"childRdnValue", "1"}, {"ldnValue", "cellId=1,topId=1"}},
       {"relationId=2,cellId=1,topId=1", "relationId=1,cellId=2,topId=1", "relationId=2,cellId=2,topId=1"}},
      {"a child that is not there",
       {{"childType", "Relation"}, {"childRdnValue", "7"}},
       {"relationId=1,cellId=1,topId=1", "relationId=2,cellId=1,topId=1", "relationId=1,cellId=2,topId=1",
        "relationId=2,cellId=2,topId=1"}},
  };
  for (const Case& c : cases) {
    ModelHandler model;
    addModel(model);
    EXPECT_TRUE(run(model, c.values, &model.group("Cell"))) << c.name;
    EXPECT_EQ(c.remaining, model.ldns("Relation")) << c.name;
    EXPECT_THAT(model.failures, IsEmpty()) << c.name;
  }
}

TEST(RemoveChildInstanceActionTest, LogsEachParentAndWhyItIsLeftAlone) {
  ModelHandler model;
  addModel(model);
  EXPECT_TRUE(run(model, {{"childType", "Relation"}, {"parentRdnValue", "2"}}, &model.group("Cell")));
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RemoveChildInstance::removeChildInstance: instance.getLdn cellId=1,topId=1"));
  EXPECT_TRUE(log.contains(
      "RemoveChildInstance rdn(1) for current MO instance does NOT equal to parentRdnValue(2), do nothing."));
  EXPECT_TRUE(log.contains("RemoveChildInstance getTargetLdn:childRdnValue does not exist. return empty string"));
  EXPECT_FALSE(log.contains("RemoveChildInstance Removed all child instances for parent Ldn: cellId=1,topId=1"));
  EXPECT_TRUE(log.contains("RemoveChildInstance Removed all child instances for parent Ldn: cellId=2,topId=1"));
}

TEST(RemoveChildInstanceActionTest, RemovesStructChildrenByIdButNotWithAParentRdnValue) {
  ModelHandler model;
  addModel(model);
  EXPECT_TRUE(run(model, {{"childType", "Plmn"}, {"parentRdnValue", "1"}}, &model.group("Cell")));
  EXPECT_EQ(2u, model.group("Plmn").getNumberOfInstances());
  EXPECT_EQ(2u,
            LogRecorder::installed().count(
                "RemoveChildInstance current childType is struct. struct type cannot be used with parentRdnValue: 1."));

  EXPECT_TRUE(run(model, {{"childType", "Plmn"}, {"childRdnValue", "plmn"}, {"rdnValue", "2"}}, &model.group("Cell")));
  EXPECT_EQ(std::vector<std::string>{"id=plmn,cellId=1,topId=1"}, model.ldns("Plmn"));
}

TEST(RemoveChildInstanceActionTest, WithoutParentsOnlyTheFirstListedChildGoes) {
  InstanceGroup emptyParents("", "Cell");
  for (InstanceGroupIf* parents :
       {static_cast<InstanceGroupIf*>(nullptr), static_cast<InstanceGroupIf*>(&emptyParents)}) {
    ModelHandler model;
    addModel(model);
    EXPECT_TRUE(run(model, {{"childType", "Relation"}}, parents));
    EXPECT_EQ((std::vector<std::string>{"relationId=2,cellId=1,topId=1", "relationId=1,cellId=2,topId=1",
                                        "relationId=2,cellId=2,topId=1"}),
              model.ldns("Relation"));
  }
}

TEST(RemoveChildInstanceActionTest, AChildClassTheModelLacksIsNoFailure) {
  ModelHandler model;
  addModel(model);
  EXPECT_TRUE(run(model, {{"childType", "Unknown"}}, &model.group("Cell")));
  EXPECT_TRUE(run(model, {{"childType", "Unknown"}}, nullptr));
  EXPECT_THAT(model.failures, IsEmpty());
}

TEST(RemoveChildInstanceActionTest, RequiresTheChildTypeAndReportsAMissingGroup) {
  ModelHandler model;
  RemoveChildInstanceAction action;
  auto args = argumentsOf({{"childRdnValue", "1"}});
  EXPECT_FALSE(action.validateArgs(*args, &model));
  auto named = argumentsOf({{"childType", "Relation"}});
  action.reportMissingInstanceGroup(*named, &model);
  EXPECT_THAT(model.failures,
              ElementsAre("RemoveChildInstanceAction requires argument childType",
                          "Action Failed: RemoveChildInstance: No instanceGroup to operate on. Action argument: "
                          "childType = Relation"));
}

}  // namespace
