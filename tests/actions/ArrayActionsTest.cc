// The array actions: adding and removing elements of multi-valued attributes.

#include <gtest/gtest.h>

#include <algorithm>

#include "ActionModel.h"
#include "actions/AddArrayElementAction.h"
#include "actions/RemoveArrayElementAction.h"
#include "icti/ValueType.h"

namespace {

TEST(AddArrayElementActionTest, AddsTheValuesWhereAsked) {
  const struct {
    const char* args;
    std::vector<Op> operations;
    Strings after;
  } cases[] = {
      {"elementValue=0 index=0", {}, {"0", "1", "2"}},
      {"elementValue=5 index=7", {}, {"1", "2", "5"}},
      {"index=1", {op(R"(operator="=" valueFromAttr="more")")}, {"1", "8", "9", "2"}},
      {"", {op(R"(operator="=" value="4")"), op(R"(operator="=" valueFromSingleAttr="more")")}, {"1", "2", "4", "8"}}};
  AddArrayElementAction action;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    ActionModel model;
    InstanceIf& cell = model.add(
        "Cell", "", "1", {{"list", ValueType::kInt32, {"1", "2"}}, {"more", ValueType::kInt64, {"8", "9"}}});
    EXPECT_TRUE(model.run(action, "Cell", argsOf(std::string("name=list ") + c.args), c.operations));
    EXPECT_EQ(c.after, ActionModel::values(cell, "list"));
  }
}

TEST(AddArrayElementActionTest, AbsentAttributeIsCreatedWithTheGivenType) {
  ActionModel model;
  InstanceIf& cell = model.add("Cell", "", "1");
  AddArrayElementAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "list"}, {"elementValue", "7"}, {"type", "SA_UINT32_T"}}));
  EXPECT_EQ(Strings{"7"}, ActionModel::values(cell, "list"));
  EXPECT_EQ(ValueType::kUint32, cell.getAttribute("list")->getType());
}

TEST(AddArrayElementActionTest, AValueThatDoesNotFitAddsNone) {
  ActionModel model;
  InstanceIf& cell = model.add(
      "Cell", "", "1", {{"list", ValueType::kInt32, {"1"}}, {"more", ValueType::kInt64, {"8", "9999999999"}}});
  AddArrayElementAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "list"}}, {op(R"(operator="=" valueFromAttr="more")")}));
  EXPECT_EQ(Strings{"AddArrayElementAction: value 9999999999 does not fit attribute list of type SA_INT32_T on cellId=1"},
            model.failures);
  EXPECT_EQ(Strings{"1"}, ActionModel::values(cell, "list"));
}

TEST(AddArrayElementActionTest, InvalidCombinationsAreRefusedWhenValidating) {
  const struct {
    const char* args;
    const char* operation;  // none when null
    std::string failure;
  } cases[] = {{"name=l elementValue=1", R"(operator="=" value="1")",
                "AddArrayElementAction takes elementValue or Operation elements, not both."},
               {"name=l elementValue=1 index=-1", nullptr, "AddArrayElementAction: index -1 is not a position"},
               {"name=l", R"(operator="=" value="1" rangeStart="0")",
                "AddArrayElementAction: operation range: 0to => (=) value: 1 takes no range"}};
  AddArrayElementAction action;
  for (const auto& c : cases) {
    ActionModel model;
    EXPECT_FALSE(
        model.validate(action, argsOf(c.args), c.operation ? std::vector<Op>{op(c.operation)} : std::vector<Op>{}));
    EXPECT_EQ(Strings{c.failure}, model.failures);
  }
}

struct Removal {
  bool result;
  Strings values;
  Strings failures;
};

// Removing by value, by index and beyond the last index are also part of the
// whole runs. Runs the action on one instance whose string attribute "list" holds `values`.
Removal removeFrom(const Strings& values, Args args) {
  ActionModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {{"list", ValueType::kString, values}});
  if (std::none_of(args.begin(), args.end(), [](const auto& arg) { return arg.first == "name"; })) {
    args.emplace_back("name", "list");
  }
  RemoveArrayElementAction action;
  bool result = model.run(action, "Cell", args);
  return {result, ActionModel::values(cell, "list"), model.failures};
}

TEST(RemoveArrayElementActionTest, RemovesByValueByIndexOrTheLast) {
  const struct {
    Strings values;
    const char* args;
    Strings remaining;
  } cases[] = {{{"a", "A", "ab"}, "elementValue=a", {"A", "ab"}},
               {{"a", "b", "c"}, "elementValue=c index=0", {"a", "b"}},
               {{"a", "b", "c"}, "", {"a", "b"}},
               {{}, "", {}},
               {{"a", "b"}, "name=other", {"a", "b"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    Removal run = removeFrom(c.values, argsOf(c.args));
    EXPECT_TRUE(run.result);
    EXPECT_EQ(c.remaining, run.values);
    EXPECT_EQ(Strings{}, run.failures);
  }
}

TEST(RemoveArrayElementActionTest, AnIndexThatIsNoNumberFails) {
  for (const char* index : {"2x", "", "x"}) {
    Removal run = removeFrom({"a", "b", "c"}, {{"index", index}});
    EXPECT_FALSE(run.result) << index;
    EXPECT_EQ((Strings{"a", "b", "c"}), run.values) << index;
    EXPECT_EQ(Strings{"Not able to parse argument index, " + std::string(index) + ", as an int"}, run.failures);
  }
}

}  // namespace
