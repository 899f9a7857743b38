// The set-value actions (on attributes and on struct attributes) and the value texts they share.

#include <gtest/gtest.h>

#include <sstream>

#include "ActionModel.h"
#include "actions/SetAttributeValueAction.h"
#include "actions/SetStructAttributeValueAction.h"
#include "icti/AttributeValue.h"
#include "icti/ValueType.h"

namespace {

constexpr ValueType kI32 = ValueType::kInt32, kU32 = ValueType::kUint32, kI64 = ValueType::kInt64,
                   kU64 = ValueType::kUint64, kDouble = ValueType::kDouble, kString = ValueType::kString,
                   kName = ValueType::kName, kAny = ValueType::kAny;

TEST(AttributeValueTest, JudgesTheTextByTheType) {
  const struct {
    ValueType type;
    Strings fitting;
    Strings notFitting;

  } cases[] = {{kI32, {"2147483647", "-2147483648", "+7"}, {"2147483648", "-2147483649", "12x", "", " 5", "-"}},
               {kU32, {"4294967295", "0"}, {"4294967296", "-1"}},
               {kI64, {"9223372036854775807", "-9223372036854775808"}, {"9223372036854775808"}},
               {kU64, {"18446744073709551615"}, {"18446744073709551616", "-0"}},
               {kDouble, {"1.500000", "-2e3"}, {"1.5x", ""}},
               {kName, {std::string(599, 'n')}, {std::string(600, 'n')}},
               {kAny, {}, {"00ff"}}};
  for (const auto& c : cases) {
    for (const std::string& text : c.fitting) EXPECT_TRUE(AttributeValue::fits(c.type, text)) << codeOf(c.type) << " " << text;
    for (const std::string& text : c.notFitting) {
      EXPECT_FALSE(AttributeValue::fits(c.type, text)) << codeOf(c.type) << " " << text;
    }
  }
}

// Runs one SetAttributeValueAction on cellId=1 holding `attributes` (and "list" = 1, 2); gives the values of `name`.
struct SetRun {
  bool result;
  Strings values;
  Strings failures;
};
SetRun setOn(std::vector<Attr> attributes, const Args& args, const std::vector<Op>& ops) {
  ActionModel model;
  attributes.push_back({"list", kI32, {"1", "2"}});
  InstanceIf& cell = model.add("Cell", "", "1", attributes);
  SetAttributeValueAction action;
  bool result = model.run(action, "Cell", args, ops);
  return {result, ActionModel::values(cell, args.front().second), model.failures};
}

// Each operator calls its own operation; the arithmetic in each type's width is the attribute's (AttributeTest).
TEST(SetAttributeValueActionTest, EveryOperatorCallsItsOperation) {
  // "<before> <operator> <operand> -> <after>"
  for (const char* change : {"5 = -7 -> -7", "5 - 7 -> -2", "5 * 3 -> 15", "-7 / 2 -> -3", "1 << 31 -> -2147483648",
                             "-8 >> 1 -> 2147483644", "12 & 10 -> 8", "12 | 3 -> 15", "12 ^ 10 -> 6",
                             "ab + cd -> abcd"}) {
    SCOPED_TRACE(change);
    std::istringstream parts(change);
    std::string before, op, operand, arrow, after;
    parts >> before >> op >> operand >> arrow >> after;
    const ValueType type = before == "ab" ? kString : kI32;
    SetRun run = setOn({{"x", type, {before}}}, {{"name", "x"}}, {{{"operator", op}, {"value", operand}}});
    EXPECT_TRUE(run.result);
    EXPECT_EQ(Strings{after}, run.values);
    EXPECT_EQ(Strings{}, run.failures);
  }
  SetRun chained = setOn({{"x", kI32, {"3"}}}, {{"name", "x"}},
                         {{{"operator", "+"}, {"value", "1"}}, {{"operator", "*"}, {"value", "10"}}});
  EXPECT_EQ(Strings{"40"}, chained.values) << "operations run in order on the earlier ones' result";
}

TEST(SetAttributeValueActionTest, RangesChangeOnlyTheValuesWithinTheirInclusiveBounds) {
  const struct {
    ValueType type;
    Strings before;
    const char* range;
    Strings after;
  } cases[] = {{kI32,
                {"-141", "-140", "-135", "-131", "-130"},
                R"(rangeStart="-140" rangeEnd="-131")",
                {"-141", "0", "0", "0", "-130"}},
               {kI32, {"4", "5", "6"}, R"(rangeStart="5")", {"4", "0", "0"}},
               {kI32, {"4", "5", "6"}, R"(rangeEnd="5")", {"0", "0", "6"}},
               {kString, {"a", "b", "c"}, R"(rangeStart="b" rangeEnd="b")", {"a", "0", "c"}}};
  for (const auto& c : cases) {
    SetRun run =
        setOn({{"x", c.type, c.before}}, {{"name", "x"}}, {op(c.range + std::string(R"( operator="=" value="0")"))});
    EXPECT_EQ(c.after, run.values) << c.range;
  }
}

TEST(SetAttributeValueActionTest, FailuresAreReportedAndChangeNothing) {
  // On x of `type` holding `before` (or on an absent y); list holds 1 and 2.
  const struct {
    const char* name;
    ValueType type;
    const char* before;
    const char* operation;
    std::string failure;
  } cases[] = {
      {"x", kI32, "1", R"(operator="=" value="2147483648")",
       "value 2147483648 does not fit attribute x of type SA_INT32_T on cellId=1"},
      {"x", kI32, "1", R"(operator="=" value="2" rangeStart="low")",
       "value low does not fit attribute x of type SA_INT32_T on cellId=1"},
      {"x", kI32, "1", R"(operator="<<" value="32")",
       "shift count 32 is out of range for attribute x of type SA_INT32_T on cellId=1"},
      {"x", kU64, "1", R"(operator=">>" value="-1")",
       "shift count -1 is out of range for attribute x of type SA_UINT64_T on cellId=1"},
      {"x", kI64, "1", R"(operator="/" value="-0")", "division by zero on attribute x of cellId=1"},
      {"x", kString, "a", R"(operator="-" value="a")",
       "operator - is not defined for attribute x of type SA_STRING_T on cellId=1"},
      {"x", kI32, "1", R"(operator="+" valueFromAttr="list")", "operator + needs one value, the source gives 2"},
      {"y", kI32, nullptr, R"(operator="=" value="1")",
       "attribute y is missing on cellId=1 and no type is given to create it"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failure);
    const Strings before = c.before != nullptr ? Strings{c.before} : Strings{};
    std::vector<Attr> attributes;
    if (c.name == std::string("x")) attributes.push_back({"x", c.type, before});
    SetRun run = setOn(attributes, {{"name", c.name}}, {op(c.operation)});
    EXPECT_FALSE(run.result);
    EXPECT_EQ(Strings{"SetAttributeValueAction: " + c.failure}, run.failures);
    EXPECT_EQ(c.name == std::string("x") ? before : Strings{"<absent>"}, run.values);
  }
  SetRun run =
      setOn({{"x", kI32, {"1"}}}, {{"name", "x"}, {"oldAttributeValue", "one"}}, {op(R"(operator="=" value="2")")});
  EXPECT_EQ(Strings{"oldAttributeValue one is no SA_INT32_T value of attribute x of cellId=1"}, run.failures);
}

TEST(SetAttributeValueActionTest, InvalidCombinationsAreRefusedWhenValidating) {
  const struct {
    const char* operation;  // none when null
    std::string failure;
  } cases[] = {
      {R"(value="1")", ": invalid combination of arguments in operation  =>  value: 1"},
      {R"(operator="%" value="1")", ": unsupported operator % in operation  => (%) value: 1"},
      {R"(operator="=" valueFromAttr="y" valueFromInstance="aId=1" valueFromParentInstance="true")",
       ": the instance sources of operation  => (=) valueFromAttr: y valueFromInstance: aId=1 valueFromParentInstance: "
       "true exclude each other"},
      {R"(operator="=" valueFromAttr="y" valueFromParentInstance="yes")",
       ": valueFromParentInstance yes is neither true nor an MO class name"},
      {R"(operator="=" valueFromAttr="y" valueFromInstanceReferencedBy="Cell." valueFromImmNamespace="")",
       ": valueFromInstanceReferencedBy Cell. is not Class or Class.attribute"}};
  SetAttributeValueAction action;
  for (const auto& c : cases) {
    ActionModel model;
    EXPECT_FALSE(
        model.validate(action, {{"name", "x"}}, c.operation ? std::vector<Op>{op(c.operation)} : std::vector<Op>{}));
    EXPECT_EQ(Strings{"SetAttributeValueAction" + c.failure}, model.failures);
  }
}

// Every value source, resolved on the instance cellId=1 below nodeId=1,siteId=7.
class SetAttributeSourceTest : public testing::Test {
 protected:
  SetAttributeSourceTest() {
    model.add("Site", "", "7", {{"label", kString, {"site seven"}}});
    model.add("Node", "siteId=7", "1", {{"label", kString, {"node one"}}});
    model.add("Sector", "nodeId=1,siteId=7", "1", {{"label", kString, {"sector one"}}});
    model.add("Carrier", "cellId=1,nodeId=1,siteId=7", "2", {{"label", kString, {"carrier two"}}});
    model.add("Relation", "", "4", {{"label", kString, {"not me"}}, {"cellRef", kName, {"cellId=9"}}});
    model.add("Relation", "", "5", {{"label", kString, {"relation five"}}, {"cellRef", kName, {kCell}}});
    model.add("Plmn", kCell, "plmn_0", {{"label", kString, {"plmn struct"}}}, "id");
    cell.getAttribute("bits")->addCopy(std::vector<uint8_t>{0x01, 0x02});
  }
  // Sets "label" by the operation; the result, and the failures.
  bool setLabel(Op operation) {
    operation["operator"] = "=";
    return model.run(action, "Cell", {{"name", "label"}}, {operation});
  }

