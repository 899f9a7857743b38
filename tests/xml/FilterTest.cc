#include "xml/Filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "AbortReport.h"
#include "LogRecorder.h"
#include "MockAttribute.h"
#include "MockInstance.h"
#include "xml/ActionArguments.h"
#include "xml/AtrributeTypes.h"

using testing::_;
using testing::NiceMock;
using testing::Return;
using testing::StrEq;

namespace {

struct FilterCase {
  const char* title;
  std::map<std::string, std::string> args;
  bool applies;
};

void PrintTo(const FilterCase& c, std::ostream* os) { *os << c.title; }

// An instance xId=1 below Top=1 with an attribute "counter" whose value at
// position 0 is 5 and at position 1 is 7.
class FilterTest : public testing::TestWithParam<FilterCase> {
 protected:
  void SetUp() override {
    ON_CALL(instance, getLdn()).WillByDefault(Return("xId=1,Top=1"));
    ON_CALL(instance, getRdn()).WillByDefault(Return("xId=1"));
    ON_CALL(instance, getParentName()).WillByDefault(Return("Top=1"));
    ON_CALL(instance, getAttribute(_)).WillByDefault(Return(nullptr));
    ON_CALL(instance, getAttribute("counter")).WillByDefault(Return(&counter));
    ON_CALL(counter, valueEqualsAtIndex(_, _)).WillByDefault(Return(false));
    ON_CALL(counter, valueEqualsAtIndex(0, StrEq("5"))).WillByDefault(Return(true));
    ON_CALL(counter, valueEqualsAtIndex(1, StrEq("7"))).WillByDefault(Return(true));
  }

  NiceMock<MockInstance> instance;
  NiceMock<MockAttribute> counter;
};

TEST_P(FilterTest, AppliesAtPositionZero) {
  ActionArguments args;
  for (const auto& argument : GetParam().args) args.addArgument(argument.first, argument.second);
  Filter filter(&args);
  EXPECT_EQ(GetParam().applies, filter.applies(instance, 0));
}

const FilterCase kFilterCases[] = {
    {"NoArguments", {}, true},
    {"OtherArgumentsDoNotFilter", {{"name", "counter"}, {"value", "9"}}, true},
    {"LdnEqual", {{"ldnValue", "xId=1,Top=1"}}, true},
    {"LdnDiffers", {{"ldnValue", "xId=2,Top=1"}}, false},
    {"LdnDiffersInCaseOnly", {{"ldnValue", "XID=1,TOP=1"}}, false},
    {"RdnValueEqual", {{"rdnValue", "1"}}, true},
    {"RdnValueDiffers", {{"rdnValue", "2"}}, false},
    {"WholeRdnIsNotTheValue", {{"rdnValue", "xId=1"}}, false},
    {"ParentEqual", {{"parentName", "Top=1"}}, true},
    {"ParentDiffersInCaseOnly", {{"parentName", "top=1"}}, false},
    {"RdnPassesParentDecides", {{"rdnValue", "1"}, {"parentName", "Top=2"}}, false},
    {"AllMatch", {{"ldnValue", "xId=1,Top=1"}, {"rdnValue", "1"}, {"parentName", "Top=1"}}, true},
    {"OldValueEqual", {{"name", "counter"}, {"oldAttributeValue", "5"}}, true},
    {"OldValueDiffers", {{"name", "counter"}, {"oldAttributeValue", "7"}}, false},
    {"OldValueOfMissingAttributeApplies", {{"name", "absent"}, {"oldAttributeValue", "5"}}, true},
    {"OldValueWithoutNameApplies", {{"oldAttributeValue", "5"}}, true},
};

INSTANTIATE_TEST_SUITE_P(Cases, FilterTest, testing::ValuesIn(kFilterCases),
                         [](const testing::TestParamInfo<FilterCase>& info) { return info.param.title; });

TEST_F(FilterTest, OldValueIsComparedAtTheAskedPosition) {
  ActionArguments args;
  args.addArgument("name", "counter");
  args.addArgument("oldAttributeValue", "7");
  Filter filter(&args);
  EXPECT_FALSE(filter.applies(instance, 0));
  EXPECT_TRUE(filter.applies(instance, 1));
}

TEST_F(FilterTest, FirstFailingTestStopsTheOthers) {
  ActionArguments args;
  args.addArgument("ldnValue", "other");
  args.addArgument("name", "counter");
  args.addArgument("oldAttributeValue", "5");
  EXPECT_CALL(instance, getRdn()).Times(0);
  EXPECT_CALL(instance, getParentName()).Times(0);
  EXPECT_CALL(instance, getAttribute(_)).Times(0);
  Filter filter(&args);
  EXPECT_FALSE(filter.applies(instance, 0));
}

TEST(AtrributeTypesTest, MapsEveryTypeName) {
  const std::pair<const char*, uint32_t> cases[] = {
      {"SA_INT32_T", 1}, {"SA_UINT32_T", 2}, {"SA_INT64_T", 3},  {"SA_UINT64_T", 4},
      {"SA_NAME_T", 6},  {"SA_DOUBLE_T", 8}, {"SA_STRING_T", 9}, {"SA_ANY_T", 10},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, AtrributeTypes::attributeTypeFromText(c.first)) << c.first;
}

TEST(AtrributeTypesDeathTest, UnknownNameIsLoggedAndAborts) {
  for (const char* name : {"SA_FLOAT_T", "SA_TIME_T", "sa_int32_t", "SA_INT32_T ", ""}) {
    EXPECT_DEATH(
        {
          reportOnAbort(std::string("Unsupported type: ") + name);
          AtrributeTypes::attributeTypeFromText(name);
        },
        kAbortedAfterLogging)
        << name;
  }
}

}  // namespace
