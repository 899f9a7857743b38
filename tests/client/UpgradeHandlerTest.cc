#include "client/UpgradeHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogRecorder.h"
#include "MockEnv.h"
#include "TempDir.h"
#include "common/MessageFormatter.h"
#include "icti/IctiHandler.h"
#include "parser/XmlHandler.h"

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
    env.variables["RESTART_TYPE"] = "UPGRADE";
    classFile = dir.write("share/imm/RadioNode_imm_classes.xml", kClasses);
    versions(1, 0, 0, 2, 0, 0);
    ON_CALL(env, immCtFailUpgrade(_, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, const char* text) {
      std::string reason(text);
      failures.push_back(reason.substr(reason.find(". ") + 2));
      return SA_AIS_OK;
    }));
  }
  void TearDown() override { MessageFormatter::setPrefix(nullptr); }

  void versions(unsigned a, unsigned b, unsigned c, unsigned x, unsigned y, unsigned z) {
    ON_CALL(env, immCtReadSchemaVersion(_, _, _, _))
        .WillByDefault(DoAll(SetArgPointee<2>(SafcImmCtSchemaVersionT_2{a, b, c}),
                             SetArgPointee<3>(SafcImmCtSchemaVersionT_2{x, y, z}), Return(SA_AIS_OK)));
  }

  std::string modificationFile(const std::string& from, const std::string& to, const char* content) {
    return dir.write("lm/modification_" + from + "_to_" + to + ".xml", content);
  }

  bool run(const std::vector<std::string>& files) {
    UpgradeHandler driver("RadioNode", classFile, files, "", {}, &handler, &parser, env);
    return driver.upgrade();
  }

  TempDir dir;
  std::string classFile;
  NiceMock<MockEnv> env;
  IctiHandler handler{env, "RadioNode", ""};
  XmlHandler parser{&handler};
  std::vector<std::string> failures;
};

// Conversions and their failures to open or finalize are the whole runs' (OutcomeTest, FaultMatrixTest).
TEST_F(UpgradeHandlerTest, OnlyAnUpgradeRestartUpgrades) {
  const struct {
    const char* restartType;
    const char* restartType3;
    bool upgrades;
  } cases[] = {{"UPGRADE", nullptr, true},
               {"COLD", "DYNAMIC_UPGRADE", true},
               {"COLD", nullptr, false},
               {"upgrade", "dynamic_upgrade", false}};
  for (const auto& c : cases) {
    env.variables.clear();
    if (c.restartType) env.variables["RESTART_TYPE"] = c.restartType;
    if (c.restartType3) env.variables["RESTART_TYPE_3"] = c.restartType3;
    EXPECT_EQ(c.upgrades, UpgradeHandler::isUpgradeRestart(env)) << c.restartType << " " << c.restartType3;
  }
  EXPECT_CALL(env, immCtInitialize(_, _)).Times(0);
  EXPECT_TRUE(run({}));
}

TEST_F(UpgradeHandlerTest, AFailedFileDoesNotStopThePathButFailsTheUpgrade) {
  versions(1, 0, 0, 4, 0, 0);
  std::string first = modificationFile("1_0_0", "2_0_0", kEmptyModification);
  std::string broken = modificationFile("2_0_0", "3_0_0", "this is not xml");
  std::string last = modificationFile("3_0_0", "4_0_0", kEmptyModification);
  EXPECT_CALL(env, immCtFinalize(_)).Times(0);
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
