#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "LogRecorder.h"
#include "actions/AddAttributeAction.h"
#include "safcImmCt.h"

namespace {

class AddAttributeActionTest : public testing::Test {
 protected:
  AddAttributeActionTest() {
    InstanceGroup& cells = handler.group("Cell");
    first = cells.createInstance("ME=1", "1", false, "");
    second = cells.createInstance("ME=1", "2", false, "");
  }

  bool run(const ArgumentList& list) {
    auto args = makeArguments(list);
    return action.execute(&handler, handler.getInstanceGroup("Cell", "", false), *args);
  }

  AddAttributeAction action;
  InMemoryIctiHandler handler;
  InstanceIf* first;
  InstanceIf* second;
};

TEST_F(AddAttributeActionTest, DefaultValueIsSplitAtEveryBar) {
  struct Case {
    const char* type;
    const char* defaultValue;
    std::vector<std::string> values;
  } cases[] = {
      {"SA_INT32_T", "1|2|3", {"1", "2", "3"}},
      {"SA_INT32_T", "5", {"5"}},
      {"SA_INT32_T", "", {}},
      // The empty middle piece makes no number, and the last one still counts.
      {"SA_INT32_T", "-4||7", {"-4", "7"}},
      {"SA_STRING_T", "a||b", {"a", "", "b"}},
      {"SA_STRING_T", "|", {"", ""}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.type) + " " + c.defaultValue);
    first->eraseAttribute("added");
    second->eraseAttribute("added");
    EXPECT_TRUE(run({{"name", "added"}, {"type", c.type}, {"defaultValue", c.defaultValue}}));
    EXPECT_EQ(c.values, valuesOf(*first, "added"));
    EXPECT_EQ(c.values, valuesOf(*second, "added"));
  }
  EXPECT_TRUE(handler.failures.empty());
}

TEST_F(AddAttributeActionTest, EveryPieceIsLoggedWithItsPositions) {
  ASSERT_TRUE(
      run({{"name", "added"}, {"type", "SA_STRING_T"}, {"defaultValue", "a||b"}, {"ldnValue", "cellId=1,ME=1"}}));
  const LogRecorder& log = LogRecorder::installed();
  const char* prefix = "Adding attribute added to ldn cellId=1,ME=1 with values, string to parse: a||b, ";
  EXPECT_TRUE(log.contains(std::string(prefix) + "substring start: 0, substring end: 1, substring: a"));
  EXPECT_TRUE(log.contains(std::string(prefix) + "substring start: 2, substring end: 2, substring: "));
  EXPECT_TRUE(log.contains(std::string(prefix) + "substring start: 3, substring end: -1, substring: b"));
}

TEST_F(AddAttributeActionTest, InstanceTheFilterExcludesIsLeftAlone) {
  EXPECT_TRUE(run({{"name", "added"}, {"type", "SA_UINT32_T"}, {"defaultValue", "9"}, {"rdnValue", "2"}}));
  EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*first, "added"));
  EXPECT_EQ(std::vector<std::string>{"9"}, valuesOf(*second, "added"));
}

TEST_F(AddAttributeActionTest, ExistingAttributeKeepsItsValues) {
  setValues(*first, "added", SA_IMM_ATTR_SAINT32T, {"4"});
  EXPECT_TRUE(run({{"name", "added"}, {"type", "SA_INT32_T"}, {"defaultValue", "1|2"}}));
  EXPECT_EQ(std::vector<std::string>{"4"}, valuesOf(*first, "added"));
  EXPECT_EQ((std::vector<std::string>{"1", "2"}), valuesOf(*second, "added"));
}

TEST_F(AddAttributeActionTest, MissingArgumentFailsBeforeAnyInstanceChanges) {
  const ArgumentList complete = {{"name", "added"}, {"type", "SA_INT32_T"}, {"defaultValue", "1"}};
  for (size_t left = 0; left < complete.size(); ++left) {
    ArgumentList list = complete;
    list.erase(list.begin() + static_cast<long>(left));
    SCOPED_TRACE(complete[left].first);
    handler.failures.clear();
    EXPECT_FALSE(run(list));
    EXPECT_EQ(std::vector<std::string>{"AddAttributeAction requires args: name, type and defaultValue."},
              handler.failures);
    EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*first, "added"));
  }
}

TEST_F(AddAttributeActionTest, ClassWithoutGroupIsReportedWithNameAndDefault) {
  auto args = makeArguments({{"name", "added"}, {"type", "SA_INT32_T"}, {"defaultValue", "1|2"}});
  EXPECT_FALSE(action.execute(&handler, nullptr, *args));
  EXPECT_EQ(std::vector<std::string>{"Action Failed: addAttribute: No instance group to operate on. Adding attribute "
                                     "to non-existing MO class is not permitted. Action arguments: name = added, "
                                     "value = 1|2 "},
            handler.failures);
}

}  // namespace
