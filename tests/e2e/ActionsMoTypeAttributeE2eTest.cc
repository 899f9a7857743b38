// Whole runs of vosk-oam-upgrader through upgrade-wrapper-sim on a small node
// whose modification file renames, adds, removes, creates and deletes classes
// and attributes. The new model file must show each change, and a failing
// action must roll the node back with its own reason.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace {

using Values = std::vector<std::string>;

// One attribute definition: name, type and flags.
struct AttrDef {
  std::string name;
  std::string type;
  bool multiValued = false;
};

std::string classXml(const std::string& name, const std::string& rdn, const std::vector<AttrDef>& attrs) {
  std::string xml = "  <class name=\"" + name + "\">\n    <category>SA_CONFIG</category>\n    <rdn><name>" + rdn +
                    "</name><type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_INITIALIZED</flag></rdn>\n";
  for (const AttrDef& a : attrs) {
    xml += "    <attr><name>" + a.name + "</name><type>" + a.type + "</type><category>SA_CONFIG</category>" +
           "<flag>SA_WRITABLE</flag>" + (a.multiValued ? "<flag>SA_MULTI_VALUE</flag>" : "") + "</attr>\n";
  }
  return xml + "  </class>\n";
}

std::string objectXml(const std::string& className, const std::string& dn,
                      const std::vector<std::pair<std::string, Values>>& attrs) {
  std::string xml = "  <object class=\"" + className + "\">\n    <dn>" + dn + "</dn>\n";
  for (const auto& [name, values] : attrs) {
    xml += "    <attr><name>" + name + "</name>";
    for (const std::string& value : values) xml += "<value>" + value + "</value>";
    xml += "</attr>\n";
  }
  return xml + "  </object>\n";
}

const std::vector<AttrDef> kFooAttrs = {
    {"settings", "SA_NAME_T"}, {"label", "SA_STRING_T"}, {"counts", "SA_INT32_T", true}, {"obsolete", "SA_INT32_T"}};

// The old model: Foo below Root, with a struct, a child, a class referring
// to Foo instances and a class that the upgrade drops.
std::string oldModel() {
  return e2e::NodeBuilder::immDocument(
      classXml("Root", "rootId", {}) + classXml("Foo", "fooId", kFooAttrs) +
      classXml("FooSettings", "id", {{"mcc", "SA_INT32_T"}}) + classXml("Child", "childId", {{"x", "SA_INT32_T"}}) +
      classXml("Ref", "refId", {{"fooRef", "SA_NAME_T", true}}) + classXml("Gone", "goneId", {}) +
      objectXml("Root", "rootId=1", {}) +
      objectXml("Foo", "fooId=1,rootId=1",
                {{"settings", {"id=settings_0,fooId=1,rootId=1"}},
                 {"label", {"a"}},
                 {"counts", {"3", "1", "2"}},
                 {"obsolete", {"5"}}}) +
      objectXml("Foo", "fooId=2,rootId=1", {{"counts", {"4"}}, {"obsolete", {"6"}}}) +
      objectXml("FooSettings", "id=settings_0,fooId=1,rootId=1", {{"mcc", {"240"}}}) +
      objectXml("Child", "childId=1,fooId=1,rootId=1", {{"x", {"1"}}}) +
      objectXml("Ref", "refId=1,rootId=1", {{"fooRef", {"fooId=2,rootId=1", "childId=1,fooId=1,rootId=1"}}}) +
      objectXml("Gone", "goneId=1,rootId=1", {}));
}

// The new model: Foo is Bar, with `levels` added, `counts` renamed `values`
// and `obsolete` removed; Gone is gone and Fresh is new.
std::string newClasses() {
  return e2e::NodeBuilder::immDocument(classXml("Root", "rootId", {}) +
                     classXml("Bar", "barId",
                              {{"settings", "SA_NAME_T"},
                               {"label", "SA_STRING_T"},
                               {"values", "SA_INT32_T", true},
                               {"levels", "SA_INT32_T", true}}) +
                     classXml("FooSettings", "id", {{"mcc", "SA_INT32_T"}}) +
                     classXml("Child", "childId", {{"x", "SA_INT32_T"}}) +
                     classXml("Ref", "refId", {{"fooRef", "SA_NAME_T", true}}) + classXml("Fresh", "freshId", {}));
}

std::string modificationFile(const std::string& mos) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<modificationFile>\n" + mos + "</modificationFile>\n";
}

std::string mo(const std::string& className, const std::string& action,
               const std::vector<std::pair<const char*, const char*>>& args) {
  std::string xml = "  <Mo name=\"" + className + "\">\n    <MoAction name=\"" + action + "\">\n";
  for (const auto& [name, value] : args)
    xml += "      <Arg name=\"" + std::string(name) + "\" value=\"" + value + "\"/>\n";
  return xml + "    </MoAction>\n  </Mo>\n";
}

