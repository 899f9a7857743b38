#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "SimImmNodeTest.h"
#include "safcImmCt.h"

namespace {

using testing::ElementsAre;

bool sameObjects(const std::vector<SimImmObject>& a, const std::vector<SimImmObject>& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i].className != b[i].className || a[i].dn != b[i].dn || a[i].attrs.size() != b[i].attrs.size()) return false;
    for (size_t j = 0; j < a[i].attrs.size(); ++j) {
      if (a[i].attrs[j].name != b[i].attrs[j].name || a[i].attrs[j].values != b[i].attrs[j].values) return false;
    }
  }
  return true;
}

class SimImmModelOutputTest : public SimImmCtTest {
 public:
  // Reads `className` in the session and writes the records back unchanged.
  void readAndWriteBack(SafcImmCtHandleT handle, const char* className) {
    SafcImmCtInstanceGroupT** groups = nullptr;
    ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>(className), &groups));
    ASSERT_EQ(SA_AIS_OK, safcImmCtWriteInstances(handle, groups));
    ASSERT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(handle, groups));
  }

  void copy(SafcImmCtHandleT handle, std::vector<std::string> classNames) {
    std::vector<SaImmClassNameT> names;
    for (std::string& name : classNames) names.push_back(name.data());
    names.push_back(nullptr);
    ASSERT_EQ(SA_AIS_OK, safcImmCtCopyInstances(handle, names.data()));
  }

  std::vector<SimImmObject> oldObjects() { return objectsIn(node.path() + "/imm/old/1-model.xml"); }
};

// Strings that XML cannot carry as text (control characters, bytes that are
// no UTF-8) go to the model in base64, written and copied alike, and read
// back as they were; so do values that the dump gave in base64.
TEST_F(SimImmModelOutputTest, ValuesThatXmlCannotCarryAsTextReadBackTheSame) {
  const std::string base64 = "<value xmlns:x=\"http://www.w3.org/2001/XMLSchema-instance\" x:type=\"xs:base64Binary\">";
  node.write("imm/old/2-binary.xml",
             immXml("<object class=\"Top\"><dn>topId=bin</dn><attr><name>s</name>" + base64 + "AWJlbGw=</value>" +
                    base64 + "//5h</value><value>plain</value></attr><attr><name>a</name>" + base64 +
                    "AAEC</value></attr></object>"));
  SafcImmCtHandleT written = openSchema("SchemaA");
  SafcImmCtInstanceGroupT** groups = nullptr;
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(written, const_cast<char*>("Top"), &groups));
  const std::vector<std::string> original = describe(groups);
  ASSERT_EQ(SA_AIS_OK, safcImmCtWriteInstances(written, groups));
  ASSERT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(written, groups));
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(written));
  SafcImmCtHandleT copied = openSchema("SchemaB");
  copy(copied, {"Top"});
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(copied));
  ASSERT_NE(std::string::npos, original.back().find("|s:9=\x01" "bell;\xff\xfe" "a;plain|a:10=000102"));

  for (const char* model : {"model/SchemaA.xml", "model/SchemaB.xml"}) {
    TempDir again;
    again.write("imm/old/model.xml", TempDir::read(out(model)));
    setenv("VOSK_SIM_ROOT", again.path().c_str(), 1);
    SafcImmCtHandleT handle = open();
    ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>("Top"), &groups)) << model;
    EXPECT_EQ(original, describe(groups)) << model;
    ASSERT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(handle, groups));
  }
}

// Values over libxml2's default limit of 10 MB a text.
TEST_F(SimImmModelOutputTest, HugeValuesAreReadWrittenAndCopiedWhole) {
  const std::string text(12 << 20, 's');
  const std::string hex(12 << 20, 'e');
  node.write("imm/old/2-huge.xml", immXml("<object class=\"Top\"><dn>topId=huge</dn><attr><name>s</name><value>" +
                                          text + "</value></attr><attr><name>a</name><value>" + hex +
                                          "</value></attr></object>"));
  SafcImmCtHandleT written = openSchema("SchemaA");
  readAndWriteBack(written, "Top");
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(written));
  SafcImmCtHandleT copied = openSchema("SchemaB");
  copy(copied, {"Top"});
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(copied));
  std::vector<SimImmObject> expected = oldObjects();
  expected.resize(1);  // Top only
  expected.push_back(objectsIn(node.path() + "/imm/old/2-huge.xml").at(0));
  ASSERT_EQ(text, expected[1].attrs.at(0).values.at(0).text);
  EXPECT_TRUE(sameObjects(expected, objectsIn(out("model/SchemaA.xml"))));
  EXPECT_TRUE(sameObjects(expected, objectsIn(out("model/SchemaB.xml"))));
}

