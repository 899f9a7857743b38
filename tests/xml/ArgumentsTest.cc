#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "LogRecorder.h"
#include "xml/ActionArguments.h"
#include "xml/OperationArgument.h"

namespace {

TEST(ActionArgumentsTest, DuplicateNameIsRefusedAndFirstValueKept) {
  ActionArguments args;
  EXPECT_TRUE(args.addArgument("name", "first"));
  EXPECT_FALSE(args.addArgument("name", "second"));

  std::string value;
  EXPECT_TRUE(args.getArgument("name", value));
  EXPECT_EQ("first", value);
  EXPECT_TRUE(LogRecorder::installed().contains("addArgument: name = name and value = first"));
  EXPECT_TRUE(LogRecorder::installed().contains("Argument with name: name already added"));
}

TEST(ActionArgumentsTest, MissingArgumentLeavesValueUntouched) {
  ActionArguments args;
  args.addArgument("a", "1");
  std::string value = "kept";
  EXPECT_FALSE(args.getArgument("A", value));
  EXPECT_EQ("kept", value);
}

TEST(ActionArgumentsTest, ArgumentsToStringInNameOrder) {
  struct Case {
    std::vector<std::pair<std::string, std::string>> added;
    std::string expected;
  };
  const Case cases[] = {
      {{}, ""},
      {{{"a", "1"}}, "a=1"},
      {{{"b", "2"}, {"a", "1"}}, "a=1, b=2"},
      {{{"name", "x"}, {"Name", "y"}, {"empty", ""}}, "Name=y, empty=, name=x"},
  };
  for (const Case& c : cases) {
    ActionArguments args;
    for (const auto& argument : c.added) args.addArgument(argument.first, argument.second);
    EXPECT_EQ(c.expected, args.argumentsToString());
  }
}

TEST(ActionArgumentsTest, ArgumentsToStringHoldsEveryArgument) {
  ActionArguments args;
  std::string expected;
  for (int i = 0; i < 200; ++i) {
    std::string name = "argument" + std::to_string(1000 + i);
    std::string value(40, static_cast<char>('a' + i % 26));
    args.addArgument(name, value);
    expected += (expected.empty() ? "" : ", ") + name + "=" + value;
  }
  EXPECT_EQ(expected, args.argumentsToString());
}

TEST(ActionArgumentsTest, LogsArgumentsThenOperations) {
  ActionArguments args;
  args.addArgument("name", "attr");
  args.addArgument("a", "1");
  auto* operation = new OperationArgument;
  operation->setOperator("=");
  operation->setValue("5");
  args.addOperation(operation);
  LogRecorder::installed().clear();

  args.logArguments();
  std::vector<std::string> expected = {"Argument a=1", "Argument name=attr", " => (=) value: 5"};
  EXPECT_EQ(expected, LogRecorder::installed().texts());
}

using Setter = void (OperationArgument::*)(const char*);
using Getter = void (OperationArgument::*)(bool&, std::string&) const;

struct FieldCase {
  const char* field;
  Setter set;
  Getter get;
};

const FieldCase kFields[] = {
    {"rangeStart", &OperationArgument::setRangeStart, &OperationArgument::getRangeStart},
    {"rangeEnd", &OperationArgument::setRangeEnd, &OperationArgument::getRangeEnd},
    {"value", &OperationArgument::setValue, &OperationArgument::getValue},
    {"valueFromAttr", &OperationArgument::setValueFromAttr, &OperationArgument::getValueFromAttr},
    {"valueFromInstance", &OperationArgument::setValueFromInstance, &OperationArgument::getValueFromInstance},
    {"valueFromParentInstance", &OperationArgument::setValueFromParentInstance,
     &OperationArgument::getValueFromParentInstance},
    {"valueFromInstanceReferencedBy", &OperationArgument::setValueFromInstanceReferencedBy,
     &OperationArgument::getValueFromInstanceReferencedBy},
    {"valueFromBitmapStringAttr", &OperationArgument::setValueFromBitmapStringAttr,
     &OperationArgument::getValueFromBitmapStringAttr},
    {"operator", &OperationArgument::setOperator, &OperationArgument::getOperator},
    {"structType", &OperationArgument::setStructType, &OperationArgument::getStructType},
    {"valueFromMoTypeAnyInstance", &OperationArgument::setValueFromMoTypeAnyInstance,
     &OperationArgument::getValueFromMoTypeAnyInstance},
    {"valueFromTypeRefOnlyInstance", &OperationArgument::setValueFromTypeRefOnlyInstance,
     &OperationArgument::getValueFromTypeRefOnlyInstance},
    {"valueFromImmNamespace", &OperationArgument::setValueFromImmNamespace,
     &OperationArgument::getValueFromImmNamespace},
    {"valueFromSingleAttr", &OperationArgument::setValueFromSingleAttr, &OperationArgument::getValueFromSingleAttr},
    {"valueFromMoTypeAnyChildInstance", &OperationArgument::setValueFromMoTypeAnyChildInstance,
     &OperationArgument::getValueFromMoTypeAnyChildInstance},
};

TEST(OperationArgumentTest, EachSetterFillsOnlyItsOwnField) {
  for (const FieldCase& target : kFields) {
    OperationArgument operation;
    (operation.*target.set)("first");
    (operation.*target.set)("later");
    for (const FieldCase& field : kFields) {
      bool isSet = false;
      std::string value;
      (operation.*field.get)(isSet, value);
      bool same = std::strcmp(field.field, target.field) == 0;
      EXPECT_EQ(same, isSet) << "set " << target.field << ", read " << field.field;
      EXPECT_EQ(same ? "later" : "", value) << "set " << target.field << ", read " << field.field;
    }
  }
}

TEST(OperationArgumentTest, EmptyOrNullTextLeavesFieldUnsetExceptImmNamespace) {
  for (const FieldCase& target : kFields) {
    const bool emptyCounts = std::strcmp(target.field, "valueFromImmNamespace") == 0;
    for (const char* text : {static_cast<const char*>(nullptr), ""}) {
      OperationArgument operation;
      (operation.*target.set)(text);
      bool isSet = true;
      std::string value = "x";
      (operation.*target.get)(isSet, value);
      EXPECT_EQ(emptyCounts && text != nullptr, isSet) << target.field << (text ? " empty" : " null");
      EXPECT_EQ("", value) << target.field;
    }
  }
}

TEST(OperationArgumentTest, EmptyTextKeepsAnEarlierValue) {
  OperationArgument operation;
  operation.setValue("5");
  operation.setValue("");
  bool isSet = false;
  std::string value;
  operation.getValue(isSet, value);
  EXPECT_TRUE(isSet);
  EXPECT_EQ("5", value);
}

struct TextCase {
  const char* title;
  std::function<void(OperationArgument&)> fill;
  const char* expected;
};

TEST(OperationArgumentTest, ToStringForms) {
  const TextCase cases[] = {
      {"empty", [](OperationArgument&) {}, " => "},
      {"assignment",
       [](OperationArgument& o) {
         o.setOperator("=");
         o.setValue("5");
       },
       " => (=) value: 5"},
      {"range",
       [](OperationArgument& o) {
         o.setOperator("=");
         o.setValue("5");
         o.setRangeStart("1");
         o.setRangeEnd("3");
       },
       "range: 1to3 => (=) value: 5"},
      {"open range", [](OperationArgument& o) { o.setRangeEnd("9"); }, "range: to9 => "},
      {"bitmap never printed, type-ref label",
       [](OperationArgument& o) {
         o.setValueFromBitmapStringAttr("bits");
         o.setValueFromTypeRefOnlyInstance("Cls");
       },
       " =>  valueFromImmTypeRefOnlyInstance: Cls"},
      {"every printed field in order",
       [](OperationArgument& o) {
         o.setValueFromMoTypeAnyChildInstance("k");
         o.setValueFromSingleAttr("j");
         o.setValueFromImmNamespace("");
         o.setValueFromTypeRefOnlyInstance("h");
         o.setValueFromMoTypeAnyInstance("g");
         o.setStructType("f");
         o.setValueFromInstanceReferencedBy("e");
         o.setValueFromParentInstance("d");
         o.setValueFromInstance("c");
         o.setValueFromAttr("b");
         o.setValue("a");
         o.setOperator("+");
       },
       " => (+) value: a valueFromAttr: b valueFromInstance: c valueFromParentInstance: d"
       " valueFromInstanceReferencedBy: e structType: f valueFromMoTypeAnyInstance: g"
       " valueFromImmTypeRefOnlyInstance: h valueFromImmNamespace:  valueFromSingleAttr: j"
       " valueFromMoTypeAnyChildInstance: k"},
  };
  for (const TextCase& c : cases) {
    OperationArgument operation;
    c.fill(operation);
    EXPECT_STREQ(c.expected, operation.toString()) << c.title;
  }
}

TEST(OperationArgumentTest, ToStringIsCutAt512Bytes) {
  OperationArgument operation;
  operation.setValue(std::string(2000, 'v').c_str());
  std::string text = operation.toString();
  EXPECT_EQ(OperationArgument::kTextSize - 1, text.size());
  EXPECT_EQ(0u, text.find(" =>  value: vvv"));
}

struct ValidCase {
  const char* title;
  std::function<void(OperationArgument&)> fill;
  bool valid;
};

void assignValue(OperationArgument& o) {
  o.setOperator("=");
  o.setValue("1");
}

void copyAttribute(OperationArgument& o) {
  o.setOperator("=");
  o.setValueFromAttr("other");
}

TEST(OperationArgumentTest, ValidityRules) {
  const ValidCase cases[] = {
      {"operator and value", assignValue, true},
      {"no operator", [](OperationArgument& o) { o.setValue("1"); }, false},
      {"no source", [](OperationArgument& o) { o.setOperator("="); }, false},
      {"value and valueFromAttr", [](OperationArgument& o) { assignValue(o), o.setValueFromAttr("a"); }, false},
      {"value and typeRef", [](OperationArgument& o) { assignValue(o), o.setValueFromTypeRefOnlyInstance("C"); },
       false},
      {"value and bitmap", [](OperationArgument& o) { assignValue(o), o.setValueFromBitmapStringAttr("b"); }, false},
      {"value and single", [](OperationArgument& o) { assignValue(o), o.setValueFromSingleAttr("s"); }, false},
      {"bitmap alone",
       [](OperationArgument& o) {
         o.setOperator("=");
         o.setValueFromBitmapStringAttr("b");
       },
       true},
      {"single alone",
       [](OperationArgument& o) {
         o.setOperator("=");
         o.setValueFromSingleAttr("s");
       },
       true},
      {"typeRef alone",
       [](OperationArgument& o) {
         o.setOperator("=");
         o.setValueFromTypeRefOnlyInstance("C");
       },
       true},
      {"structType without instance", [](OperationArgument& o) { assignValue(o), o.setStructType("S"); }, false},
      {"structType with instance",
       [](OperationArgument& o) { assignValue(o), o.setStructType("S"), o.setValueFromInstance("a=1"); }, true},
      {"instance and any instance",
       [](OperationArgument& o) {
         copyAttribute(o), o.setValueFromInstance("a=1"), o.setValueFromMoTypeAnyInstance("M");
       },
       false},
      {"any instance alone", [](OperationArgument& o) { copyAttribute(o), o.setValueFromMoTypeAnyInstance("M"); },
       true},
      {"referencedBy without namespace",
       [](OperationArgument& o) { copyAttribute(o), o.setValueFromInstanceReferencedBy("R"); }, false},
      {"referencedBy with empty namespace",
       [](OperationArgument& o) {
         copyAttribute(o), o.setValueFromInstanceReferencedBy("R"), o.setValueFromImmNamespace("");
       },
       true},
      {"referencedBy with parent",
       [](OperationArgument& o) {
         copyAttribute(o), o.setValueFromInstanceReferencedBy("R"), o.setValueFromImmNamespace("ns");
         o.setValueFromParentInstance("true");
       },
       false},
      {"referencedBy with typeRef",
       [](OperationArgument& o) {
         o.setOperator("="), o.setValueFromTypeRefOnlyInstance("C");
         o.setValueFromInstanceReferencedBy("R"), o.setValueFromImmNamespace("ns");
       },
       false},
      {"parent without valueFromAttr", [](OperationArgument& o) { assignValue(o), o.setValueFromParentInstance("x"); },
       false},
      {"parent with valueFromAttr", [](OperationArgument& o) { copyAttribute(o), o.setValueFromParentInstance("x"); },
       true},
      {"child type without valueFromAttr",
       [](OperationArgument& o) { assignValue(o), o.setValueFromMoTypeAnyChildInstance("K"); }, false},
      {"child type with valueFromAttr",
       [](OperationArgument& o) { copyAttribute(o), o.setValueFromMoTypeAnyChildInstance("K"); }, true},
      {"range does not matter", [](OperationArgument& o) { assignValue(o), o.setRangeStart("1"), o.setRangeEnd("2"); },
       true},
  };
  for (const ValidCase& c : cases) {
    OperationArgument operation;
    c.fill(operation);
    EXPECT_EQ(c.valid, operation.isValid()) << c.title;
  }
}

}  // namespace