// A package and node with the one schema "Lab", upgraded 1_0_0 -> 1_1_0 by
// `modifications`, run through the wrapper.
class LabRun {
 public:
  explicit LabRun(const std::string& modifications) {
    e2e::NodeBuilder node(dir_.path());
    node.addXml("Lab", "1_0_0", "1_1_0", oldModel(), newClasses());
    node.modificationFile("Lab", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml", modificationFile(modifications));
    result_ = e2e::WholeRun(node).run();
  }

  const e2e::RunResult& result() const { return result_; }

 private:
  TempDir dir_;
  e2e::RunResult result_;
};

TEST(ActionsMoTypeAttributeE2eTest, NewModelShowsEveryChange) {
  LabRun lab(mo("Foo", "AddAttributeAction", {{"name", "levels"}, {"type", "SA_INT32_T"}, {"defaultValue", "7|8"}}) +
               mo("Foo", "RemoveAttributeAction", {{"name", "obsolete"}}) +
               mo("Foo", "RenameAttributeAction", {{"name", "counts"}, {"newName", "values"}}) +
               mo("Foo", "RenameMoTypeAction",
                  {{"name", "Foo"},
                   {"newName", "Bar"},
                   {"structAttr1", "settings"},
                   {"structType1", "FooSettings"},
                   {"descendant1", "Child"},
                   {"morefAttr1", "fooRef"},
                   {"referringMoType1", "Ref"}}) +
               mo("Gone", "DeleteMoTypeAction", {}) + mo("Root", "CreateMoTypeAction", {{"moTypeName", "Fresh"}}));
  const e2e::RunResult& run = lab.result();
  ASSERT_EQ(0, run.exitStatus) << run.report << run.rollbackText();

  e2e::ModelObjects model = run.objects("Lab");
  ASSERT_EQ(1u, model.count("barId=1,rootId=1")) << run.model("Lab");
  const e2e::ModelObject& bar = model["barId=1,rootId=1"];
  EXPECT_EQ("Bar", bar.className);
  EXPECT_EQ((std::map<std::string, Values>{{"settings", {"id=settings_0,barId=1,rootId=1"}},
                                           {"label", {"a"}},
                                           {"values", {"3", "1", "2"}},
                                           {"levels", {"7", "8"}}}),
            bar.attrs);
  EXPECT_EQ("Bar", model["barId=2,rootId=1"].className);
  EXPECT_EQ((Values{"4"}), model["barId=2,rootId=1"].attrs["values"]);
  EXPECT_EQ("FooSettings", model["id=settings_0,barId=1,rootId=1"].className);
  EXPECT_EQ("Child", model["childId=1,barId=1,rootId=1"].className);
  EXPECT_EQ((Values{"barId=2,rootId=1", "childId=1,barId=1,rootId=1"}), model["refId=1,rootId=1"].attrs["fooRef"]);
  for (const auto& [dn, object] : model) {
    EXPECT_EQ(std::string::npos, dn.find("fooId=")) << dn;
    EXPECT_NE("Foo", object.className) << dn;
    EXPECT_NE("Gone", object.className) << dn;
  }
  EXPECT_EQ(6u, model.size());
}

struct FailureCase {
  const char* name;
  std::string modifications;
  std::string reason;
};

void PrintTo(const FailureCase& c, std::ostream* out) { *out << c.name; }

class ActionsMoTypeAttributeFailureTest : public testing::TestWithParam<FailureCase> {};

TEST_P(ActionsMoTypeAttributeFailureTest, RollsBackWithTheActionsReason) {
  LabRun lab(GetParam().modifications);
  const e2e::RunResult& run = lab.result();
  EXPECT_EQ(1, run.exitStatus) << run.report;
  EXPECT_NE(std::string::npos, run.rollbackText().find(GetParam().reason)) << run.rollbackText();
  EXPECT_TRUE(run.modelFiles().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Failures, ActionsMoTypeAttributeFailureTest,
    testing::Values(
        FailureCase{"MissingMandatoryArgument",
                    mo("Foo", "AddAttributeAction", {{"name", "levels"}, {"type", "SA_INT32_T"}}),
                    "AddAttributeAction requires args: name, type and defaultValue."},
        FailureCase{"MissingInstanceGroup", mo("Nowhere", "RenameAttributeAction", {{"name", "a"}, {"newName", "b"}}),
                    "Action Failed: renameAttribute: No instance group to operate on. Action arguments: old name = a, "
                    "new name = b"},
        FailureCase{"StructClassRename", mo("FooSettings", "RenameMoTypeAction", {{"newName", "Settings"}}),
                    "RenameMoTypeAction can not be performed on struct MO types"},
        FailureCase{"MissingAttributeOnRename",
                    mo("Foo", "RenameAttributeAction", {{"name", "label"}, {"newName", "tag"}}),
                    "Instance fooId=2,rootId=1 has no attribute label"}),
    [](const testing::TestParamInfo<FailureCase>& info) { return std::string(info.param.name); });

}  // namespace