// A bad object fails a copy, at finalize, as it fails a read; here far down
// a long file.
TEST_F(SimImmModelOutputTest, ObjectsThatDoNotFitTheirClassFailBothReadAndCopy) {
  struct Case {
    const char* attrs;
    std::string dn;
    std::string problem;
  };
  const Case cases[] = {
      {"", "topId", "malformed dn"},
      {"<attr><name>color</name><value>red</value></attr>", "topId=2", "attribute color is not defined in class Top"},
      {"<attr><name>topId</name><value>3</value></attr>", "topId=2",
       "attribute topId is the naming attribute, carried by the dn only"},
      {"<attr><name>i32</name><value>12x</value></attr>", "topId=2", "attribute i32: value \"12x\" is not a SA_INT32_T"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.problem);
    TempDir fresh;
    setenv("VOSK_SIM_ROOT", fresh.path().c_str(), 1);
    fresh.write("imm/old/1-model.xml", kOldDump);
    fresh.write("versions", "SchemaA 1_0_0 2_0_0\n");
    fresh.write("imm/old/2-more.xml", immXml(filler(70000) + "<object class=\"Top\">\n<dn>" + c.dn + "</dn>\n" +
                                             c.attrs + "\n</object>"));
    const std::string object = "object " + c.dn + " (line 70003): " + c.problem;
    SafcImmCtHandleT handle = openSchema("SchemaA");
    SafcImmCtInstanceGroupT** groups = nullptr;
    EXPECT_EQ(SA_AIS_ERR_FAILED_OPERATION, safcImmCtReadInstances_2(handle, const_cast<char*>("Top"), &groups));
    copy(handle, {"Top"});
    EXPECT_EQ(SA_AIS_ERR_FAILED_OPERATION, safcImmCtFinalize(handle));
    std::vector<std::string> errors = TempDir::lines(fresh.path() + "/out/platform-errors.log");
    ASSERT_EQ(2u, errors.size());
    EXPECT_EQ("safcImmCtReadInstances_2 [Top] error 21: old model, class Top: " + object, errors[0]);
    EXPECT_EQ("safcImmCtFinalize [SchemaA] error 21: " + fresh.path() + "/imm/old/2-more.xml: class Top: " + object,
              errors[1]);
    std::vector<std::string> written;
    for (const auto& entry : std::filesystem::directory_iterator(fresh.path() + "/out")) {
      written.push_back(entry.path().filename());
    }
    EXPECT_THAT(written, ElementsAre("platform-errors.log")) << "neither a model nor its temporary file";
  }
}

TEST_F(SimImmModelOutputTest, ClassesTheNewDefinitionsDropAreNotCopied) {
  node.write("imm/new/model.xml", immXml(R"(<class name="Top"><rdn><name>topId</name><type>SA_STRING_T</type></rdn>
      </class>)"));
  SafcImmCtHandleT handle = openSchema("SchemaA");
  copy(handle, {"Top", "Child"});
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  std::vector<SimImmObject> copied = objectsIn(out("model/SchemaA.xml"));
  ASSERT_FALSE(copied.empty());
  for (const SimImmObject& object : copied) EXPECT_EQ("Top", object.className) << object.dn;
}

TEST_F(SimImmModelOutputTest, WritingOrCopyingAClassTwiceInASessionIsRefused) {
  SafcImmCtHandleT handle = openSchema("SchemaA");
  readAndWriteBack(handle, "Top");
  char top[] = "Top";
  SaImmClassNameT names[] = {top, nullptr};
  EXPECT_EQ(SA_AIS_ERR_EXIST, safcImmCtCopyInstances(handle, names));
  EXPECT_TRUE(recorded({"safcImmCtCopyInstances [SchemaA] error 14", "class Top is given twice"}));
}

TEST_F(SimImmModelOutputTest, ASessionWithAModelButNoSchemaCannotFinalize) {
  SafcImmCtHandleT empty = open();
  EXPECT_EQ(SA_AIS_OK, safcImmCtFinalize(empty));
  SafcImmCtHandleT handle = open();
  readAndWriteBack(handle, "Top");
  EXPECT_EQ(SA_AIS_ERR_BAD_OPERATION, safcImmCtFinalize(handle));
  EXPECT_TRUE(recorded({"safcImmCtFinalize [] error 20", "read the schema version first"}));
  SafcImmCtSchemaVersionT_2 from{}, to{};
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadSchemaVersion_2(handle, "SchemaB", &from, &to));
  EXPECT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  EXPECT_EQ(1u, objectsIn(out("model/SchemaB.xml")).size());
}

