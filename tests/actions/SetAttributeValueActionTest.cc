#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "ValueModel.h"
#include "actions/SetAttributeValueAction.h"
#include "safcImmCt.h"

namespace {

using Strings = std::vector<std::string>;
using Args = std::map<std::string, std::string>;
using Op = ValueModel::Operation;

// One operator on one value of one type.
struct OperatorCase {
  uint32_t type;
  std::string before;
  std::string op;
  std::string operand;
  std::string after;
};

class SetAttributeOperatorTest : public ::testing::TestWithParam<OperatorCase> {};

TEST_P(SetAttributeOperatorTest, ChangesTheValueInTheTypesWidth) {
  const OperatorCase& c = GetParam();
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {{"x", c.type, {c.before}}});
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}}, {{{"operator", c.op}, {"value", c.operand}}}));
  EXPECT_EQ(Strings{c.after}, ValueModel::values(cell, "x")) << c.before << " " << c.op << " " << c.operand;
  EXPECT_TRUE(model.failures.empty());
}

INSTANTIATE_TEST_SUITE_P(
    EveryOperator, SetAttributeOperatorTest,
    ::testing::Values(OperatorCase{SA_IMM_ATTR_SAINT32T, "5", "=", "-7", "-7"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "2147483647", "+", "1", "-2147483648"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "-2147483648", "-", "1", "2147483647"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "65536", "*", "65536", "0"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "-7", "/", "2", "-3"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "1", "<<", "31", "-2147483648"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "-8", ">>", "1", "2147483644"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "12", "&", "10", "8"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "12", "|", "3", "15"},
                      OperatorCase{SA_IMM_ATTR_SAINT32T, "12", "^", "10", "6"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "4294967295", "+", "1", "0"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "0", "-", "1", "4294967295"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "2147483648", "*", "2", "0"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "20000", "/", "1000", "20"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "2147483648", "<<", "1", "0"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "4294967295", ">>", "28", "15"},
                      OperatorCase{SA_IMM_ATTR_SAUINT32T, "4294967295", "^", "4294967295", "0"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "9223372036854775807", "+", "1", "-9223372036854775808"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "-9223372036854775808", "-", "1", "9223372036854775807"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "4294967296", "*", "4294967296", "0"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "1", "<<", "63", "-9223372036854775808"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "-1", ">>", "60", "15"},
                      OperatorCase{SA_IMM_ATTR_SAINT64T, "255", "&", "15", "15"},
                      OperatorCase{SA_IMM_ATTR_SAUINT64T, "18446744073709551615", "+", "1", "0"},
                      OperatorCase{SA_IMM_ATTR_SAUINT64T, "0", "-", "1", "18446744073709551615"},
                      OperatorCase{SA_IMM_ATTR_SAUINT64T, "9223372036854775808", "*", "2", "0"},
                      OperatorCase{SA_IMM_ATTR_SAUINT64T, "9", "/", "2", "4"},
                      OperatorCase{SA_IMM_ATTR_SAUINT64T, "1", "|", "9223372036854775808", "9223372036854775809"},
                      OperatorCase{SA_IMM_ATTR_SADOUBLET, "1.5", "*", "2", "3.000000"},
                      OperatorCase{SA_IMM_ATTR_SADOUBLET, "1", "/", "4", "0.250000"},
                      OperatorCase{SA_IMM_ATTR_SADOUBLET, "1", "-", "2.5", "-1.500000"},
                      OperatorCase{SA_IMM_ATTR_SASTRINGT, "ab", "+", "cd", "abcd"},
                      OperatorCase{SA_IMM_ATTR_SANAMET, "a=1", "=", "b=2,a=1", "b=2,a=1"}));

// Bounds are inclusive and compared by the attribute's type.
struct RangeCase {
  uint32_t type;
  Strings before;
  Op range;
  Strings after;
};

class SetAttributeRangeTest : public ::testing::TestWithParam<RangeCase> {};