  static constexpr const char* kCell = "cellId=1,nodeId=1,siteId=7";
  ActionModel model;
  SetAttributeValueAction action;
  InstanceIf& cell = model.add("Cell", "nodeId=1,siteId=7", "1",
                               {{"label", kString, {"old"}},
                                {"bits", kAny, {}},
                                {"flags", kString, {"101"}},
                                {"plmns", kI64, {"70000", "5"}},
                                {"sector", kName, {"sectorId=1,nodeId=1,siteId=7"}}});
};

TEST_F(SetAttributeSourceTest, FillsTheValueFromTheSource) {
  const struct {
    std::string operation;
    Strings after;
  } cases[] = {
      {R"(valueFromSingleAttr="plmns")", {"70000"}},
      {R"(valueFromAttr="label" valueFromInstance="sectorId=1,nodeId=1,siteId=7")", {"sector one"}},
      {R"(valueFromAttr="label" valueFromInstance="id=plmn_0,cellId=1,nodeId=1,siteId=7" structType="Plmn")",
       {"plmn struct"}},
      {R"(valueFromAttr="label" valueFromParentInstance="Site")", {"site seven"}},
      {R"(valueFromAttr="label" valueFromMoTypeAnyInstance="Sector")", {"sector one"}},
      {R"(valueFromAttr="label" valueFromMoTypeAnyChildInstance="Carrier")", {"carrier two"}},
      {R"(valueFromAttr="label" valueFromInstanceReferencedBy="Relation.cellRef" valueFromImmNamespace="")",
       {"relation five"}},
      {R"(valueFromTypeRefOnlyInstance="Site")", {"siteId=7"}},
      {R"(valueFromBitmapStringAttr="bits")", {"258"}},
      {R"(valueFromBitmapStringAttr="flags")", {"5"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.operation);
    EXPECT_TRUE(setLabel(op(c.operation)));
    EXPECT_EQ(c.after, ActionModel::values(cell, "label"));
    EXPECT_EQ(Strings{}, model.failures);
  }
}

TEST_F(SetAttributeSourceTest, SourcesResolvingToNothingFailWithTheMissingPart) {
  const struct {
    std::string operation;
    std::string failure;
  } cases[] = {
      {R"(valueFromAttr="nothing")", "source instance cellId=1,nodeId=1,siteId=7 has no value in attribute nothing"},
      {R"(valueFromAttr="label" valueFromInstance="sectorId=9,nodeId=1,siteId=7")",
       "source instance sectorId=9,nodeId=1,siteId=7 not found"},
      {R"(valueFromAttr="label" valueFromParentInstance="Radio")",
       "no instance of Radio above cellId=1,nodeId=1,siteId=7"},
      {R"(valueFromAttr="label" valueFromMoTypeAnyChildInstance="Sector")",
       "no child of class Sector below cellId=1,nodeId=1,siteId=7"},
      {R"(valueFromAttr="label" valueFromInstanceReferencedBy="Relation.label" valueFromImmNamespace="")",
       "no instance of Relation references cellId=1,nodeId=1,siteId=7"},
      {R"(valueFromTypeRefOnlyInstance="Relation")", "no single instance of class Relation"},
      {R"(valueFromBitmapStringAttr="label")", "attribute label of cellId=1,nodeId=1,siteId=7 is no bitmap"},
      {R"(valueFromAttr="label" valueFromInstanceReferencedBy="Radio" valueFromImmNamespace="Lrat")",
       "no instance of class Radio"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failure);
    model.failures.clear();
    EXPECT_FALSE(setLabel(op(c.operation)));
    EXPECT_EQ(Strings{"SetAttributeValueAction: " + c.failure}, model.failures);
    EXPECT_EQ(Strings{"old"}, ActionModel::values(cell, "label"));
  }
  EXPECT_EQ("Lrat", model.lastPrefix) << "the referring class is looked up in the given namespace";
}

// Copying from another attribute with its type is part of the whole runs' property test.
TEST(SetAttributeValueActionTest, AbsentAttributeIsCreatedWithTheGivenTypeByAnAssignmentOnly) {
  ActionModel model;
  InstanceIf& cell = model.add("Cell", "", "1");
  SetAttributeValueAction action;
  EXPECT_TRUE(
      model.run(action, "Cell", {{"name", "fresh"}, {"type", "SA_DOUBLE_T"}}, {{{"operator", "="}, {"value", "2.5"}}}));
  EXPECT_EQ(kDouble, cell.getAttribute("fresh")->getType());
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "none"}}, {{{"operator", "+"}, {"value", "1"}}}));
  EXPECT_EQ(Strings{"<absent>"}, ActionModel::values(cell, "none"));
}

