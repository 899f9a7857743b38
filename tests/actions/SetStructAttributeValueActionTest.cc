#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ValueModel.h"
#include "actions/SetStructAttributeValueAction.h"
#include "safcImmCt.h"

namespace {

using Strings = std::vector<std::string>;
using Args = std::map<std::string, std::string>;

class SetStructAttributeValueActionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    cell = &model.add("Cell", "", "1",
                      {{"plmns", SA_IMM_ATTR_SANAMET, {"id=p_0,cellId=1", "id=p_1,cellId=1"}},
                       {"mncLength", SA_IMM_ATTR_SAINT32T, {"3"}}});
    first = &model.add("Plmn", "cellId=1", "p_0", {{"mnc", SA_IMM_ATTR_SAINT32T, {"1"}}}, true);
    second = &model.add("Plmn", "cellId=1", "p_1", {{"mnc", SA_IMM_ATTR_SAINT32T, {"2"}}}, true);
  }
  Args args(Args extra = {}) {
    extra["name"] = "plmns";
    extra["structType"] = "Plmn";
    extra["structAttribute"] = "mnc";
    return extra;
  }

  ValueModel model;
  SetStructAttributeValueAction action;
  InstanceIf* cell = nullptr;
  InstanceIf* first = nullptr;
  InstanceIf* second = nullptr;
};

TEST_F(SetStructAttributeValueActionTest, ChangesEveryReferredStruct) {
  EXPECT_TRUE(model.run(action, "Cell", args(), {{{"operator", "+"}, {"value", "10"}}}));
  EXPECT_EQ(Strings{"11"}, ValueModel::values(*first, "mnc"));
  EXPECT_EQ(Strings{"12"}, ValueModel::values(*second, "mnc"));
}

TEST_F(SetStructAttributeValueActionTest, SourcesAreReadFromTheOwningInstance) {
  EXPECT_TRUE(model.run(action, "Cell", args(), {{{"operator", "="}, {"valueFromAttr", "mncLength"}}}));
  EXPECT_EQ(Strings{"3"}, ValueModel::values(*first, "mnc"));
  EXPECT_EQ(Strings{"3"}, ValueModel::values(*second, "mnc"));
}

TEST_F(SetStructAttributeValueActionTest, OldValueChoosesTheStructByName) {
  EXPECT_TRUE(model.run(action, "Cell", args({{"oldAttributeValue", "id=p_1,cellId=1"}}),
                        {{{"operator", "="}, {"value", "7"}}}));
  EXPECT_EQ(Strings{"1"}, ValueModel::values(*first, "mnc"));
  EXPECT_EQ(Strings{"7"}, ValueModel::values(*second, "mnc"));
}

TEST_F(SetStructAttributeValueActionTest, MissingStructIsReportedAndTheOthersStillChange) {
  cell->getAttribute("plmns")->insertValueAtIndex("id=p_9,cellId=1", 0);
  EXPECT_FALSE(model.run(action, "Cell", args(), {{{"operator", "="}, {"value", "7"}}}));
  EXPECT_EQ(Strings{"SetStructAttributeValueAction: struct instance id=p_9,cellId=1 of Plmn not found"},
            model.failures);
  EXPECT_EQ(Strings{"7"}, ValueModel::values(*second, "mnc"));
}

TEST_F(SetStructAttributeValueActionTest, FilteredOrUnreferencingInstancesAreLeftAlone) {
  model.add("Cell", "", "2");
  EXPECT_TRUE(model.run(action, "Cell", args({{"rdnValue", "2"}}), {{{"operator", "="}, {"value", "7"}}}));
  EXPECT_EQ(Strings{"1"}, ValueModel::values(*first, "mnc"));
  EXPECT_EQ(1u, LogRecorder::installed().count("Filter does not apply"));
  EXPECT_TRUE(model.failures.empty());
}

TEST_F(SetStructAttributeValueActionTest, RequiresItsThreeArgumentsAndAnOperation) {
  EXPECT_FALSE(
      model.validate(action, {{"name", "plmns"}, {"structType", "Plmn"}}, {{{"operator", "="}, {"value", "1"}}}));
  EXPECT_FALSE(model.validate(action, args(), {}));
  EXPECT_EQ(Strings({"SetStructAttributeValueAction requires arguments name, structType and structAttribute.",
                     "SetStructAttributeValueAction requires at least one Operation."}),
            model.failures);
}

TEST_F(SetStructAttributeValueActionTest, MissingGroupIsReportedWithTheArguments) {
  EXPECT_FALSE(model.run(action, "Radio", args(), {{{"operator", "="}, {"value", "1"}}}));
  EXPECT_EQ(Strings{"Action Failed: SetStructAttributeValueAction: No instance group to operate on. Action arguments: "
                    "name=plmns, structAttribute=mnc, structType=Plmn"},
            model.failures);
}

}  // namespace