TEST_P(SetAttributeRangeTest, ChangesOnlyTheValuesWithinTheBounds) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {{"x", GetParam().type, GetParam().before}});
  Op operation = GetParam().range;
  operation["operator"] = "=";
  operation["value"] = "0";
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}}, {operation}));
  EXPECT_EQ(GetParam().after, ValueModel::values(cell, "x"));
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, SetAttributeRangeTest,
    ::testing::Values(
        RangeCase{SA_IMM_ATTR_SAINT32T,
                  {"-141", "-140", "-135", "-131", "-130"},
                  {{"rangeStart", "-140"}, {"rangeEnd", "-131"}},
                  {"-141", "0", "0", "0", "-130"}},
        RangeCase{SA_IMM_ATTR_SAINT32T, {"4", "5", "6"}, {{"rangeStart", "5"}}, {"4", "0", "0"}},
        RangeCase{SA_IMM_ATTR_SAINT32T, {"4", "5", "6"}, {{"rangeEnd", "5"}}, {"0", "0", "6"}},
        RangeCase{SA_IMM_ATTR_SAUINT32T, {"4294967295", "1"}, {{"rangeStart", "2"}}, {"0", "1"}},
        RangeCase{SA_IMM_ATTR_SAINT64T, {"-1", "1"}, {{"rangeEnd", "-1"}}, {"0", "1"}},
        RangeCase{SA_IMM_ATTR_SADOUBLET,
                  {"0.5", "1.5"},
                  {{"rangeStart", "0.5"}, {"rangeEnd", "0.5"}},
                  {"0.000000", "1.500000"}},
        RangeCase{SA_IMM_ATTR_SASTRINGT, {"a", "b", "c"}, {{"rangeStart", "b"}, {"rangeEnd", "b"}}, {"a", "0", "c"}}));

// Failures while changing an instance leave it as it was.
struct FailureCase {
  const char* what;
  ValueModel::Attr attribute;
  Op operation;
  std::string failure;
};

class SetAttributeFailureTest : public ::testing::TestWithParam<FailureCase> {};

TEST_P(SetAttributeFailureTest, IsReportedAndChangesNothing) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {GetParam().attribute, {"list", SA_IMM_ATTR_SAINT32T, {"1", "2"}}});
  Strings before = ValueModel::values(cell, GetParam().attribute.name);
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", GetParam().attribute.name}}, {GetParam().operation}));
  EXPECT_EQ(Strings{GetParam().failure}, model.failures) << GetParam().what;
  EXPECT_EQ(before, ValueModel::values(cell, GetParam().attribute.name));
}

