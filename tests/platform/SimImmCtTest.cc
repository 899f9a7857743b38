#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

#include "SimImmNodeTest.h"
#include "safcImmCt.h"

namespace {

using testing::ElementsAre;

TEST_F(SimImmCtTest, ReadInstancesDeliversTheObjectsOfOneClassInTheRecordLayout) {
  SafcImmCtHandleT handle = open();
  SafcImmCtInstanceGroupT** groups = nullptr;
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>("Top"), &groups));
  ASSERT_NE(nullptr, groups[0]);
  EXPECT_EQ(nullptr, groups[1]);
  EXPECT_STREQ("Top", groups[0]->className);
  EXPECT_EQ(nullptr, groups[0]->instances[0]->parentName);
  EXPECT_THAT(describe(groups),
              ElementsAre("|topId:9=1|i32:1=-5|u32:2=4294967295|i64:3=-9223372036854775808|u64:4=18446744073709551615"
                          "|t:5=1700000000000000000|n:6=x=1,topId=1;y=2|f:7=0.5|d:8=0.1|s:9=a & b|a:10=00ff10"));
  SaAnyT* any = static_cast<SaAnyT*>(groups[0]->instances[0]->attrValues[10]->attrValues[0]);
  ASSERT_EQ(3u, any->bufferSize);
  EXPECT_EQ(0xff, any->bufferAddr[1]);
  EXPECT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(handle, groups));

  ASSERT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, const_cast<char*>("Child"), &groups));
  SaNameT* rdn = static_cast<SaNameT*>(groups[0]->instances[0]->attrValues[0]->attrValues[0]);
  EXPECT_EQ(3, rdn->length);
  EXPECT_THAT(describe(groups), ElementsAre("topId=1|childId:6=a,b|weight:2=3", "topId=1|childId:6=2"));
  EXPECT_EQ(SA_AIS_OK, safcImmCtInstanceGroupsMemoryFree(handle, groups));
  EXPECT_EQ(SA_AIS_ERR_INVALID_PARAM, safcImmCtInstanceGroupsMemoryFree(handle, groups));
  EXPECT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
}

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

