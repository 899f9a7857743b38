// A whole run of the actions that NothingLostPropertyTest does not draw: the
// upgrader, started by the wrapper simulator on a small node, applies one
// modification file; the new model file must show each action's change. Each
// action's rules and failures are checked in tests/actions.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

using Values = std::vector<std::string>;

// Schema "Lab" 1_0_0 -> 1_1_0: Foo (below Root) becomes Bar, with its struct,
// its children and the references to it; Fresh is new. Cells hold numbers, a
// list and a struct Plmn.
SchemaSetup labSchema() {
  const std::vector<ImmClass> shared = {
      {"Root", immAttrs("label:SA_STRING_T")},
      {"FooSettings", immAttrs("mcc:SA_INT32_T"), "id"},
      {"Child", immAttrs("x:SA_INT32_T")},
      {"Ref", immAttrs("fooRef:SA_NAME_T*")},
      {"Cell", immAttrs("x:SA_INT32_T u:SA_UINT32_T label:SA_STRING_T list:SA_INT32_T* plmns:SA_NAME_T* "
                        "mappingRef:SA_NAME_T*")},
      {"Plmn", immAttrs("mnc:SA_INT32_T"), "id"}};
  SchemaSetup lab{"Lab", "1_0_0", "1_1_0", shared};
  lab.classes.push_back({"Foo", immAttrs("settings:SA_NAME_T label:SA_STRING_T")});
  lab.newClasses = shared;
  lab.newClasses.push_back({"Bar", immAttrs("settings:SA_NAME_T label:SA_STRING_T")});
  lab.newClasses.push_back({"Fresh", {}});
  lab.oldObjects = {
      {"Root", "rootId=1", {{"label", {"root one"}}}},
      {"Foo", "fooId=1,rootId=1", {{"settings", {"id=settings_0,fooId=1,rootId=1"}}, {"label", {"a"}}}},
      {"Foo", "fooId=2,rootId=1", {{"label", {"b"}}}},
      {"FooSettings", "id=settings_0,fooId=1,rootId=1", {{"mcc", {"240"}}}},
      {"Child", "childId=1,fooId=1,rootId=1", {{"x", {"1"}}}},
      {"Ref", "refId=1,rootId=1", {{"fooRef", {"fooId=2,rootId=1", "childId=1,fooId=1,rootId=1"}}}},
      {"Cell",
       "cellId=1,rootId=1",
       {{"x", {"-140"}},
        {"u", {"4294967295"}},
        {"label", {"cell one"}},
        {"list", {"1", "2", "1", "3"}},
        {"plmns", {"id=p_0,cellId=1,rootId=1"}}}},
      {"Cell", "cellId=2,rootId=1", {{"x", {"-120"}}, {"u", {"7"}}, {"label", {"cell two"}}, {"list", {"5"}}}},
      {"Plmn", "id=p_0,cellId=1,rootId=1", {{"mnc", {"1"}}}}};
  return lab;
}

TEST(ActionsE2eTest, NewModelShowsEveryActionsChange) {
  const std::string mos =
      mo("Foo", moAction("RenameMoTypeAction",
                         "name=Foo newName=Bar structAttr1=settings structType1=FooSettings descendant1=Child "
                         "morefAttr1=fooRef referringMoType1=Ref")) +
      mo("Root", moAction("CreateMoTypeAction", "moTypeName=Fresh")) +
      mo("Cell",
         moAction("SetAttributeValueAction", "name=x",
                  R"(rangeStart="-140" rangeEnd="-121" operator="=" value="-130")") +
             moAction("SetAttributeValueAction", "name=u", R"(operator="+" value="1")") +
             moAction("SetAttributeValueAction", "name=label",
                      R"(operator="=" valueFromParentInstance="true" valueFromAttr="label")") +
             moAction("SetStructAttributeValueAction", "name=plmns structType=Plmn structAttribute=mnc",
                      R"(operator="+" value="100")") +
             moAction("AddArrayElementAction", "name=list elementValue=9") +
             moAction("RemoveArrayElementAction", "name=list elementValue=1") +
             moAction("CreateChildStructAction", "structType=Plmn childRdnValue=extra structRefName=mappingRef"));
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(labSchema());
  node.modificationFile("Lab", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml", modifications(mos));
  RunResult run = WholeRun(node).run();
  ASSERT_EQ(0, run.exitStatus) << run.report << run.rollbackText();
  EXPECT_EQ(Values{}, run.rollback);

  ModelObjects model = run.objects("Lab");
  EXPECT_EQ(11u, model.size()) << run.model("Lab");
  for (const auto& [dn, object] : model) {
    EXPECT_EQ(std::string::npos, dn.find("fooId=")) << dn;
    EXPECT_NE("Foo", object.className) << dn;
  }
  const ModelObject& bar = model["barId=1,rootId=1"];
  EXPECT_EQ("Bar", bar.className) << run.model("Lab");
  EXPECT_EQ((std::map<std::string, Values>{{"settings", {"id=settings_0,barId=1,rootId=1"}}, {"label", {"a"}}}),
            bar.attrs);
  EXPECT_EQ("FooSettings", model["id=settings_0,barId=1,rootId=1"].className);
  EXPECT_EQ("Child", model["childId=1,barId=1,rootId=1"].className);
  EXPECT_EQ((Values{"barId=2,rootId=1", "childId=1,barId=1,rootId=1"}), model["refId=1,rootId=1"].attrs["fooRef"]);

  const struct {
    const char* dn;
    const char* attribute;
    Values values;
  } expected[] = {{"cellId=1,rootId=1", "x", {"-130"}},
                  {"cellId=2,rootId=1", "x", {"-120"}},
                  {"cellId=1,rootId=1", "u", {"0"}},
                  {"cellId=2,rootId=1", "u", {"8"}},
                  {"cellId=1,rootId=1", "label", {"root one"}},
                  {"id=p_0,cellId=1,rootId=1", "mnc", {"101"}},
                  {"cellId=1,rootId=1", "list", {"2", "3", "9"}},
                  {"cellId=2,rootId=1", "list", {"5", "9"}},
                  {"cellId=2,rootId=1", "mappingRef", {"id=extra,cellId=2,rootId=1"}}};
  for (const auto& e : expected) EXPECT_EQ(e.values, model[e.dn].attrs[e.attribute]) << e.dn << " " << e.attribute;
  EXPECT_EQ("Plmn", model["id=extra,cellId=1,rootId=1"].className);
}

}  // namespace
}  // namespace e2e
