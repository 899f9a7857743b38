#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "SimImmNodeTest.h"
#include "safcImmCt.h"

namespace {

using testing::ElementsAre;

// Megabytes of one class: the index keeps them in runs outside memory.
TEST_F(SimImmCtTest, LargeClassesReadBackWhole) {
  const int count = 70000;
  node.write("imm/old/2-many.xml", immXml(filler(2 * count)));
  SafcImmCtInstanceGroupT** groups = nullptr;
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(open(), const_cast<char*>("Empty"), &groups));
  std::vector<std::string> lines = describe(groups);
  ASSERT_EQ(static_cast<size_t>(count), lines.size());
  for (int i = 0; i < count; ++i) ASSERT_EQ("|emptyId:9=" + std::to_string(i), lines[i]);
}

TEST_F(SimImmCtTest, ClassesWithoutObjectsGiveAnEmptyGroupAndUnknownOnesNone) {
  node.write("imm/new/model.xml", immXml(R"(<class name="Fresh"><rdn><name>freshId</name><type>SA_STRING_T</type>
      </rdn></class>)"));
  SafcImmCtHandleT handle = open();
  for (const char* className : {"Empty", "Fresh"}) {
    SafcImmCtInstanceGroupT** groups = nullptr;
    ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>(className), &groups)) << className;
    EXPECT_STREQ(className, groups[0]->className);
    EXPECT_EQ(nullptr, groups[0]->instances[0]);
    EXPECT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(handle, groups));
  }
  SafcImmCtInstanceGroupT** groups = nullptr;
  EXPECT_EQ(SA_AIS_ERR_NOT_EXIST, safcImmCtReadInstances_2(handle, const_cast<char*>("Nowhere"), &groups));
  EXPECT_TRUE(recorded({"safcImmCtReadInstances_2 [Nowhere] error 12", "defined neither"}));
}

// A node with bad files: the call named gets a clear code, and the reason is
// recorded.
TEST_F(SimImmCtTest, BadNodeFilesGiveAClearCodeAndAReason) {
  struct Case {
    const char* name;
    const char* file;
    std::string content;
    const char* call;  // ReadInstances of Top or ReadSchemaVersion of SchemaA
    SaAisErrorT code;
    const char* reason;
  };
  const Case cases[] = {
      {"object of an unknown class", "imm/old/2-more.xml",
       immXml("<object class=\"Ghost\"><dn>ghostId=1</dn></object>"),
       "ReadInstances", SA_AIS_ERR_FAILED_OPERATION, "of undefined class Ghost"},
      {"class defined twice", "imm/old/2-more.xml",
       immXml("<class name=\"Top\"><rdn><name>topId</name><type>SA_STRING_T</type></rdn></class>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "class Top is defined twice"},
      {"malformed XML far down", "imm/old/2-more.xml",
       immXml(filler(70000) + "<object class=\"Top\">\n<dn>topId=2</dn>\n</obj>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "2-more.xml: line 70005: Opening and ending tag mismatch: object line 70003"},
      {"parent name longer than a name record holds", "imm/old/2-more.xml",
       immXml("<object class=\"Top\"><dn>topId=9,p=" + std::string(600, 'y') + "</dn></object>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "is longer than 599"},
      {"malformed versions", "versions", "SchemaA 1_0 2_0_0\n", "ReadSchemaVersion", SA_AIS_ERR_FAILED_OPERATION,
       "versions:1: expected"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TempDir fresh;
    setenv("VOSK_SIM_ROOT", fresh.path().c_str(), 1);
    fresh.write("imm/old/1-model.xml", kOldDump);
    fresh.write("versions", "SchemaA 1_0_0 2_0_0\n");
    fresh.write(c.file, c.content);
    SafcImmCtHandleT handle = open();
    SaAisErrorT rc;
    if (std::string(c.call) == "ReadInstances") {
      SafcImmCtInstanceGroupT** groups = nullptr;
      rc = safcImmCtReadInstances_2(handle, const_cast<char*>("Top"), &groups);
    } else {
      SafcImmCtSchemaVersionT_2 from{}, to{};
      rc = safcImmCtReadSchemaVersion_2(handle, "SchemaA", &from, &to);
    }
    EXPECT_EQ(c.code, rc);
    std::string log = TempDir::read(fresh.path() + "/out/platform-errors.log");
    EXPECT_NE(std::string::npos, log.find(c.call)) << log;
    EXPECT_NE(std::string::npos, log.find("error " + std::to_string(c.code))) << log;
    EXPECT_NE(std::string::npos, log.find(c.reason)) << log;
  }
}

TEST_F(SimImmCtTest, MissingVersionsFileOrRootIsRefusedWithAReason) {
  std::remove((node.path() + "/versions").c_str());
  SafcImmCtSchemaVersionT_2 from{}, to{};
  EXPECT_EQ(SA_AIS_ERR_FAILED_OPERATION, safcImmCtReadSchemaVersion_2(open(), "SchemaA", &from, &to));
  EXPECT_TRUE(recorded({"safcImmCtReadSchemaVersion_2 [SchemaA] error 21", "cannot read"}));

  unsetenv("VOSK_SIM_ROOT");
  SafcImmCtHandleT handle = 0;
  EXPECT_EQ(SA_AIS_ERR_LIBRARY, safcImmCtInitialize_2(&handle, 0));
  EXPECT_EQ(SA_AIS_ERR_LIBRARY, safcImmCtFailUpgrade(0, "no output folder"));
  setenv("VOSK_SIM_ROOT", node.path().c_str(), 1);
  EXPECT_EQ(SA_AIS_ERR_INVALID_PARAM, safcImmCtInitialize_2(&handle, 2));
  EXPECT_EQ(SA_AIS_OK, safcImmCtInitialize_2(&handle, 1));
}

TEST_F(SimImmCtTest, CallsOnUnknownOrFinalizedHandlesAreRefused) {
  SafcImmCtHandleT handle = openSchema("SchemaA");
  ASSERT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  SafcImmCtInstanceGroupT** groups = nullptr;
  char className[] = "Top";
  SaImmClassNameT names[] = {className, nullptr};
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtFinalize(handle));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtReadInstances_2(handle, className, &groups));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtCopyInstances(handle, names));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtFailUpgrade(handle, "late"));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtWaitForClasses(987654, names));
  EXPECT_TRUE(recorded({"safcImmCtFinalize [] error 9", "unknown session handle"}));
  EXPECT_FALSE(TempDir::exists(out("rollback")));
}

}  // namespace