INSTANTIATE_TEST_SUITE_P(
    Values, SetAttributeFailureTest,
    ::testing::Values(
        FailureCase{
            "too big",
            {"x", SA_IMM_ATTR_SAINT32T, {"1"}},
            {{"operator", "="}, {"value", "2147483648"}},
            "SetAttributeValueAction: value 2147483648 does not fit attribute x of type SA_INT32_T on cellId=1"},
        FailureCase{"malformed",
                    {"x", SA_IMM_ATTR_SAUINT32T, {"1"}},
                    {{"operator", "+"}, {"value", "12x"}},
                    "SetAttributeValueAction: value 12x does not fit attribute x of type SA_UINT32_T on cellId=1"},
        FailureCase{"negative unsigned",
                    {"x", SA_IMM_ATTR_SAUINT64T, {"1"}},
                    {{"operator", "="}, {"value", "-1"}},
                    "SetAttributeValueAction: value -1 does not fit attribute x of type SA_UINT64_T on cellId=1"},
        FailureCase{"bad bound",
                    {"x", SA_IMM_ATTR_SAINT32T, {"1"}},
                    {{"operator", "="}, {"value", "2"}, {"rangeStart", "low"}},
                    "SetAttributeValueAction: value low does not fit attribute x of type SA_INT32_T on cellId=1"},
        FailureCase{"shift width",
                    {"x", SA_IMM_ATTR_SAINT32T, {"1"}},
                    {{"operator", "<<"}, {"value", "32"}},
                    "SetAttributeValueAction: shift count 32 is out of range for attribute x of type SA_INT32_T on "
                    "cellId=1"},
        FailureCase{"negative shift",
                    {"x", SA_IMM_ATTR_SAUINT64T, {"1"}},
                    {{"operator", ">>"}, {"value", "-1"}},
                    "SetAttributeValueAction: shift count -1 is out of range for attribute x of type SA_UINT64_T on "
                    "cellId=1"},
        FailureCase{"divide by zero",
                    {"x", SA_IMM_ATTR_SAINT64T, {"1"}},
                    {{"operator", "/"}, {"value", "-0"}},
                    "SetAttributeValueAction: division by zero on attribute x of cellId=1"},
        FailureCase{"minus on a string",
                    {"x", SA_IMM_ATTR_SASTRINGT, {"a"}},
                    {{"operator", "-"}, {"value", "a"}},
                    "SetAttributeValueAction: operator - is not defined for attribute x of type SA_STRING_T on "
                    "cellId=1"},
        FailureCase{"and on a double",
                    {"x", SA_IMM_ATTR_SADOUBLET, {"1"}},
                    {{"operator", "&"}, {"value", "1"}},
                    "SetAttributeValueAction: operator & is not defined for attribute x of type SA_DOUBLE_T on "
                    "cellId=1"},
        FailureCase{"plus on a name",
                    {"x", SA_IMM_ATTR_SANAMET, {"a=1"}},
                    {{"operator", "+"}, {"value", "b"}},
                    "SetAttributeValueAction: operator + is not defined for attribute x of type SA_NAME_T on "
                    "cellId=1"},
        FailureCase{"bytes",
                    {"x", SA_IMM_ATTR_SAANYT, {}},
                    {{"operator", "="}, {"value", "1"}},
                    "SetAttributeValueAction: attribute x of type SA_ANY_T on cellId=1 takes no text value"},
        FailureCase{"multi-valued source",
                    {"x", SA_IMM_ATTR_SAINT32T, {"1"}},
                    {{"operator", "+"}, {"valueFromAttr", "list"}},
                    "SetAttributeValueAction: operator + needs one value, the source gives 2"}));

TEST(SetAttributeValueActionTest, DoubleCopiedIntoAnIntegerDoesNotFit) {
  ValueModel model;
  InstanceIf& cell =
      model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}, {"d", SA_IMM_ATTR_SADOUBLET, {"1.5"}}});
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "x"}}, {{{"operator", "="}, {"valueFromAttr", "d"}}}));
  EXPECT_EQ(Strings{"SetAttributeValueAction: value 1.500000 does not fit attribute x of type SA_INT32_T on cellId=1"},
            model.failures);
  EXPECT_EQ(Strings{"1"}, ValueModel::values(cell, "x"));
}

TEST(SetAttributeValueActionTest, LiteralCannotCreateAnAttributeWithoutType) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1");
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "y"}}, {{{"operator", "="}, {"value", "1"}}}));
  EXPECT_EQ(Strings{"SetAttributeValueAction: attribute y is missing on cellId=1 and no type is given to create it"},
            model.failures);
  EXPECT_EQ(Strings{"<absent>"}, ValueModel::values(cell, "y"));
}

// Checked before any instance is touched.
struct InvalidCase {
  Args args;
  std::vector<Op> operations;
  std::string failure;
};

class SetAttributeInvalidTest : public ::testing::TestWithParam<InvalidCase> {};

TEST_P(SetAttributeInvalidTest, IsRefusedWhenValidating) {
  ValueModel model;
  SetAttributeValueAction action;
  EXPECT_FALSE(model.validate(action, GetParam().args, GetParam().operations));
  EXPECT_EQ(Strings{GetParam().failure}, model.failures);
}

