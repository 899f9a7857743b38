#include <gtest/gtest.h>

#include <vector>
#include <string>

#include "runtime/OperationArgument.h"

namespace {

using Settings = std::vector<std::pair<std::string, const char*>>;

void fill(OperationArgument& operation, const Settings& settings) {
  for (const auto& [field, text] : settings) ASSERT_TRUE(operation.setByName(field.c_str(), text)) << field;
}

// The arguments' table and the operations' text forms reach users through the parser (XmlHandlerTest).
TEST(OperationArgumentTest, ALongTextIsCut) {
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
