#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ModelHandler.h"
#include "actions/CreateChildStructAction.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CreateChildStructActionTest : public testing::Test {
 protected:
  void SetUp() override {
    model.add("Cell", "topId=1", "cellId", "1");
    model.add("Cell", "topId=1", "cellId", "2");
  }

  bool run(std::map<std::string, std::string> values = {}) {
    values.insert({{"structType", "Plmn"}, {"childRdnValue", "mapping"}, {"structRefName", "mappingRef"}});
    auto args = argumentsOf(values);
    return action.execute(&model, &model.group("Cell"), *args);
  }

  InstanceIf& cell(const char* ldn) { return *model.group("Cell").getInstance(ldn); }

  ModelHandler model;
  CreateChildStructAction action;
};

TEST_F(CreateChildStructActionTest, NamesTheStructByIdAndLinksItFromEveryParent) {
  model.group("Plmn");
  EXPECT_TRUE(run());
  EXPECT_EQ((std::vector<std::string>{"id=mapping,cellId=1,topId=1", "id=mapping,cellId=2,topId=1"}),
            model.ldns("Plmn"));
  EXPECT_EQ(std::vector<std::string>{"id=mapping,cellId=1,topId=1"}, valuesOf(cell("cellId=1,topId=1"), "mappingRef"));
  EXPECT_EQ(SA_IMM_ATTR_SANAMET, cell("cellId=1,topId=1").getAttribute("mappingRef")->getType());
  EXPECT_TRUE(LogRecorder::installed().contains(
      "Create a new struct Instance of class Plmn rdn=mapping with parent cellId=2,topId=1"));
  EXPECT_THAT(model.failures, IsEmpty());
}

TEST_F(CreateChildStructActionTest, AppendsToAnExistingReferenceAndRunsTwiceWithoutDuplicates) {
  model.group("Plmn");
  InstanceIf& first = cell("cellId=1,topId=1");
  AttributeInternalIf* reference = nullptr;
  ASSERT_TRUE(first.addAttribute("mappingRef", SA_IMM_ATTR_SANAMET, &reference));
  reference->addCopy("id=other,cellId=1,topId=1");
  EXPECT_TRUE(run());
  EXPECT_TRUE(run());
  EXPECT_EQ(2u, model.group("Plmn").getNumberOfInstances());
  EXPECT_EQ((std::vector<std::string>{"id=other,cellId=1,topId=1", "id=mapping,cellId=1,topId=1"}),
            valuesOf(first, "mappingRef"));
}

TEST_F(CreateChildStructActionTest, AStructClassTheModelLacksFailsForEveryParent) {
  EXPECT_FALSE(run());
  EXPECT_THAT(model.failures,
              ElementsAre("CreateChildStruct: Can not get struct instance id=mapping,cellId=1,topId=1",
                          "CreateChildStruct: Can not get struct instance id=mapping,cellId=2,topId=1"));
}

TEST_F(CreateChildStructActionTest, ReportsEveryMissingArgumentInOrder) {
  auto args = argumentsOf({{"childRdnValue", "mapping"}});
  EXPECT_FALSE(action.validateArgs(*args, &model));
  EXPECT_THAT(
      model.failures,
      ElementsAre("CreateChildStructAction: Failed to read argument structType for CreateChildStructAction",
                  "CreateChildStructAction: Failed to read argument structRefName for CreateChildStructAction"));
}

TEST_F(CreateChildStructActionTest, ReportsAMissingGroupWithItsArguments) {
  auto args = argumentsOf({{"structType", "Plmn"}, {"childRdnValue", "mapping"}});
  EXPECT_FALSE(action.execute(&model, nullptr, *args));
  EXPECT_THAT(model.failures,
              ElementsAre("CreateChildStruct failed: No instance group to operate on. Parent MO class "
                          "non-existent. Action arguments: attributeName = Plmn, childRndValue = mapping "));
}

}  // namespace