INSTANTIATE_TEST_SUITE_P(
    Combinations, SetAttributeInvalidTest,
    ::testing::Values(
        InvalidCase{{}, {{{"operator", "="}, {"value", "1"}}}, "SetAttributeValueAction requires argument name."},
        InvalidCase{{{"name", "x"}}, {}, "SetAttributeValueAction requires at least one Operation."},
        InvalidCase{{{"name", "x"}},
                    {{{"value", "1"}}},
                    "SetAttributeValueAction: invalid combination of arguments in operation  =>  value: 1"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "="}, {"value", "1"}, {"valueFromAttr", "y"}}},
                    "SetAttributeValueAction: invalid combination of arguments in operation  => (=) value: 1 "
                    "valueFromAttr: y"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "="}, {"valueFromParentInstance", "true"}, {"value", "1"}}},
                    "SetAttributeValueAction: invalid combination of arguments in operation  => (=) value: 1 "
                    "valueFromParentInstance: true"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "%"}, {"value", "1"}}},
                    "SetAttributeValueAction: unsupported operator % in operation  => (%) value: 1"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "="},
                      {"valueFromAttr", "y"},
                      {"valueFromInstance", "aId=1"},
                      {"valueFromParentInstance", "true"}}},
                    "SetAttributeValueAction: the instance sources of operation  => (=) valueFromAttr: y "
                    "valueFromInstance: aId=1 valueFromParentInstance: true exclude each other"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "="}, {"valueFromAttr", "y"}, {"valueFromParentInstance", "yes"}}},
                    "SetAttributeValueAction: valueFromParentInstance yes is neither true nor an MO class name"},
        InvalidCase{{{"name", "x"}},
                    {{{"operator", "="},
                      {"valueFromAttr", "y"},
                      {"valueFromInstanceReferencedBy", "Cell."},
                      {"valueFromImmNamespace", ""}}},
                    "SetAttributeValueAction: valueFromInstanceReferencedBy Cell. is not Class or Class.attribute"}));

// Every value source, resolved on the instance cellId=1 below
// nodeId=1,siteId=7.
struct SourceCase {
  const char* what;
  Op operation;
  Strings after;
};

class SetAttributeSourceTest : public ::testing::TestWithParam<SourceCase> {
 protected:
  void SetUp() override {
    model.add("Site", "", "7", {{"label", SA_IMM_ATTR_SASTRINGT, {"site seven"}}});
    model.add("Node", "siteId=7", "1", {{"label", SA_IMM_ATTR_SASTRINGT, {"node one"}}});
    cell = &model.add("Cell", "nodeId=1,siteId=7", "1",
                      {{"label", SA_IMM_ATTR_SASTRINGT, {"old"}},
                       {"bits", SA_IMM_ATTR_SAANYT, {}},
                       {"flags", SA_IMM_ATTR_SASTRINGT, {"101"}},
                       {"plmns", SA_IMM_ATTR_SAINT64T, {"70000", "5"}},
                       {"sector", SA_IMM_ATTR_SANAMET, {"sectorId=1,nodeId=1,siteId=7"}}});
    cell->getAttribute("bits")->addCopy(std::vector<uint8_t>{0x01, 0x02});
    model.add("Sector", "nodeId=1,siteId=7", "1", {{"label", SA_IMM_ATTR_SASTRINGT, {"sector one"}}});
    model.add("Carrier", "cellId=1,nodeId=1,siteId=7", "2", {{"label", SA_IMM_ATTR_SASTRINGT, {"carrier two"}}});
    model.add("Relation", "", "4",
              {{"label", SA_IMM_ATTR_SASTRINGT, {"not me"}}, {"cellRef", SA_IMM_ATTR_SANAMET, {"cellId=9"}}});
    model.add("Relation", "", "5",
              {{"label", SA_IMM_ATTR_SASTRINGT, {"relation five"}},
               {"cellRef", SA_IMM_ATTR_SANAMET, {"cellId=1,nodeId=1,siteId=7"}}});
    model.add("Plmn", "cellId=1,nodeId=1,siteId=7", "plmn_0", {{"label", SA_IMM_ATTR_SASTRINGT, {"plmn struct"}}},
              true);
  }