TEST(SetAttributeValueActionTest, OldValueSelectsPositionsAFailureStopsNoOther) {
  ActionModel model;
  InstanceIf& one = model.add("Cell", "", "1", {{"x", kI32, {"-140", "5", "-140"}}});
  InstanceIf& two = model.add("Cell", "", "2", {{"x", kI32, {"-140"}}, {"y", kI32, {"9"}}});
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}, {"oldAttributeValue", "-140"}},
                        {{{"operator", "="}, {"value", "-130"}}}));
  EXPECT_EQ((Strings{"-130", "5", "-130"}), ActionModel::values(one, "x"));
  EXPECT_EQ(Strings{"-130"}, ActionModel::values(two, "x"));

  EXPECT_FALSE(model.run(action, "Cell", {{"name", "x"}}, {{{"operator", "="}, {"valueFromAttr", "y"}}}));
  EXPECT_EQ(Strings{"9"}, ActionModel::values(two, "x"));
  EXPECT_EQ(1u, model.failures.size());
}

// cellId=1 refers to the structs id=p_0 (mnc 1) and id=p_1 (mnc 2) and has mncLength 3.
class SetStructAttributeValueActionTest : public testing::Test {
 protected:
  SetStructAttributeValueActionTest() {
    model.add("Plmn", "cellId=1", "p_0", {{"mnc", kI32, {"1"}}}, "id");
    model.add("Plmn", "cellId=1", "p_1", {{"mnc", kI32, {"2"}}}, "id");
  }
  bool run(Args extra, const Op& operation) {
    extra.insert(extra.end(), {{"name", "plmns"}, {"structType", "Plmn"}, {"structAttribute", "mnc"}});
    return model.run(action, "Cell", extra, {operation});
  }
  Strings mncs() {
    return {ActionModel::values(*model.group("Plmn").getInstance("id=p_0,cellId=1"), "mnc").at(0),
            ActionModel::values(*model.group("Plmn").getInstance("id=p_1,cellId=1"), "mnc").at(0)};
  }

