#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AbortReport.h"
#include "LogRecorder.h"
#include "ModelHandler.h"
#include "actions/CreateChildInstanceAction.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Parents cellId=1, 2 and 21 below topId=1, and cellId=2 below topId=2; an
// empty Child class.
void addParents(ModelHandler& model) {
  for (const char* value : {"1", "2", "21"}) model.add("Cell", "topId=1", "cellId", value);
  model.add("Cell", "topId=2", "cellId", "2");
  model.group("Child");
}

class CreateChildInstanceActionTest : public testing::Test {
 protected:
  bool run(const std::map<std::string, std::string>& values, InstanceGroupIf* parents) {
    auto args = argumentsOf(values);
    return action.execute(&model, parents, *args);
  }

  ModelHandler model;
  CreateChildInstanceAction action;
};

TEST_F(CreateChildInstanceActionTest, CreatesBelowTheParentsThatTheArgumentsSelect) {
  struct Case {
    const char* name;
    std::map<std::string, std::string> extra;
    std::vector<std::string> children;
  };
  const Case cases[] = {
      {"every parent",
       {},
       {"childId=9,cellId=1,topId=1", "childId=9,cellId=2,topId=1", "childId=9,cellId=21,topId=1",
        "childId=9,cellId=2,topId=2"}},
      {"own RDN value 2, not 21",
       {{"parentRdnValue", "2"}},
       {"childId=9,cellId=2,topId=1", "childId=9,cellId=2,topId=2"}},
      {"no parent with that value", {{"parentRdnValue", "3"}}, {}},
      {"filter and RDN value together",
       {{"parentRdnValue", "2"}, {"parentName", "topId=2"}},
       {"childId=9,cellId=2,topId=2"}},
  };
  for (const Case& c : cases) {
    ModelHandler caseModel;
    addParents(caseModel);
    auto args = argumentsOf(c.extra);
    args->addArgument("childType", "Child");
    args->addArgument("childRdnValue", "9");
    EXPECT_TRUE(action.execute(&caseModel, &caseModel.group("Cell"), *args)) << c.name;
    EXPECT_EQ(c.children, caseModel.ldns("Child")) << c.name;
    EXPECT_THAT(caseModel.failures, IsEmpty()) << c.name;
  }
}

TEST_F(CreateChildInstanceActionTest, MakesOneRootInstanceWhenTheParentClassHasNoInstances) {
  model.group("Child");
  InstanceGroup emptyParents("", "Cell");
  for (InstanceGroupIf* parents :
       {static_cast<InstanceGroupIf*>(nullptr), static_cast<InstanceGroupIf*>(&emptyParents)}) {
    model.group("Child").eraseInstance("childId=9");
    EXPECT_TRUE(run({{"childType", "Child"}, {"childRdnValue", "9"}}, parents));
    EXPECT_EQ(std::vector<std::string>{"childId=9"}, model.ldns("Child"));
  }
  EXPECT_EQ(2u, LogRecorder::installed().count("Create a new Instance of root MO class Child rdn=9"));
}

TEST_F(CreateChildInstanceActionTest, AnExistingChildFailsTheUpgradeAndEndsTheWalk) {
  addParents(model);
  model.add("Child", "cellId=1,topId=1", "childId", "9");
  EXPECT_FALSE(run({{"childType", "Child"}, {"childRdnValue", "9"}}, &model.group("Cell")));
  EXPECT_THAT(
      model.failures,
      ElementsAre("CreateChildInstance: Failed to create instance for parent cellId=1,topId=1, RDN 9 of class Child"));
  EXPECT_EQ(std::vector<std::string>{"childId=9,cellId=1,topId=1"}, model.ldns("Child"));
}

TEST_F(CreateChildInstanceActionTest, AChildClassTheModelLacksChangesNothing) {
  model.add("Cell", "", "cellId", "1");
  EXPECT_TRUE(run({{"childType", "Unknown"}, {"childRdnValue", "9"}}, &model.group("Cell")));
  EXPECT_THAT(model.failures, IsEmpty());
  EXPECT_FALSE(LogRecorder::installed().containsPart("Create a new Instance"));
}

TEST_F(CreateChildInstanceActionTest, BothArgumentsAreRequired) {
  for (const auto& values :
       std::vector<std::map<std::string, std::string>>{{{"childType", "Child"}}, {{"childRdnValue", "9"}}, {}}) {
    model.failures.clear();
    auto args = argumentsOf(values);
    EXPECT_FALSE(action.validateArgs(*args, &model));
    EXPECT_THAT(model.failures, ElementsAre("CreateChildInstanceAction requires args: childRdnValue and childType"));
  }
}

TEST_F(CreateChildInstanceActionTest, ReportsAMissingGroupWithItsArguments) {
  auto args = argumentsOf({{"childType", "Child"}, {"childRdnValue", "9"}});
  action.reportMissingInstanceGroup(*args, &model);
  EXPECT_THAT(model.failures, ElementsAre("Action Failed: CreateChildInstance: No instanceGroup to operate on. "
                                          "Action arguments: childRdnValue =  9, childType = Child."));
}

TEST_F(CreateChildInstanceActionTest, ANullHandlerAbortsWithItsOwnWording) {
  auto args = argumentsOf({});
  EXPECT_DEATH(
      {
        reportOnAbort("ICTI handler pointer is nullptr");
        action.validateArgs(*args, nullptr);
      },
      kAbortedAfterLogging);
}

}  // namespace
