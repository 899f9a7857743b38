// Whole runs of the value actions: the real upgrader, started by the wrapper
// simulator on a small node written for each case, one modification file
// holding the case's MoAction; the new model is read back and compared.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace {

using Strings = std::vector<std::string>;

// Class definitions of the schema "Net", the same before and after.
const char* const kClasses = R"(
  <class name="Node"><category>SA_CONFIG</category>
    <rdn><name>nodeId</name><type>SA_STRING_T</type><category>SA_CONFIG</category></rdn>
    <attr><name>label</name><type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>bits</name><type>SA_ANY_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
  </class>
  <class name="Cell"><category>SA_CONFIG</category>
    <rdn><name>cellId</name><type>SA_STRING_T</type><category>SA_CONFIG</category></rdn>
    <attr><name>x</name><type>SA_INT32_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>u</name><type>SA_UINT32_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>big</name><type>SA_INT64_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>ubig</name><type>SA_UINT64_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>d</name><type>SA_DOUBLE_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>label</name><type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>ref</name><type>SA_NAME_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
    <attr><name>list</name><type>SA_INT32_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag>
      <flag>SA_MULTI_VALUE</flag></attr>
    <attr><name>plmns</name><type>SA_NAME_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag>
      <flag>SA_MULTI_VALUE</flag></attr>
  </class>
  <class name="Plmn"><category>SA_CONFIG</category>
    <rdn><name>id</name><type>SA_STRING_T</type><category>SA_CONFIG</category></rdn>
    <attr><name>mnc</name><type>SA_INT32_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag></attr>
  </class>
)";

// Cell 1 and 2 below the only Node; cell 1 refers to two Plmn structs.
const char* const kObjects = R"(
  <object class="Node"><dn>nodeId=1</dn>
    <attr><name>label</name><value>node one</value></attr>
    <attr><name>bits</name><value>0102</value></attr>
  </object>
  <object class="Cell"><dn>cellId=1,nodeId=1</dn>
    <attr><name>x</name><value>-140</value></attr>
    <attr><name>u</name><value>4294967295</value></attr>
    <attr><name>big</name><value>9223372036854775807</value></attr>
    <attr><name>ubig</name><value>12</value></attr>
    <attr><name>d</name><value>1.5</value></attr>
    <attr><name>label</name><value>cell one</value></attr>
    <attr><name>list</name><value>1</value><value>2</value></attr>
    <attr><name>plmns</name><value>id=p_0,cellId=1,nodeId=1</value><value>id=p_1,cellId=1,nodeId=1</value></attr>
  </object>
  <object class="Cell"><dn>cellId=2,nodeId=1</dn>
    <attr><name>x</name><value>-120</value></attr>
    <attr><name>u</name><value>7</value></attr>
    <attr><name>label</name><value>cell two</value></attr>
  </object>
  <object class="Plmn"><dn>id=p_0,cellId=1,nodeId=1</dn><attr><name>mnc</name><value>1</value></attr></object>
  <object class="Plmn"><dn>id=p_1,cellId=1,nodeId=1</dn><attr><name>mnc</name><value>2</value></attr></object>
)";

struct Expectation {
  std::string dn;
  std::string attribute;
  Strings values;
};

struct E2eCase {
  const char* name;
  std::string mo;                     // the Mo element with its MoAction
  int exitStatus;                     // of the wrapper: 0 success, 1 upgrade failed
  std::vector<Expectation> expected;  // on success
  std::string rollback;               // part of the rollback reason on failure
};

class SetValueE2eTest : public ::testing::TestWithParam<E2eCase> {
 protected:
  e2e::RunResult run(const std::string& mo) {
    e2e::NodeBuilder node(dir_.path());
    node.addXml("Net", "1_0_0", "2_0_0", e2e::NodeBuilder::immDocument(std::string(kClasses) + kObjects),
                e2e::NodeBuilder::immDocument(kClasses));
    node.modificationFile("Net", "CXC1_R1A", "modification_1_0_0_to_2_0_0.xml",
                          "<?xml version=\"1.0\"?>\n<modifications>" + mo + "</modifications>\n");
    return e2e::WholeRun(node).run();
  }

  TempDir dir_;
};

TEST_P(SetValueE2eTest, NewModelShowsTheValues) {
  e2e::RunResult result = run(GetParam().mo);
  ASSERT_EQ(GetParam().exitStatus, result.exitStatus) << result.rollbackText();
  e2e::ModelObjects objects = result.objects("Net");
  for (const Expectation& e : GetParam().expected) {
    ASSERT_EQ(1u, objects.count(e.dn)) << e.dn;
    EXPECT_EQ(e.values, objects[e.dn].attrs[e.attribute]) << e.dn << " " << e.attribute;
  }
  if (!GetParam().rollback.empty()) {
    EXPECT_NE(std::string::npos, result.rollbackText().find(GetParam().rollback)) << result.rollbackText();
    EXPECT_TRUE(result.model("Net").empty());
  }
}

std::string set(const std::string& mo, const std::string& attribute, const std::string& operation,
                const std::string& extraArgs = "") {
  return "<Mo name=\"" + mo + "\"><MoAction name=\"SetAttributeValueAction\"><Arg name=\"name\" value=\"" + attribute +
         "\"/>" + extraArgs + "<Operation " + operation + "/></MoAction></Mo>";
}

const char* const kCell1 = "cellId=1,nodeId=1";
const char* const kCell2 = "cellId=2,nodeId=1";