  ActionModel model;
  SetStructAttributeValueAction action;
  InstanceIf& cell = model.add("Cell", "", "1",
                               {{"plmns", kName, {"id=p_0,cellId=1", "id=p_1,cellId=1"}}, {"mncLength", kI32, {"3"}}});
};

TEST_F(SetStructAttributeValueActionTest, ChangesTheReferredStructsTheArgumentsSelect) {
  model.add("Cell", "", "2");
  EXPECT_TRUE(run({}, {{"operator", "="}, {"valueFromAttr", "mncLength"}}));
  EXPECT_EQ((Strings{"3", "3"}), mncs()) << "the source is the referring instance";
  EXPECT_TRUE(run({{"oldAttributeValue", "id=p_1,cellId=1"}}, {{"operator", "="}, {"value", "7"}}));
  EXPECT_EQ((Strings{"3", "7"}), mncs());
  EXPECT_EQ(Strings{}, model.failures);
}

TEST_F(SetStructAttributeValueActionTest, AMissingStructFailsAndTheOthersStillChange) {
  cell.getAttribute("plmns")->insertValueAtIndex("id=p_9,cellId=1", 0);
  EXPECT_FALSE(run({}, {{"operator", "="}, {"value", "7"}}));
  EXPECT_EQ((Strings{"7", "7"}), mncs()) << "the other structs still change";
  EXPECT_EQ(Strings{"SetStructAttributeValueAction: struct instance id=p_9,cellId=1 of Plmn not found"}, model.failures);
}

}  // namespace
