#include "client/UpgradeHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "FakeClock.h"
#include "LogRecorder.h"
#include "MockSafcImmCtWrapper.h"
#include "TempDir.h"
#include "common/MessageFormatter.h"
#include "icti/IctiHandler.h"
#include "xml/XmlHandler.h"

using testing::_;
using testing::DoAll;
using testing::Invoke;
using testing::NiceMock;
using testing::Return;
using testing::SetArgPointee;

namespace {

const char* const kClasses = R"(<?xml version="1.0"?>
<imm:IMM-contents xmlns:imm="http://www.saforum.org/IMMSchema">
  <class name="ManagedElement">
    <category>SA_CONFIG</category>
    <rdn><name>managedElementId</name><type>SA_STRING_T</type><category>SA_CONFIG</category></rdn>
  </class>
</imm:IMM-contents>
)";

const char* const kEmptyModification = "<modifications/>\n";

class UpgradeHandlerTest : public testing::Test {
 protected:
  void SetUp() override {
    setenv("RESTART_TYPE", "UPGRADE", 1);
    unsetenv("RESTART_TYPE_3");
    classFile = dir.write("share/imm/RadioNode_imm_classes.xml", kClasses);
    ON_CALL(wrapper, initialize(_, _)).WillByDefault(Return(SA_AIS_OK));
    versions(1, 0, 0, 2, 0, 0);
    ON_CALL(wrapper, failUpgrade(_, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, const char* text) {
      std::string reason(text);
      failures.push_back(reason.substr(reason.find(". ") + 2));
      return SA_AIS_OK;
    }));
    ON_CALL(wrapper, finalize(_)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, copyInstances(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, writeInstances(_, _)).WillByDefault(Return(SA_AIS_OK));
  }
  void TearDown() override {
    unsetenv("RESTART_TYPE");
    unsetenv("RESTART_TYPE_3");
    MessageFormatter::setPrefix(nullptr);
  }

  void versions(unsigned a, unsigned b, unsigned c, unsigned x, unsigned y, unsigned z) {
    ON_CALL(wrapper, readSchemaVersion(_, _, _, _))
        .WillByDefault(DoAll(SetArgPointee<2>(SafcImmCtSchemaVersionT_2{a, b, c}),
                             SetArgPointee<3>(SafcImmCtSchemaVersionT_2{x, y, z}), Return(SA_AIS_OK)));
  }

  std::string modificationFile(const std::string& from, const std::string& to, const char* content) {
    return dir.write("lm/modification_" + from + "_to_" + to + ".xml", content);
  }

  bool run(const std::vector<std::string>& files) {
    UpgradeHandler driver("RadioNode", classFile, files, "", {}, &handler, &parser, clock);
    return driver.upgrade();
  }

  TempDir dir;
  std::string classFile;
  NiceMock<MockSafcImmCtWrapper> wrapper;
  FakeClock clock;
  IctiHandler handler{wrapper, clock, "RadioNode", ""};
  XmlHandler parser{&handler};
  std::vector<std::string> failures;
};

TEST_F(UpgradeHandlerTest, OnlyAnUpgradeRestartUpgrades) {
  struct Case {
    const char* restartType;
    const char* restartType3;
    bool upgrades;
  };
  const Case cases[] = {{"UPGRADE", nullptr, true},       {"UPGRADE", "COLD", true},
                        {nullptr, "DYNAMIC_UPGRADE", true}, {"COLD", "DYNAMIC_UPGRADE", true},
                        {"COLD", nullptr, false},          {nullptr, nullptr, false},
                        {"upgrade", "dynamic_upgrade", false}};
  for (const Case& c : cases) {
    c.restartType ? setenv("RESTART_TYPE", c.restartType, 1) : unsetenv("RESTART_TYPE");
    c.restartType3 ? setenv("RESTART_TYPE_3", c.restartType3, 1) : unsetenv("RESTART_TYPE_3");
    EXPECT_EQ(c.upgrades, UpgradeHandler::isUpgradeRestart()) << c.restartType << " " << c.restartType3;
  }
  EXPECT_CALL(wrapper, initialize(_, _)).Times(0);
  EXPECT_TRUE(run({}));
  EXPECT_TRUE(LogRecorder::installed().contains("RadioNode: Non-upgrade restart, nothing to do."));
}

TEST_F(UpgradeHandlerTest, AConversionRunsThePathAndWritesCopiesAndFinalizes) {
  std::string first = modificationFile("1_0_0", "1_1_0", kEmptyModification);
  std::string second = modificationFile("1_1_0", "2_0_0", kEmptyModification);
  EXPECT_CALL(wrapper, copyInstances(_, _)).Times(1);
  EXPECT_CALL(wrapper, finalize(_)).Times(1);
  EXPECT_TRUE(run({second, first}));
  EXPECT_EQ(2, UpgType.load());
  EXPECT_TRUE(failures.empty());
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RadioNode: Upgrading from (ver_rel_corr): 1_0_0 to 2_0_0"));
  EXPECT_TRUE(log.contains("RadioNode: Conversion path size: 2 modification files"));
  EXPECT_TRUE(log.contains("RadioNode: Processing of modification file " + first + " was a SUCCESS"));
  EXPECT_TRUE(log.contains("RadioNode: Successfully finalized ICTI write. Upgrade complete."));
  EXPECT_TRUE(log.contains(
      "RadioNode: Upgrade done in 0 ms (icti init took 0 ms, actions took 0 ms, finalize took 0 ms, UpgType=2 )"));
}