  ValueModel model;
  InstanceIf* cell = nullptr;
};

TEST_P(SetAttributeSourceTest, FillsTheValueFromTheSource) {
  Op operation = GetParam().operation;
  operation["operator"] = "=";
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "label"}}, {operation})) << GetParam().what;
  EXPECT_EQ(GetParam().after, ValueModel::values(*cell, "label")) << GetParam().what;
  EXPECT_TRUE(model.failures.empty()) << model.failures.front();
}

INSTANTIATE_TEST_SUITE_P(
    Sources, SetAttributeSourceTest,
    ::testing::Values(
        SourceCase{"literal", {{"value", "new"}}, {"new"}},
        SourceCase{"own attribute, all values", {{"valueFromAttr", "plmns"}}, {"70000", "5"}},
        SourceCase{"own attribute, first value", {{"valueFromSingleAttr", "plmns"}}, {"70000"}},
        SourceCase{"instance by name",
                   {{"valueFromAttr", "label"}, {"valueFromInstance", "sectorId=1,nodeId=1,siteId=7"}},
                   {"sector one"}},
        SourceCase{"struct instance by name",
                   {{"valueFromAttr", "label"},
                    {"valueFromInstance", "id=plmn_0,cellId=1,nodeId=1,siteId=7"},
                    {"structType", "Plmn"}},
                   {"plmn struct"}},
        SourceCase{"parent", {{"valueFromAttr", "label"}, {"valueFromParentInstance", "true"}}, {"node one"}},
        SourceCase{
            "ancestor of a class", {{"valueFromAttr", "label"}, {"valueFromParentInstance", "Site"}}, {"site seven"}},
        SourceCase{"any instance of a class",
                   {{"valueFromAttr", "label"}, {"valueFromMoTypeAnyInstance", "Sector"}},
                   {"sector one"}},
        SourceCase{"child of a class",
                   {{"valueFromAttr", "label"}, {"valueFromMoTypeAnyChildInstance", "Carrier"}},
                   {"carrier two"}},
        SourceCase{"referencing instance",
                   {{"valueFromAttr", "label"},
                    {"valueFromInstanceReferencedBy", "Relation.cellRef"},
                    {"valueFromImmNamespace", ""}},
                   {"relation five"}},
        SourceCase{
            "referencing instance, any attribute",
            {{"valueFromAttr", "label"}, {"valueFromInstanceReferencedBy", "Relation"}, {"valueFromImmNamespace", ""}},
            {"relation five"}},
        SourceCase{"only instance", {{"valueFromTypeRefOnlyInstance", "Site"}}, {"siteId=7"}},
        SourceCase{"bytes as bitmap", {{"valueFromBitmapStringAttr", "bits"}}, {"258"}},
        SourceCase{"binary text as bitmap", {{"valueFromBitmapStringAttr", "flags"}}, {"5"}}));

class SetAttributeMissingSourceTest : public SetAttributeSourceTest {};

TEST_P(SetAttributeMissingSourceTest, FailsWithTheMissingPart) {
  Op operation = GetParam().operation;
  operation["operator"] = "=";
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "label"}}, {operation})) << GetParam().what;
  EXPECT_EQ(GetParam().after, model.failures) << GetParam().what;
  EXPECT_EQ(Strings{"old"}, ValueModel::values(*cell, "label"));
}

