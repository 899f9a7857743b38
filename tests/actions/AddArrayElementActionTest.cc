#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ValueModel.h"
#include "actions/AddArrayElementAction.h"
#include "safcImmCt.h"

namespace {

using Strings = std::vector<std::string>;
using Args = std::map<std::string, std::string>;
using Op = ValueModel::Operation;

struct AddCase {
  const char* what;
  Args args;
  std::vector<Op> operations;
  Strings after;
};

class AddArrayElementTest : public ::testing::TestWithParam<AddCase> {};

TEST_P(AddArrayElementTest, AddsTheValuesWhereAsked) {
  ValueModel model;
  InstanceIf& cell = model.add(
      "Cell", "", "1", {{"list", SA_IMM_ATTR_SAINT32T, {"1", "2"}}, {"more", SA_IMM_ATTR_SAINT64T, {"8", "9"}}});
  Args args = GetParam().args;
  args["name"] = "list";
  AddArrayElementAction action;
  EXPECT_TRUE(model.run(action, "Cell", args, GetParam().operations)) << GetParam().what;
  EXPECT_EQ(GetParam().after, ValueModel::values(cell, "list")) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Positions, AddArrayElementTest,
    ::testing::Values(AddCase{"appended", {{"elementValue", "3"}}, {}, {"1", "2", "3"}},
                      AddCase{"at the front", {{"elementValue", "0"}, {"index", "0"}}, {}, {"0", "1", "2"}},
                      AddCase{"in the middle", {{"elementValue", "5"}, {"index", "1"}}, {}, {"1", "5", "2"}},
                      AddCase{"past the end", {{"elementValue", "5"}, {"index", "7"}}, {}, {"1", "2", "5"}},
                      AddCase{"a whole list at a position",
                              {{"index", "1"}},
                              {{{"operator", "="}, {"valueFromAttr", "more"}}},
                              {"1", "8", "9", "2"}},
                      AddCase{
                          "several operations in order",
                          {},
                          {{{"operator", "="}, {"value", "4"}}, {{"operator", "="}, {"valueFromSingleAttr", "more"}}},
                          {"1", "2", "4", "8"}}));

TEST(AddArrayElementActionTest, AbsentAttributeIsCreatedWithTheGivenType) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1");
  AddArrayElementAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "list"}, {"elementValue", "7"}, {"type", "SA_UINT32_T"}}, {}));
  EXPECT_EQ(Strings{"7"}, ValueModel::values(cell, "list"));
  EXPECT_EQ(uint32_t{SA_IMM_ATTR_SAUINT32T}, cell.getAttribute("list")->getType());
}

TEST(AddArrayElementActionTest, NoValueIsAddedWhenOneDoesNotFit) {
  ValueModel model;
  InstanceIf& cell = model.add(
      "Cell", "", "1", {{"list", SA_IMM_ATTR_SAINT32T, {"1"}}, {"more", SA_IMM_ATTR_SAINT64T, {"8", "9999999999"}}});
  AddArrayElementAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "list"}}, {{{"operator", "="}, {"valueFromAttr", "more"}}}));
  EXPECT_EQ(Strings{"AddArrayElementAction: value 9999999999 does not fit attribute list of type SA_INT32_T on "
                    "cellId=1"},
            model.failures);
  EXPECT_EQ(Strings{"1"}, ValueModel::values(cell, "list"));
}

TEST(AddArrayElementActionTest, FilteredInstancesAreLeftAlone) {
  ValueModel model;
  InstanceIf& one = model.add("Cell", "", "1", {{"list", SA_IMM_ATTR_SAINT32T, {"1"}}});
  InstanceIf& two = model.add("Cell", "", "2", {{"list", SA_IMM_ATTR_SAINT32T, {"1"}}});
  AddArrayElementAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "list"}, {"elementValue", "2"}, {"rdnValue", "2"}}, {}));
  EXPECT_EQ(Strings{"1"}, ValueModel::values(one, "list"));
  EXPECT_EQ(Strings({"1", "2"}), ValueModel::values(two, "list"));
  EXPECT_TRUE(LogRecorder::installed().contains("Filter does not apply"));
}

TEST(AddArrayElementActionTest, MissingSourceFailsTheInstance) {
  ValueModel model;
  model.add("Cell", "", "1", {{"list", SA_IMM_ATTR_SAINT32T, {"1"}}});
  AddArrayElementAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "list"}},
                         {{{"operator", "="}, {"valueFromAttr", "x"}, {"valueFromMoTypeAnyInstance", "Radio"}}}));
  EXPECT_EQ(Strings{"AddArrayElementAction: no instance of class Radio"}, model.failures);
}

struct InvalidCase {
  Args args;
  std::vector<Op> operations;
  std::string failure;
};

class AddArrayElementInvalidTest : public ::testing::TestWithParam<InvalidCase> {};

TEST_P(AddArrayElementInvalidTest, IsRefusedWhenValidating) {
  ValueModel model;
  AddArrayElementAction action;
  EXPECT_FALSE(model.validate(action, GetParam().args, GetParam().operations));
  EXPECT_EQ(Strings{GetParam().failure}, model.failures);
}

INSTANTIATE_TEST_SUITE_P(
    Combinations, AddArrayElementInvalidTest,
    ::testing::Values(
        InvalidCase{{{"elementValue", "1"}}, {}, "AddArrayElementAction requires argument name."},
        InvalidCase{{{"name", "l"}}, {}, "AddArrayElementAction requires elementValue or at least one Operation."},
        InvalidCase{{{"name", "l"}, {"elementValue", "1"}},
                    {{{"operator", "="}, {"value", "1"}}},
                    "AddArrayElementAction takes elementValue or Operation elements, not both."},
        InvalidCase{{{"name", "l"}, {"elementValue", "1"}, {"index", "-1"}},
                    {},
                    "AddArrayElementAction: index -1 is not a position"},
        InvalidCase{{{"name", "l"}, {"elementValue", "1"}, {"index", "1x"}},
                    {},
                    "AddArrayElementAction: index 1x is not a position"},
        InvalidCase{{{"name", "l"}},
                    {{{"operator", "+"}, {"value", "1"}}},
                    "AddArrayElementAction: unsupported operator + in operation  => (+) value: 1"},
        InvalidCase{{{"name", "l"}},
                    {{{"operator", "="}, {"value", "1"}, {"rangeStart", "0"}}},
                    "AddArrayElementAction: operation range: 0to => (=) value: 1 takes no range"}));

}  // namespace