TEST_F(UpgradeHandlerTest, TheKindOfUpgradeFollowsTheVersions) {
  struct Case {
    const char* name;
    unsigned from[3];
    bool creatingFile;
    int upgradeType;
    int writes;
    int copies;
  };
  const Case cases[] = {{"same versions", {2, 0, 0}, false, 0, 0, 0},
                        {"new schema", {0, 0, 0}, false, 1, 1, 0},
                        {"new schema with a creating file", {0, 0, 0}, true, 2, 0, 1}};
  for (const Case& c : cases) {
    NiceMock<MockSafcImmCtWrapper> tool;
    ON_CALL(tool, initialize(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(tool, readSchemaVersion(_, _, _, _))
        .WillByDefault(DoAll(SetArgPointee<2>(SafcImmCtSchemaVersionT_2{c.from[0], c.from[1], c.from[2]}),
                             SetArgPointee<3>(SafcImmCtSchemaVersionT_2{2, 0, 0}), Return(SA_AIS_OK)));
    EXPECT_CALL(tool, writeInstances(_, _)).Times(c.writes).WillRepeatedly(Return(SA_AIS_OK));
    EXPECT_CALL(tool, copyInstances(_, _)).Times(c.copies).WillRepeatedly(Return(SA_AIS_OK));
    EXPECT_CALL(tool, finalize(_)).WillOnce(Return(SA_AIS_OK));
    IctiHandler icti(tool, clock, "RadioNode", "");
    XmlHandler xml(&icti);
    std::vector<std::string> files;
    if (c.creatingFile) files.push_back(modificationFile("0_0_0", "2_0_0", kEmptyModification));
    UpgradeHandler driver("RadioNode", classFile, files, "", {}, &icti, &xml, clock);
    EXPECT_TRUE(driver.upgrade()) << c.name;
    EXPECT_EQ(c.upgradeType, UpgType.load()) << c.name;
  }
  EXPECT_TRUE(LogRecorder::installed().contains("RadioNode: Same from and to-version (2_0_0) for RadioNode"));
  EXPECT_TRUE(LogRecorder::installed().contains("RadioNode: New IMM schema RadioNode introduced through upgrade"));
}

TEST_F(UpgradeHandlerTest, UnreadableVersionsFailTheUpgrade) {
  EXPECT_CALL(wrapper, readSchemaVersion(_, _, _, _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_FALSE(run({}));
  EXPECT_EQ((std::vector<std::string>{"Failed to get schema versions for RadioNode, error 12!\n",
                                      "Could not read schemaVersion for schemaName: \"RadioNode\"",
                                      "Failed to get from and to version for schemaName: \"RadioNode\"", "Final Fail"}),
            failures);
}

TEST_F(UpgradeHandlerTest, AMissingPathFailsBeforeAnyFileIsRead) {
  std::string unrelated = modificationFile("3_0_0", "4_0_0", kEmptyModification);
  EXPECT_CALL(wrapper, finalize(_)).Times(0);
  EXPECT_FALSE(run({unrelated}));
  EXPECT_EQ((std::vector<std::string>{"Unable to find a conversion path", "Final Fail"}), failures);
  EXPECT_TRUE(LogRecorder::installed().contains(
      "RadioNode: Could not calculate Conversion Path between versions from: 1_0_0 and to: 2_0_0"));
  EXPECT_TRUE(LogRecorder::installed().contains("RadioNode: Conversion path size: 0 modification files"));
}

TEST_F(UpgradeHandlerTest, AFailedFileDoesNotStopThePathButFailsTheUpgrade) {
  versions(1, 0, 0, 4, 0, 0);
  std::string first = modificationFile("1_0_0", "2_0_0", kEmptyModification);
  std::string broken = modificationFile("2_0_0", "3_0_0", "this is not xml");
  std::string last = modificationFile("3_0_0", "4_0_0", kEmptyModification);
  EXPECT_CALL(wrapper, finalize(_)).Times(0);
  EXPECT_FALSE(run({first, broken, last}));
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RadioNode: Processing of modification file " + first + " was a SUCCESS"));
  EXPECT_TRUE(log.contains("RadioNode: Processing of modification file " + broken + " was a FAILURE"));
  EXPECT_TRUE(log.contains("RadioNode: Processing of modification file " + last + " was a FAILURE"));
  ASSERT_EQ(3u, failures.size());
  EXPECT_EQ("Failed to process modification file " + broken, failures[1]);
  EXPECT_EQ("Final Fail", failures[2]);
}

}  // namespace