INSTANTIATE_TEST_SUITE_P(
    Sources, SetAttributeMissingSourceTest,
    ::testing::Values(
        SourceCase{"absent attribute",
                   {{"valueFromAttr", "nothing"}},
                   {"SetAttributeValueAction: source instance cellId=1,nodeId=1,siteId=7 has no value in attribute "
                    "nothing"}},
        SourceCase{"unknown instance",
                   {{"valueFromAttr", "label"}, {"valueFromInstance", "sectorId=9,nodeId=1,siteId=7"}},
                   {"SetAttributeValueAction: source instance sectorId=9,nodeId=1,siteId=7 not found"}},
        SourceCase{"unknown class of instance",
                   {{"valueFromAttr", "label"}, {"valueFromInstance", "radioId=1"}},
                   {"SetAttributeValueAction: source instance radioId=1 not found"}},
        SourceCase{"no ancestor of the class",
                   {{"valueFromAttr", "label"}, {"valueFromParentInstance", "Radio"}},
                   {"SetAttributeValueAction: no instance of Radio above cellId=1,nodeId=1,siteId=7"}},
        SourceCase{"no instance of class",
                   {{"valueFromAttr", "label"}, {"valueFromMoTypeAnyInstance", "Radio"}},
                   {"SetAttributeValueAction: no instance of class Radio"}},
        SourceCase{"no child",
                   {{"valueFromAttr", "label"}, {"valueFromMoTypeAnyChildInstance", "Sector"}},
                   {"SetAttributeValueAction: no child of class Sector below cellId=1,nodeId=1,siteId=7"}},
        SourceCase{"nobody references",
                   {{"valueFromAttr", "label"},
                    {"valueFromInstanceReferencedBy", "Relation.label"},
                    {"valueFromImmNamespace", ""}},
                   {"SetAttributeValueAction: no instance of Relation references cellId=1,nodeId=1,siteId=7"}},
        SourceCase{"several instances",
                   {{"valueFromTypeRefOnlyInstance", "Relation"}},
                   {"SetAttributeValueAction: no single instance of class Relation"}},
        SourceCase{
            "bytes without bitmap",
            {{"valueFromAttr", "bits"}},
            {"SetAttributeValueAction: attribute bits of cellId=1,nodeId=1,siteId=7 is of type SA_ANY_T; read it with "
             "valueFromBitmapStringAttr"}},
        SourceCase{"text that is no bitmap",
                   {{"valueFromBitmapStringAttr", "label"}},
                   {"SetAttributeValueAction: attribute label of cellId=1,nodeId=1,siteId=7 is no bitmap"}}));

TEST(SetAttributeValueActionTest, ParentOfARootInstanceIsAFailure) {
  ValueModel model;
  model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}});
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "x"}},
                         {{{"operator", "="}, {"valueFromAttr", "x"}, {"valueFromParentInstance", "true"}}}));
  EXPECT_EQ(Strings{"SetAttributeValueAction: cellId=1 has no parent"}, model.failures);
}

TEST(SetAttributeValueActionTest, ReferencedByLooksTheClassUpInTheGivenNamespace) {
  ValueModel model;
  model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}});
  SetAttributeValueAction action;
  model.run(action, "Cell", {{"name", "x"}},
            {{{"operator", "="},
              {"valueFromAttr", "x"},
              {"valueFromInstanceReferencedBy", "Relation"},
              {"valueFromImmNamespace", "Lrat"}}});
  EXPECT_EQ("Lrat", model.lastPrefix);
  EXPECT_EQ(Strings{"SetAttributeValueAction: no instance of class Relation"}, model.failures);
}

TEST(SetAttributeValueActionTest, AbsentAttributeIsCreatedWithTheSourceTypeOrTheGivenType) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {{"list", SA_IMM_ATTR_SAUINT64T, {"1", "2"}}});
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "copy"}}, {{{"operator", "="}, {"valueFromAttr", "list"}}}));
  EXPECT_EQ(Strings({"1", "2"}), ValueModel::values(cell, "copy"));
  EXPECT_EQ(uint32_t{SA_IMM_ATTR_SAUINT64T}, cell.getAttribute("copy")->getType());
  EXPECT_TRUE(
      model.run(action, "Cell", {{"name", "fresh"}, {"type", "SA_DOUBLE_T"}}, {{{"operator", "="}, {"value", "2.5"}}}));
  EXPECT_EQ(Strings{"2.500000"}, ValueModel::values(cell, "fresh"));
}

