#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>

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

  // The records of `className` as the session reads them (freed with the session's other records).
  SafcImmCtInstanceGroupT** read(SafcImmCtHandleT handle, const char* className) {
    SafcImmCtInstanceGroupT** groups = nullptr;
    EXPECT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>(className), &groups));
    return groups;
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

// The attribute `name` of the first object of `group`.
SaImmAttrValuesT_2& attrOf(SafcImmCtInstanceGroupT& group, const char* name) {
  SaImmAttrValuesT_2** attr = group.instances[0]->attrValues;
  while (std::string((*attr)->attrName) != name) ++attr;
  return **attr;
}

void setType(SaImmAttrValuesT_2& attr, SaUint32T type) { std::memcpy(&attr.attrValueType, &type, sizeof type); }

// With a new model the written instances must fit it: records read from the
// old model, changed as the case says, are written back.
TEST_F(SimImmModelOutputTest, WrittenInstancesAreCheckedAgainstTheNewModel) {
  node.write("imm/new/model.xml", immXml(R"(<class name="Top"><rdn><name>topId</name><type>SA_STRING_T</type></rdn>
      <attr><name>i32</name><type>SA_INT32_T</type></attr><attr><name>u32</name><type>SA_UINT32_T</type></attr>
      <attr><name>s</name><type>SA_STRING_T</type></attr><attr><name>a</name><type>SA_ANY_T</type></attr></class>)"));
  using Group = SafcImmCtInstanceGroupT;
  struct Case {
    const char* className;
    std::function<void(Group&)> change;
    const char* reason;  // empty: written
  };
  const Case cases[] = {
      {"Top", [](Group&) {}, ""},
      {"Child", [](Group&) {}, "class Child is not defined in the new model"},
      {"Top", [](Group& g) { attrOf(g, "u32").attrName = const_cast<char*>("color"); },
       "attribute color is not defined in class Top of the new model"},
      {"Top", [](Group& g) { setType(attrOf(g, "i32"), SA_IMM_ATTR_SAUINT32T); },
       "attribute i32 has type SA_UINT32_T, the new model says SA_INT32_T"},
      {"Top", [](Group& g) { ++g.instances[0]->attrValues; }, "no naming attribute topId"},
      {"Top", [](Group& g) { attrOf(g, "topId").attrValuesNumber = 0; }, "naming attribute topId has no value"},
      {"Top", [](Group& g) { setType(attrOf(g, "i32"), 42); }, "attribute i32 has unknown value type 42"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.reason);
    SafcImmCtHandleT handle = open();
    SafcImmCtInstanceGroupT** groups = read(handle, c.className);
    c.change(*groups[0]);
    EXPECT_EQ(c.reason[0] == '\0' ? SA_AIS_OK : SA_AIS_ERR_INVALID_PARAM, safcImmCtWriteInstances(handle, groups));
    if (c.reason[0] != '\0') {
      EXPECT_TRUE(recorded({"safcImmCtWriteInstances [] error 7", c.reason}));
    }
  }
}

TEST_F(SimImmModelOutputTest, AnObjectWrittenTwiceFailsTheWrite) {
  SafcImmCtHandleT handle = open();
  SafcImmCtInstanceGroupT** groups = read(handle, "Child");
  groups[0]->instances[1] = groups[0]->instances[0];
  EXPECT_EQ(SA_AIS_ERR_INVALID_PARAM, safcImmCtWriteInstances(handle, groups));
  EXPECT_TRUE(recorded({"safcImmCtWriteInstances [] error 7", "class Child: object childId=a\\,b,topId=1 is written twice"}));
}

// Without a new model the naming attribute is the old class's or, for a
// class the old model lacks, the class name's with "Id".
TEST_F(SimImmModelOutputTest, WithoutANewModelTheNamingAttributeFollowsTheOldDefinitionOrTheClassName) {
  SafcImmCtHandleT handle = openSchema("SchemaA");
  SafcImmCtInstanceGroupT** child = read(handle, "Child");
  std::swap(child[0]->instances[0]->attrValues[0], child[0]->instances[0]->attrValues[1]);  // weight first
  EXPECT_EQ(SA_AIS_OK, safcImmCtWriteInstances(handle, child));
  const struct {
    const char* className;
    const char* rdn;
    SaAisErrorT code;
  } renames[] = {{"NewThing", "newThingId", SA_AIS_OK}, {"Nameless", "value", SA_AIS_ERR_INVALID_PARAM}};
  for (const auto& r : renames) {
    SafcImmCtInstanceGroupT** renamed = read(handle, "Top");
    renamed[0]->className = const_cast<char*>(r.className);
    attrOf(*renamed[0], "topId").attrName = const_cast<char*>(r.rdn);
    EXPECT_EQ(r.code, safcImmCtWriteRtInstances(handle, const_cast<char*>("impl"), renamed)) << r.className;
  }
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  std::vector<SimImmObject> objects = objectsIn(out("model/SchemaA.xml"));
  ASSERT_EQ(3u, objects.size());
  EXPECT_EQ("childId=a\\,b,topId=1", objects[0].dn);
  EXPECT_EQ("newThingId=1", objects[2].dn);
}

}  // namespace
