#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ModelHandler.h"
#include "actions/RemoveArrayElementAction.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Outcome {
  bool result;
  std::vector<std::string> values;
  std::vector<std::string> failures;
};

// Runs the action on one instance whose string attribute "list" holds
// `values`.
Outcome removeFrom(const std::vector<std::string>& values, std::map<std::string, std::string> arguments) {
  ModelHandler model;
  Instance& instance = model.add("Cell", "", "cellId", "1");
  AttributeInternalIf* list = nullptr;
  instance.addAttribute("list", SA_IMM_ATTR_SASTRINGT, &list);
  for (const std::string& value : values) list->addCopy(value.c_str());
  arguments.insert({"name", "list"});
  auto args = argumentsOf(arguments);
  RemoveArrayElementAction action;
  bool result = action.execute(&model, &model.group("Cell"), *args);
  return {result, valuesOf(instance, "list"), model.failures};
}

TEST(RemoveArrayElementActionTest, RemovesByValueByIndexOrTheLast) {
  struct Case {
    const char* name;
    std::vector<std::string> values;
    std::map<std::string, std::string> arguments;
    std::vector<std::string> remaining;
  };
  const Case cases[] = {
      {"every equal value", {"a", "b", "a"}, {{"elementValue", "a"}}, {"b"}},
      {"exact text only", {"a", "A", "ab"}, {{"elementValue", "a"}}, {"A", "ab"}},
      {"index ignored beside a value", {"a", "b", "c"}, {{"elementValue", "c"}, {"index", "0"}}, {"a", "b"}},
      {"no value matches", {"a", "b"}, {{"elementValue", "z"}}, {"a", "b"}},
      {"by index", {"a", "b", "c"}, {{"index", "1"}}, {"a", "c"}},
      {"index past the end removes the last", {"a", "b", "c"}, {{"index", "7"}}, {"a", "b"}},
      {"negative index removes the last", {"a", "b", "c"}, {{"index", "-1"}}, {"a", "b"}},
      {"neither removes the last", {"a", "b", "c"}, {}, {"a", "b"}},
      {"neither on an empty attribute", {}, {}, {}},
      {"value on an empty attribute", {}, {{"elementValue", "a"}}, {}},
      {"filter rejects the instance", {"a", "b"}, {{"rdnValue", "2"}}, {"a", "b"}},
      {"instance without the attribute", {"a", "b"}, {{"name", "other"}}, {"a", "b"}},
  };
  for (const Case& c : cases) {
    Outcome run = removeFrom(c.values, c.arguments);
    EXPECT_TRUE(run.result) << c.name;
    EXPECT_EQ(c.remaining, run.values) << c.name;
    EXPECT_THAT(run.failures, IsEmpty()) << c.name;
  }
}

TEST(RemoveArrayElementActionTest, RemovesMatchingValuesFromTheHighestPositionDown) {
  removeFrom({"a", "b", "a"}, {{"elementValue", "a"}});
  std::vector<std::string> lines;
  for (const std::string& line : LogRecorder::installed().texts()) {
    if (line.rfind("RemoveArrayElement attribute:", 0) == 0) lines.push_back(line);
  }
  EXPECT_THAT(
      lines, ElementsAre("RemoveArrayElement attribute: list, length: 3, index: 2, remove elementValue with value: a",
                         "RemoveArrayElement attribute: list, length: 2, index: 0, remove elementValue with value: a"));
}

TEST(RemoveArrayElementActionTest, AnIndexThatIsNotAWholeNumberFailsTheUpgrade) {
  for (const char* index : {"2x", "", "x"}) {
    Outcome run = removeFrom({"a", "b", "c"}, {{"index", index}});
    EXPECT_FALSE(run.result) << index;
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), run.values) << index;
    EXPECT_THAT(run.failures, ElementsAre("Not able to parse argument index, " + std::string(index) + ", as an int"));
  }
}

TEST(RemoveArrayElementActionTest, TheNameIsRequiredAndNamedInTheMissingGroupReport) {
  ModelHandler model;
  RemoveArrayElementAction action;
  auto none = argumentsOf({});
  EXPECT_FALSE(action.validateArgs(*none, &model));
  auto named = argumentsOf({{"name", "list"}});
  EXPECT_FALSE(action.execute(&model, nullptr, *named));
  EXPECT_THAT(model.failures, ElementsAre("RemoveArrayElementAction requires argument name.",
                                          "Action Failed: removeArrayElement: No instance group to operate on. "
                                          "Action arguments name = list"));
}

}  // namespace