TEST(SetAttributeValueActionTest, PerValueOperationOnAnAbsentAttributeChangesNothing) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1");
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}}, {{{"operator", "+"}, {"value", "1"}}}));
  EXPECT_EQ(Strings{"<absent>"}, ValueModel::values(cell, "x"));
}

TEST(SetAttributeValueActionTest, OperationsRunInOrderOnTheResultOfTheEarlierOnes) {
  ValueModel model;
  InstanceIf& cell = model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"3"}}});
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}},
                        {{{"operator", "+"}, {"value", "1"}}, {{"operator", "*"}, {"value", "10"}}}));
  EXPECT_EQ(Strings{"40"}, ValueModel::values(cell, "x"));
}

TEST(SetAttributeValueActionTest, FilterSkipsInstancesAndOldValueSelectsPositions) {
  ValueModel model;
  InstanceIf& one = model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"-140", "5", "-140"}}});
  InstanceIf& two = model.add("Cell", "", "2", {{"x", SA_IMM_ATTR_SAINT32T, {"-140"}}});
  InstanceIf& three = model.add("Cell", "", "3", {{"x", SA_IMM_ATTR_SAINT32T, {"7"}}});
  SetAttributeValueAction action;
  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}, {"oldAttributeValue", "-140"}},
                        {{{"operator", "="}, {"value", "-130"}}}));
  EXPECT_EQ(Strings({"-130", "5", "-130"}), ValueModel::values(one, "x"));
  EXPECT_EQ(Strings{"-130"}, ValueModel::values(two, "x"));
  EXPECT_EQ(Strings{"7"}, ValueModel::values(three, "x"));
  EXPECT_EQ(1u, LogRecorder::installed().count("Filter does not apply"));

  EXPECT_TRUE(model.run(action, "Cell", {{"name", "x"}, {"rdnValue", "2"}}, {{{"operator", "="}, {"value", "0"}}}));
  EXPECT_EQ(Strings{"0"}, ValueModel::values(two, "x"));
  EXPECT_EQ(Strings{"7"}, ValueModel::values(three, "x"));
}

TEST(SetAttributeValueActionTest, MalformedOldValueIsAFailureNotAnAbort) {
  ValueModel model;
  model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}});
  SetAttributeValueAction action;
  EXPECT_FALSE(
      model.run(action, "Cell", {{"name", "x"}, {"oldAttributeValue", "one"}}, {{{"operator", "="}, {"value", "2"}}}));
  EXPECT_EQ(Strings{"SetAttributeValueAction: value one does not fit attribute x of type SA_INT32_T on cellId=1"},
            model.failures);
}

TEST(SetAttributeValueActionTest, MissingGroupIsReportedWithTheArguments) {
  ValueModel model;
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "x"}, {"rdnValue", "1"}}, {{{"operator", "="}, {"value", "2"}}}));
  EXPECT_EQ(Strings{"Action Failed: SetAttributeValueAction: No instance group to operate on. Action arguments: "
                    "name=x, rdnValue=1"},
            model.failures);
}

TEST(SetAttributeValueActionTest, AFailingInstanceDoesNotStopTheOthers) {
  ValueModel model;
  model.add("Cell", "", "1", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}});
  InstanceIf& two =
      model.add("Cell", "", "2", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}, {"y", SA_IMM_ATTR_SAINT32T, {"9"}}});
  SetAttributeValueAction action;
  EXPECT_FALSE(model.run(action, "Cell", {{"name", "x"}}, {{{"operator", "="}, {"valueFromAttr", "y"}}}));
  EXPECT_EQ(Strings{"9"}, ValueModel::values(two, "x"));
  EXPECT_EQ(1u, model.failures.size());
}

}  // namespace
