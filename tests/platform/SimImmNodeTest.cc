#include "SimImmNodeTest.h"

#include <cstdlib>

#include "SimFaults.h"
#include "SimImmDumpReader.h"
#include "SimImmValueCodec.h"

const char kOldDump[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<imm:IMM-contents xmlns:imm="http://www.saforum.org/IMMSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
  <class name="Top">
    <category>SA_CONFIG</category>
    <rdn><name>topId</name><type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_INITIALIZED</flag></rdn>
    <attr><name>i32</name><type>SA_INT32_T</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag>
      <default-value>7</default-value></attr>
    <attr><name>u32</name><type>SA_UINT32_T</type><category>SA_CONFIG</category></attr>
    <attr><name>s</name><type>SA_STRING_T</type><category>SA_CONFIG</category></attr>
    <attr><name>a</name><type>SA_ANY_T</type><category>SA_CONFIG</category></attr>
  </class>
  <class name="Child">
    <category>SA_CONFIG</category>
    <rdn><name>childId</name><type>SA_NAME_T</type><category>SA_CONFIG</category></rdn>
    <attr><name>weight</name><type>SA_UINT32_T</type><category>SA_CONFIG</category></attr>
  </class>
  <class name="Empty">
    <category>SA_CONFIG</category>
    <rdn><name>emptyId</name><type>SA_STRING_T</type><category>SA_CONFIG</category></rdn>
  </class>
  <object class="Top">
    <dn>topId=1</dn>
    <attr><name>i32</name><value>-5</value></attr>
    <attr><name>u32</name><value>4294967295</value></attr>
    <attr><name>s</name><value>a &amp; b</value></attr>
    <attr><name>a</name><value>00ff10</value></attr>
  </object>
  <object class="Child">
    <dn>childId=a\,b,topId=1</dn>
    <attr><name>weight</name><value>3</value></attr>
  </object>
  <object class="Child">
    <dn>childId=2,topId=1</dn>
  </object>
</imm:IMM-contents>
)";

std::string immXml(const std::string& body) {
  return "<?xml version=\"1.0\"?>\n<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n" + body +
         "\n</imm:IMM-contents>\n";
}

std::string filler(int lines) {
  std::string text;
  for (int i = 0; i < lines / 2; ++i) text += "  <object class=\"Empty\">\n    <dn>emptyId=" + std::to_string(i) + "</dn></object>\n";
  return text;
}

std::vector<std::string> describe(SafcImmCtInstanceGroupT** groups) {
  std::vector<std::string> lines;
  for (SafcImmCtInstanceT** instance = groups[0]->instances; *instance != nullptr; ++instance) {
    std::string line;
    if ((*instance)->parentName != nullptr) {
      std::string why;
      SimImmValueCodec::format(SA_IMM_ATTR_SANAMET, (*instance)->parentName, &line, &why);
    }
    for (SaImmAttrValuesT_2** attr = (*instance)->attrValues; *attr != nullptr; ++attr) {
      line += std::string("|") + (*attr)->attrName + ":" + std::to_string((*attr)->attrValueType) + "=";
      for (SaUint32T i = 0; i < (*attr)->attrValuesNumber; ++i) {
        std::string text, why;
        EXPECT_TRUE(SimImmValueCodec::format((*attr)->attrValueType, (*attr)->attrValues[i], &text, &why));
        line += (i > 0 ? ";" : "") + text;
      }
      EXPECT_EQ(nullptr, (*attr)->attrValues[(*attr)->attrValuesNumber]);
    }
    lines.push_back(line);
  }
  return lines;
}

std::vector<SimImmObject> objectsIn(const std::string& path) {
  std::vector<SimImmObject> objects;
  SimImmDumpReader::Handler handler;
  handler.onObject = [&](SimImmObject&& object) {
    objects.push_back(std::move(object));
    return true;
  };
  SimImmDumpReader reader;
  EXPECT_TRUE(reader.read(path, handler)) << reader.error();
  return objects;
}

// Faults are injected by the whole runs (FaultMatrixTest); these tests run without.
static void clearFaults() {
  unsetenv("VOSK_SIM_FAULTS");
  SimFaults::reload();
}

void SimImmCtTest::SetUp() {
  setenv("VOSK_SIM_ROOT", node.path().c_str(), 1);
  unsetenv("VOSK_SIM_OUT");
  clearFaults();
  node.write("imm/old/1-model.xml", kOldDump);
  node.write("versions", "# schema from to\nSchemaA 1_0_0 2_1_3\nSchemaB 4_0_0 4_0_0  # unchanged\n");
}

void SimImmCtTest::TearDown() {
  unsetenv("VOSK_SIM_ROOT");
  unsetenv("VOSK_SIM_OUT");
  clearFaults();
}

SafcImmCtHandleT SimImmCtTest::open() {
  SafcImmCtHandleT handle = 0;
  EXPECT_EQ(SA_AIS_OK, safcImmCtInitialize_2(&handle, 0));
  return handle;
}

SafcImmCtHandleT SimImmCtTest::openSchema(const char* schema) {
  SafcImmCtHandleT handle = open();
  SafcImmCtSchemaVersionT_2 from{}, to{};
  EXPECT_EQ(SA_AIS_OK, safcImmCtReadSchemaVersion_2(handle, schema, &from, &to));
  return handle;
}

bool SimImmCtTest::recorded(const std::vector<std::string>& parts) const {
  for (const std::string& line : errors()) {
    bool all = true;
    for (const std::string& part : parts) all = all && line.find(part) != std::string::npos;
    if (all) return true;
  }
  return false;
}
