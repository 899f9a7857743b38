#include "runtime/Filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "MockAttribute.h"
#include "MockInstance.h"
#include "runtime/ActionArguments.h"

using testing::_;
using testing::NiceMock;
using testing::Return;
using testing::StrEq;

namespace {

// An instance xId=1 below Top=1 with an attribute "counter" whose value at
// position 0 is 5 and at position 1 is 7.
class FilterTest : public testing::Test {
 protected:
  void SetUp() override {
    ON_CALL(instance, getLdn()).WillByDefault(Return("xId=1,Top=1"));
    ON_CALL(instance, getRdn()).WillByDefault(Return("xId=1"));
    ON_CALL(instance, getParentName()).WillByDefault(Return("Top=1"));
    ON_CALL(instance, getAttribute(_)).WillByDefault(Return(nullptr));
    ON_CALL(instance, getAttribute("counter")).WillByDefault(Return(&counter));
    ON_CALL(counter, getType()).WillByDefault(Return(ValueType::kInt32));
    ON_CALL(counter, valueEqualsAtIndex(_, _)).WillByDefault(Return(false));
    ON_CALL(counter, valueEqualsAtIndex(0, StrEq("5"))).WillByDefault(Return(true));
    ON_CALL(counter, valueEqualsAtIndex(1, StrEq("7"))).WillByDefault(Return(true));
  }

  NiceMock<MockInstance> instance;
  NiceMock<MockAttribute> counter;
};

TEST_F(FilterTest, AppliesWhenEveryGivenTestPasses) {
  const struct {
    std::map<std::string, std::string> args;
    uint32_t position;
    bool applies;
  } cases[] = {
      {{}, 0, true},
      {{{"ldnValue", "XID=1,TOP=1"}}, 0, false},
      {{{"rdnValue", "xId=1"}}, 0, false},
      {{{"parentName", "top=1"}}, 0, false},
      {{{"rdnValue", "1"}, {"parentName", "Top=2"}}, 0, false},
      {{{"ldnValue", "xId=1,Top=1"}, {"rdnValue", "1"}, {"parentName", "Top=1"}}, 0, true},
      {{{"name", "counter"}, {"oldAttributeValue", "7"}}, 0, false},
      {{{"name", "counter"}, {"oldAttributeValue", "7"}}, 1, true},
      {{{"name", "absent"}, {"oldAttributeValue", "5"}}, 0, true},
  };
  for (const auto& c : cases) {
    ActionArguments args;
    for (const auto& [name, value] : c.args) args.addArgument(name, value);
    Filter filter(&args);
    EXPECT_EQ(c.applies, filter.applies(instance, c.position)) << args.argumentsToString() << " @" << c.position;
    EXPECT_EQ("", filter.failure());
  }
  // An old value that is no number of the attribute's type cannot be judged.
  ActionArguments args;
  args.addArgument("name", "counter");
  args.addArgument("oldAttributeValue", "5x");
  Filter filter(&args);
  EXPECT_FALSE(filter.applies(instance, 0));
  EXPECT_EQ("oldAttributeValue 5x is no SA_INT32_T value of attribute counter of xId=1,Top=1", filter.failure());
}

}  // namespace