INSTANTIATE_TEST_SUITE_P(
    Runs, SetValueE2eTest,
    ::testing::Values(
        E2eCase{"Literal",
                set("Cell", "label", "operator=\"=\" value=\"renamed\""),
                0,
                {{kCell1, "label", {"renamed"}}, {kCell2, "label", {"renamed"}}},
                ""},
        E2eCase{"OtherAttribute",
                set("Cell", "big", "operator=\"=\" valueFromAttr=\"list\"", "<Arg name=\"rdnValue\" value=\"1\"/>"),
                0,
                {{kCell1, "big", {"1", "2"}}, {kCell2, "big", {}}},
                ""},
        E2eCase{"Parent",
                set("Cell", "label", "operator=\"=\" valueFromParentInstance=\"true\" valueFromAttr=\"label\""),
                0,
                {{kCell1, "label", {"node one"}}, {kCell2, "label", {"node one"}}},
                ""},
        E2eCase{"OnlyInstance",
                set("Cell", "ref", "operator=\"=\" valueFromTypeRefOnlyInstance=\"Node\""),
                0,
                {{kCell1, "ref", {"nodeId=1"}}},
                ""},
        E2eCase{"AnyInstance",
                set("Node", "label", "operator=\"=\" valueFromMoTypeAnyInstance=\"Cell\" valueFromAttr=\"label\""),
                0,
                {{"nodeId=1", "label", {"cell one"}}},
                ""},
        E2eCase{"ChildInstance",
                set("Node", "label", "operator=\"=\" valueFromMoTypeAnyChildInstance=\"Cell\" valueFromAttr=\"u\""),
                0,
                {{"nodeId=1", "label", {"4294967295"}}},
                ""},
        E2eCase{"OtherInstance",
                set("Cell", "label", "operator=\"=\" valueFromInstance=\"cellId=2,nodeId=1\" valueFromAttr=\"label\""),
                0,
                {{kCell1, "label", {"cell two"}}},
                ""},
        E2eCase{"StructInstance",
                set("Cell", "x",
                    "operator=\"=\" valueFromInstance=\"id=p_1,cellId=1,nodeId=1\" structType=\"Plmn\" "
                    "valueFromAttr=\"mnc\""),
                0,
                {{kCell1, "x", {"2"}}, {kCell2, "x", {"2"}}},
                ""},
        E2eCase{"Bitmap",
                set("Cell", "ubig", "operator=\"=\" valueFromInstance=\"nodeId=1\" valueFromBitmapStringAttr=\"bits\""),
                0,
                {{kCell1, "ubig", {"258"}}},
                ""},
        E2eCase{"Range",
                set("Cell", "x", "rangeStart=\"-140\" rangeEnd=\"-121\" operator=\"=\" value=\"-130\""),
                0,
                {{kCell1, "x", {"-130"}}, {kCell2, "x", {"-120"}}},
                ""},
        E2eCase{"WrapAround",
                set("Cell", "u", "operator=\"+\" value=\"1\""),
                0,
                {{kCell1, "u", {"0"}}, {kCell2, "u", {"8"}}},
                ""},
        E2eCase{"Arithmetic",
                "<Mo name=\"Cell\"><MoAction name=\"SetAttributeValueAction\"><Arg name=\"name\" value=\"big\"/>"
                "<Operation operator=\"&gt;&gt;\" value=\"60\"/><Operation operator=\"-\" value=\"10\"/>"
                "</MoAction></Mo>",
                0,
                {{kCell1, "big", {"-3"}}},
                ""},
        E2eCase{"DoubleAndFilter",
                set("Cell", "d", "operator=\"*\" value=\"4\"", "<Arg name=\"rdnValue\" value=\"1\"/>"),
                0,
                {{kCell1, "d", {"6"}}, {kCell2, "d", {}}},
                ""},
        E2eCase{
            "Struct",
            "<Mo name=\"Cell\"><MoAction name=\"SetStructAttributeValueAction\"><Arg name=\"name\" value=\"plmns\"/>"
            "<Arg name=\"structType\" value=\"Plmn\"/><Arg name=\"structAttribute\" value=\"mnc\"/>"
            "<Operation operator=\"+\" value=\"100\"/></MoAction></Mo>",
            0,
            {{"id=p_0,cellId=1,nodeId=1", "mnc", {"101"}}, {"id=p_1,cellId=1,nodeId=1", "mnc", {"102"}}},
            ""},
        E2eCase{"ArrayElements",
                "<Mo name=\"Cell\"><MoAction name=\"AddArrayElementAction\"><Arg name=\"name\" value=\"list\"/>"
                "<Arg name=\"elementValue\" value=\"3\"/><Arg name=\"type\" value=\"SA_INT32_T\"/></MoAction>"
                "<MoAction name=\"AddArrayElementAction\"><Arg name=\"name\" value=\"list\"/>"
                "<Arg name=\"index\" value=\"0\"/><Operation operator=\"=\" valueFromAttr=\"x\"/></MoAction></Mo>",
                0,
                {{kCell1, "list", {"-140", "1", "2", "3"}}, {kCell2, "list", {"-120", "3"}}},
                ""},
        E2eCase{"ValueDoesNotFit",
                set("Cell", "u", "operator=\"=\" value=\"-1\""),
                1,
                {},
                "SetAttributeValueAction: value -1 does not fit attribute u of type SA_UINT32_T on cellId=1,nodeId=1"},
        E2eCase{"MissingSourceInstance",
                set("Cell", "label", "operator=\"=\" valueFromInstance=\"cellId=9,nodeId=1\" valueFromAttr=\"label\""),
                1,
                {},
                "SetAttributeValueAction: source instance cellId=9,nodeId=1 not found"},
        E2eCase{"InvalidCombination",
                set("Cell", "label", "operator=\"=\" value=\"a\" valueFromAttr=\"x\""),
                1,
                {},
                "SetAttributeValueAction: invalid combination of arguments in operation"}),
    [](const ::testing::TestParamInfo<E2eCase>& info) { return std::string(info.param.name); });

}  // namespace