// With a new model the written instances must fit it.
TEST_F(SimImmModelOutputTest, WrittenInstancesAreCheckedAgainstTheNewModel) {
  node.write("imm/new/model.xml", immXml(R"(<class name="Top"><rdn><name>topId</name><type>SA_STRING_T</type></rdn>
      <attr><name>i32</name><type>SA_INT32_T</type></attr></class>)"));
  struct Case {
    const char* name;
    std::function<void(GroupBuilder&)> build;
    const char* className;
    SaAisErrorT code;
    const char* reason;
  };
  const Case cases[] = {
      {"fits",
       [](GroupBuilder& g) {
         g.attr("topId", SA_IMM_ATTR_SASTRINGT, {"1"}).attr("i32", SA_IMM_ATTR_SAINT32T, {});
       },
       "Top", SA_AIS_OK, ""},
      {"unknown class", [](GroupBuilder& g) { g.attr("topId", SA_IMM_ATTR_SASTRINGT, {"1"}); }, "Child",
       SA_AIS_ERR_INVALID_PARAM, "class Child is not defined in the new model"},
      {"unknown attribute",
       [](GroupBuilder& g) { g.attr("topId", SA_IMM_ATTR_SASTRINGT, {"1"}).attr("u32", SA_IMM_ATTR_SAUINT32T, {"1"}); },
       "Top", SA_AIS_ERR_INVALID_PARAM, "attribute u32 is not defined in class Top of the new model"},
      {"wrong type",
       [](GroupBuilder& g) { g.attr("topId", SA_IMM_ATTR_SASTRINGT, {"1"}).attr("i32", SA_IMM_ATTR_SAINT64T, {"1"}); },
       "Top", SA_AIS_ERR_INVALID_PARAM, "attribute i32 has type SA_INT64_T, the new model says SA_INT32_T"},
      {"no naming attribute", [](GroupBuilder& g) { g.attr("i32", SA_IMM_ATTR_SAINT32T, {"1"}); }, "Top",
       SA_AIS_ERR_INVALID_PARAM, "no naming attribute topId"},
      {"naming attribute without value", [](GroupBuilder& g) { g.attr("topId", SA_IMM_ATTR_SASTRINGT, {}); }, "Top",
       SA_AIS_ERR_INVALID_PARAM, "naming attribute topId has no value"},
      {"unknown value type", [](GroupBuilder& g) { g.attr("topId", 42, {"1"}); }, "Top",
       SA_AIS_ERR_INVALID_PARAM, "unknown value type 42"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SafcImmCtHandleT handle = open();
    GroupBuilder group(c.className);
    group.object("root=1");
    c.build(group);
    EXPECT_EQ(c.code, safcImmCtWriteInstances(handle, group.groups()));
    if (c.code != SA_AIS_OK) {
      EXPECT_TRUE(recorded({"safcImmCtWriteInstances [] error 7", c.reason}));
    }
  }
}

TEST_F(SimImmModelOutputTest, WithoutANewModelTheNamingAttributeFollowsTheOldDefinitionOrTheClassName) {
  SafcImmCtHandleT handle = openSchema("SchemaA");
  GroupBuilder known("Child");  // old model: childId, a name
  known.object("topId=1").attr("weight", SA_IMM_ATTR_SAUINT32T, {"4"}).attr("childId", SA_IMM_ATTR_SANAMET, {"x,y"});
  GroupBuilder unknown("NewThing");
  unknown.object(nullptr).attr("newThingId", SA_IMM_ATTR_SASTRINGT, {"1"});
  GroupBuilder unnamed("Nameless");
  unnamed.object(nullptr).attr("value", SA_IMM_ATTR_SASTRINGT, {"1"});
  EXPECT_EQ(SA_AIS_OK, safcImmCtWriteInstances(handle, known.groups()));
  EXPECT_EQ(SA_AIS_OK, safcImmCtWriteRtInstances(handle, const_cast<char*>("impl"), unknown.groups()));
  EXPECT_EQ(SA_AIS_ERR_INVALID_PARAM, safcImmCtWriteInstances(handle, unnamed.groups()));
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  std::vector<SimImmObject> objects = objectsIn(out("model/SchemaA.xml"));
  ASSERT_EQ(2u, objects.size());
  EXPECT_EQ("childId=x\\,y,topId=1", objects[0].dn);
  EXPECT_EQ("newThingId=1", objects[1].dn);
}

}  // namespace
