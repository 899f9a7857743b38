#include <gtest/gtest.h>

#include <cstring>
#include <vector>
#include <string>

#include "runtime/ActionArguments.h"
#include "runtime/OperationArgument.h"

namespace {

TEST(ActionArgumentsTest, FirstValueOfANameWinsAndTextIsInNameOrder) {
  ActionArguments args;
  EXPECT_TRUE(args.addArgument("name", "first"));
  EXPECT_FALSE(args.addArgument("name", "second"));
  std::string value;
  EXPECT_TRUE(args.getArgument("name", value));
  EXPECT_EQ("first", value);
  value = "kept";
  EXPECT_FALSE(args.getArgument("Name", value));
  EXPECT_EQ("kept", value);
  EXPECT_EQ("", ActionArguments().argumentsToString());
  args.addArgument("Name", "y");
  args.addArgument("empty", "");
  EXPECT_EQ("Name=y, empty=, name=first", args.argumentsToString());
}

using Settings = std::vector<std::pair<std::string, const char*>>;

void fill(OperationArgument& operation, const Settings& settings) {
  for (const auto& [field, text] : settings) ASSERT_TRUE(operation.setByName(field.c_str(), text)) << field;
}

TEST(OperationArgumentTest, ToStringForms) {
  const std::pair<Settings, const char*> cases[] = {
      {{}, " => "},
      {{{"operator", "="}, {"value", "5"}}, " => (=) value: 5"},
      {{{"operator", "="}, {"value", "5"}, {"rangeStart", "1"}, {"rangeEnd", "3"}}, "range: 1to3 => (=) value: 5"},
      {{{"rangeEnd", "9"}}, "range: to9 => "},
      {{{"valueFromBitmapStringAttr", "bits"}, {"valueFromTypeRefOnlyInstance", "Cls"}},
       " =>  valueFromImmTypeRefOnlyInstance: Cls"},
  };
  for (const auto& [settings, expected] : cases) {
    OperationArgument operation;
    fill(operation, settings);
    EXPECT_EQ(expected, operation.toString());
  }
  OperationArgument huge;
  huge.setValue(std::string(2000, 'v').c_str());
  const std::string text = huge.toString();
  EXPECT_EQ(OperationArgument::kTextSize - 1, text.size());
  EXPECT_EQ(0u, text.find(" =>  value: vvv"));
}

TEST(OperationArgumentTest, ValidityRules) {
  const Settings assign = {{"operator", "="}, {"value", "1"}};
  const Settings copy = {{"operator", "="}, {"valueFromAttr", "other"}};
  const struct {
    const char* title;
    const Settings& base;
    Settings more;
    bool valid;
  } cases[] = {
      {"operator and value", assign, {}, true},
      {"no operator", {}, {{"value", "1"}}, false},
      {"no source", {}, {{"operator", "="}}, false},
      {"value and valueFromAttr", assign, {{"valueFromAttr", "a"}}, false},
      {"bitmap alone", {}, {{"operator", "="}, {"valueFromBitmapStringAttr", "b"}}, true},
      {"single alone", {}, {{"operator", "="}, {"valueFromSingleAttr", "s"}}, true},
      {"typeRef alone", {}, {{"operator", "="}, {"valueFromTypeRefOnlyInstance", "C"}}, true},
      {"structType without instance", assign, {{"structType", "S"}}, false},
      {"structType with instance", assign, {{"structType", "S"}, {"valueFromInstance", "a=1"}}, true},
      {"instance and any instance", copy, {{"valueFromInstance", "a=1"}, {"valueFromMoTypeAnyInstance", "M"}}, false},
      {"any instance alone", copy, {{"valueFromMoTypeAnyInstance", "M"}}, true},
      {"referencedBy without namespace", copy, {{"valueFromInstanceReferencedBy", "R"}}, false},
      {"referencedBy with empty namespace", copy,
       {{"valueFromInstanceReferencedBy", "R"}, {"valueFromImmNamespace", ""}}, true},
      {"referencedBy with parent", copy,
       {{"valueFromInstanceReferencedBy", "R"}, {"valueFromImmNamespace", "ns"}, {"valueFromParentInstance", "t"}},
       false},
      {"referencedBy with typeRef", {},
       {{"operator", "="}, {"valueFromTypeRefOnlyInstance", "C"}, {"valueFromInstanceReferencedBy", "R"},
        {"valueFromImmNamespace", "ns"}},
       false},
      {"parent without valueFromAttr", assign, {{"valueFromParentInstance", "x"}}, false},
      {"parent with valueFromAttr", copy, {{"valueFromParentInstance", "x"}}, true},
      {"child type without valueFromAttr", assign, {{"valueFromMoTypeAnyChildInstance", "K"}}, false},
      {"child type with valueFromAttr", copy, {{"valueFromMoTypeAnyChildInstance", "K"}}, true},
  };
  for (const auto& c : cases) {
    OperationArgument operation;
    fill(operation, c.base);
    fill(operation, c.more);
    EXPECT_EQ(c.valid, operation.isValid()) << c.title;
  }
}

}  // namespace