TEST_F(SimImmCtTest, ReadSchemaVersionGivesTheListedVersions) {
  SafcImmCtHandleT handle = open();
  SafcImmCtSchemaVersionT_2 from{}, to{};
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadSchemaVersion_2(handle, "SchemaA", &from, &to));
  EXPECT_EQ(1u, from.version);
  EXPECT_EQ(0u, from.correction);
  EXPECT_EQ(2u, to.version);
  EXPECT_EQ(1u, to.release);
  EXPECT_EQ(3u, to.correction);
  EXPECT_EQ(SA_AIS_ERR_BAD_OPERATION, safcImmCtReadSchemaVersion_2(handle, "SchemaB", &from, &to));

  SafcImmCtHandleT other = open();
  EXPECT_EQ(SA_AIS_ERR_EXIST, safcImmCtReadSchemaVersion_2(other, "SchemaA", &from, &to));
  SafcImmCtSchemaVersionT oldFrom{}, oldTo{};
  ASSERT_EQ(SA_AIS_OK, safcImmCtReadSchemaVersion(other, "SchemaB", &oldFrom, &oldTo));
  EXPECT_EQ(4u, oldTo.version);
  EXPECT_EQ(SA_AIS_ERR_NOT_EXIST, safcImmCtReadSchemaVersion_2(open(), "SchemaC", &from, &to));
  EXPECT_TRUE(recorded({"safcImmCtReadSchemaVersion_2 [SchemaC] error 12", "not listed"}));
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
      {"malformed XML", "imm/old/1-model.xml", "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">"
       "<class name=\"Top\"><rdn>", "ReadInstances", SA_AIS_ERR_FAILED_OPERATION, "1-model.xml: line 1"},
      {"not IMM XML", "imm/old/1-model.xml", "<model/>", "ReadInstances", SA_AIS_ERR_FAILED_OPERATION,
       "root element is not IMM-contents"},
      {"object of an unknown class", "imm/old/2-more.xml",
       immXml("<object class=\"Ghost\"><dn>ghostId=1</dn></object>"),
       "ReadInstances", SA_AIS_ERR_FAILED_OPERATION, "of undefined class Ghost"},
      {"unknown type", "imm/old/2-more.xml",
       immXml("<class name=\"Odd\"><rdn><name>oddId</name><type>SA_INT8_T</type></rdn></class>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "unknown type \"SA_INT8_T\""},
      {"class defined twice", "imm/old/2-more.xml",
       immXml("<class name=\"Top\"><rdn><name>topId</name><type>SA_STRING_T</type></rdn></class>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "class Top is defined twice"},
      {"malformed XML far down", "imm/old/2-more.xml",
       immXml(filler(70000) + "<object class=\"Top\">\n<dn>topId=2</dn>\n</obj>"), "ReadInstances",
       SA_AIS_ERR_FAILED_OPERATION, "2-more.xml: line 70005: Opening and ending tag mismatch: object line 70003"},
      {"object without dn far down", "imm/old/2-more.xml",
       immXml(filler(70000) + "<object class=\"Top\">\n<attr><name>i32</name><value>1</value></attr>\n</object>"),
       "ReadInstances", SA_AIS_ERR_FAILED_OPERATION, "2-more.xml: line 70003: object of class Top without dn"},
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

TEST_F(SimImmCtTest, WaitForClassesKnowsTheClassesOfTheModels) {
  SafcImmCtHandleT handle = open();
  char top[] = "Top", empty[] = "Empty", ghost[] = "Ghost";
  SaImmClassNameT known[] = {top, empty, nullptr};
  SaImmClassNameT unknown[] = {top, ghost, nullptr};
  EXPECT_EQ(SA_AIS_OK, safcImmCtWaitForClasses(handle, known));
  EXPECT_EQ(SA_AIS_ERR_NOT_EXIST, safcImmCtWaitForClasses(handle, unknown));
  EXPECT_EQ(SA_AIS_ERR_INVALID_PARAM, safcImmCtWaitForClasses(handle, nullptr));
}

// The calls the upgrader makes are failed through whole runs in FaultMatrixTest.
TEST_F(SimImmCtTest, FaultsReplaceEveryCall) {
  SafcImmCtHandleT handle = openSchema("SchemaA");
  SafcImmCtInstanceGroupT** groups = nullptr;
  char top[] = "Top";
  SaImmClassNameT names[] = {top, nullptr};
  GroupBuilder written("Top");
  written.object(nullptr).attr("topId", SA_IMM_ATTR_SASTRINGT, {"9"});
  struct Case {
    const char* items;
    const char* call;
    SaAisErrorT code;
    std::function<SaAisErrorT()> run;
  };
  const Case cases[] = {
      {"Initialize=31", "safcImmCtInitialize_2 []", SA_AIS_ERR_UNAVAILABLE, [&] {
         SafcImmCtHandleT h = 0;
         return safcImmCtInitialize_2(&h, 0);
       }},
      {"ReadInstances@Top=9", "safcImmCtReadInstances_2 [Top]", SA_AIS_ERR_BAD_HANDLE,
       [&] { return safcImmCtReadInstances_2(handle, top, &groups); }},
      {"WriteRtInstances=21", "safcImmCtWriteRtInstances [SchemaA]", SA_AIS_ERR_FAILED_OPERATION,
       [&] { return safcImmCtWriteRtInstances(handle, top, written.groups()); }},
      {"CopyRtInstances=5", "safcImmCtCopyRtInstances [SchemaA]", SA_AIS_ERR_TIMEOUT,
       [&] { return safcImmCtCopyRtInstances(handle, top, names); }},
      {"WaitForClasses=5", "safcImmCtWaitForClasses [SchemaA]", SA_AIS_ERR_TIMEOUT,
       [&] { return safcImmCtWaitForClasses(handle, names); }},
      {"FailUpgrade=2", "safcImmCtFailUpgrade []", SA_AIS_ERR_LIBRARY,
       [&] { return safcImmCtFailUpgrade(0, "without a session"); }},
      {"Finalize@SchemaA=2", "safcImmCtFinalize [SchemaA]", SA_AIS_ERR_LIBRARY,
       [&] { return safcImmCtFinalize(handle); }},
  };
  for (const Case& c : cases) {
    faults(c.items);
    EXPECT_EQ(c.code, c.run()) << c.items;
    EXPECT_TRUE(recorded({c.call + std::string(" error ") + std::to_string(c.code), "injected by VOSK_SIM_FAULTS"}))
        << c.items;
  }
  // None of them did its work: no rollback, and the session is still open.
  EXPECT_FALSE(TempDir::exists(out("rollback")));
  faults("ReadInstances@Child=9x1");
  EXPECT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, top, &groups));
  char child[] = "Child";
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, safcImmCtReadInstances_2(handle, child, &groups));
  EXPECT_EQ(SA_AIS_OK, safcImmCtReadInstances_2(handle, child, &groups));
  EXPECT_EQ(SA_AIS_OK, safcImmCtFinalize(handle));
  EXPECT_TRUE(TempDir::exists(out("model/SchemaA.xml")));
}

}  // namespace
