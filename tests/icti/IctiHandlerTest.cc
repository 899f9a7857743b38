#include "icti/IctiHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <tuple>
#include <vector>

#include "GroupRecordBuilder.h"
#include "LogRecorder.h"
#include "MockEnv.h"

using testing::_;
using testing::DoAll;
using testing::Invoke;
using testing::NiceMock;
using testing::Return;
using testing::SetArgPointee;
using testing::StrEq;

namespace {

const char* const kIdentityPrefix =
    "UPGRADE FAIL: Application identity: wmtName = Upgrader, wmtNumber = CXP1, wmtRevision = R1A, wpkRevision = "
    "(null). ";

std::vector<std::string> names(SaImmClassNameT* classNames) {
  std::vector<std::string> result;
  for (; *classNames != nullptr; ++classNames) result.push_back(*classNames);
  return result;
}

std::vector<std::string> groupNames(SafcImmCtInstanceGroupT** groups) {
  std::vector<std::string> result;
  for (; *groups != nullptr; ++groups) result.push_back((*groups)->className);
  return result;
}

class IctiHandlerTest : public testing::Test {
 protected:
  void SetUp() override {
    env.variables = {{"WMT_NAME", "Upgrader"}, {"WMT_NO", "CXP1"}, {"WMT_REV", "R1A"}};
    answerOk(env);
  }

  // Every call succeeds; failure texts are collected in `failures`.
  void answerOk(NiceMock<MockEnv>& tool) {
    ON_CALL(tool, immCtInitialize(_, _)).WillByDefault(DoAll(SetArgPointee<0>(42), Return(SA_AIS_OK)));
    ON_CALL(tool, immCtReadSchemaVersion(_, _, _, _))
        .WillByDefault(DoAll(SetArgPointee<2>(SafcImmCtSchemaVersionT_2{1, 0, 0}),
                             SetArgPointee<3>(SafcImmCtSchemaVersionT_2{2, 1, 3}), Return(SA_AIS_OK)));
    ON_CALL(tool, immCtFailUpgrade(_, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, const char* text) {
      failures.push_back(text);
      return SA_AIS_OK;
    }));
    ON_CALL(tool, immCtInstanceGroupsMemoryFree(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(tool, immCtFinalize(_)).WillByDefault(Invoke([this](SafcImmCtHandleT) {
      ++finalizeCalls;
      return finalizeAnswer;
    }));
    ON_CALL(tool, immCtWriteInstances(42, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, SafcImmCtInstanceGroupT** g) {
      written = groupNames(g);
      return writeAnswer;
    }));
    ON_CALL(tool, immCtCopyInstances(42, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, SaImmClassNameT* n) {
      copied = names(n);
      return copyAnswer;
    }));
    ON_CALL(tool, immCtWriteRtInstances(42, StrEq("upgradeImpl"), _))
        .WillByDefault(Invoke([this](SafcImmCtHandleT, const SaImmOiImplementerNameT, SafcImmCtInstanceGroupT** g) {
          rtpWritten = groupNames(g);
          return rtpAnswer;
        }));
  }

  // Lets readInstances of `className` answer with `builder`'s record.
  void answerRead(const std::string& className, GroupRecordBuilder& builder) {
    EXPECT_CALL(env, immCtReadInstances(42, StrEq(className), _))
        .WillOnce(DoAll(SetArgPointee<2>(builder.build()), Return(SA_AIS_OK)));
  }

  bool initWith(const IctiHandler::ClassList& config, const IctiHandler::ClassList& rtp = {}) {
    return handler.init(config, rtp);
  }

  NiceMock<MockEnv> env;
  IctiHandler handler{env, "RadioNode", "Ns"};
  std::vector<std::string> failures, written, copied, rtpWritten;
  SaAisErrorT writeAnswer = SA_AIS_OK, copyAnswer = SA_AIS_OK, rtpAnswer = SA_AIS_OK, finalizeAnswer = SA_AIS_OK;
  int finalizeCalls = 0;
};

TEST_F(IctiHandlerTest, OpeningRetriesOnlyWhileTheToolAsksToTryAgainLater) {
  const struct {
    std::vector<SaAisErrorT> answers;
    std::deque<unsigned int> interruptions;
    bool opened;
    std::vector<unsigned int> sleeps;
  } cases[] = {
      {{SA_AIS_OK}, {}, true, {}},
      {{SA_AIS_ERR_UNAVAILABLE, SA_AIS_OK}, {}, true, {5}},
      {{SA_AIS_ERR_UNAVAILABLE, SA_AIS_OK}, {3}, true, {5, 3}},  // an interrupted pause is resumed
      {{SA_AIS_ERR_UNAVAILABLE, SA_AIS_ERR_UNAVAILABLE, SA_AIS_ERR_UNAVAILABLE}, {}, false, {5, 5}},
      {{SA_AIS_ERR_LIBRARY}, {}, false, {}},
  };
  for (const auto& c : cases) {
    NiceMock<MockEnv> tool;
    tool.interruptions = c.interruptions;
    auto& expectation = EXPECT_CALL(tool, immCtInitialize(_, 0)).Times(static_cast<int>(c.answers.size()));
    for (SaAisErrorT answer : c.answers) expectation.WillOnce(Return(answer));
    IctiHandler fresh(tool, "RadioNode", "");
    EXPECT_EQ(c.opened, fresh.init({}, {})) << c.answers.size();
    EXPECT_EQ(c.sleeps, tool.sleeps) << c.answers.size();
  }
  EXPECT_TRUE(LogRecorder::installed().contains(
      "Failed to init upgrade, error 31, handle value 0. Initialize ICTI attempt: 3 out of 3."));
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to init upgrade, error 2, handle value 0."));
  // The virtual machine mode follows BT.
  env.variables["BT"] = "VM";
  EXPECT_CALL(env, immCtInitialize(_, 1)).WillOnce(Return(SA_AIS_OK));
  EXPECT_TRUE(initWith({}));
}

TEST_F(IctiHandlerTest, VersionsAreReadForTheSchemaAndAFailureIsReported) {
  EXPECT_CALL(env, immCtReadSchemaVersion(42, StrEq("RadioNode"), _, _));
  ASSERT_TRUE(initWith({{"NsManagedElement", "managedElementId"}}));
  EXPECT_TRUE(LogRecorder::installed().contains("Inserting class NsManagedElement, rdn attr managedElementId"));
  std::string from, to;
  ASSERT_TRUE(handler.getSchemaVersions(from, to));
  EXPECT_EQ("1_0_0", from);
  EXPECT_EQ("2_1_3", to);

  EXPECT_CALL(env, immCtReadSchemaVersion(_, _, _, _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  IctiHandler failing(env, "RadioNode", "Ns");
  EXPECT_TRUE(failing.init({}, {}));
  EXPECT_FALSE(failing.getSchemaVersions(from, to));
  EXPECT_EQ(std::vector<std::string>{std::string(kIdentityPrefix) +
                                     "Failed to get schema versions for RadioNode, error 12!\n"},
            failures);
}

TEST_F(IctiHandlerTest, AGroupIsReadOnceAndThenServedFromTheCacheButAFailedReadIsNot) {
  ASSERT_TRUE(initWith({{"NsEUtranCellFDD", "eUtranCellFDDId"}}));
  GroupRecordBuilder cells("NsEUtranCellFDD");
  cells.instance("ENodeBFunction=1", {{"eUtranCellFDDId", "1"}}).instance("ENodeBFunction=1", {{"eUtranCellFDDId", "2"}});
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsEUtranCellFDD"), _))
      .WillOnce(Return(SA_AIS_ERR_TRY_AGAIN))
      .WillOnce(DoAll(SetArgPointee<2>(cells.build()), Return(SA_AIS_OK)));
  EXPECT_CALL(env, immCtInstanceGroupsMemoryFree(42, _)).Times(1);

  EXPECT_EQ(nullptr, handler.getInstanceGroup("EUtranCellFDD"));
  InstanceGroupIf* first = handler.getInstanceGroup("EUtranCellFDD");
  ASSERT_NE(nullptr, first);
  EXPECT_EQ(first, handler.getInstanceGroup("EUtranCellFDD"));
  EXPECT_EQ(2u, first->getNumberOfInstances());
  EXPECT_EQ("EUtranCellFDD", first->getClassName());
  EXPECT_NE(nullptr, first->getInstance("eUtranCellFDDId=2,ENodeBFunction=1"));
  EXPECT_TRUE(LogRecorder::installed().contains("Return cached data for MO NsEUtranCellFDD"));
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to read instances for NsEUtranCellFDD, error code 6\n"));

  GroupRecordBuilder other("NsCell");
  answerRead("NsCell", other);
  EXPECT_CALL(env, immCtInstanceGroupsMemoryFree(_, _)).WillOnce(Return(SA_AIS_ERR_LIBRARY));
  EXPECT_EQ(nullptr, handler.getInstanceGroup("Cell"));
  EXPECT_EQ(std::vector<std::string>{std::string(kIdentityPrefix) + "Failed to free memory, error code 2\n"}, failures);
}

TEST_F(IctiHandlerTest, TheImmClassNameTakesTheRightPrefix) {
  const std::tuple<const char*, const char*, bool, const char*> cases[] = {
      {"Cell", "", false, "NsCell"},
      {"Cell", "Other", true, "OtherCell"},
      {"Cell", "Other", false, "NsCell"},
      {"KmovENodeBFunction", "Other", true, "KmovENodeBFunction"}};
  ASSERT_TRUE(initWith({}));
  for (const auto& [className, prefix, usePrefix, immName] : cases) {
    EXPECT_CALL(env, immCtReadInstances(_, StrEq(immName), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
    EXPECT_EQ(nullptr, handler.getInstanceGroup(className, prefix, usePrefix)) << immName;
  }
  // The group of an LDN is the class of its first RDN.
  EXPECT_CALL(env, immCtReadInstances(_, StrEq("NsEUtranCellFDD"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_EQ(nullptr, handler.getInstanceGroupForLdn("eUtranCellFDDId=1,eNodeBFunctionId=1"));
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to read instances for NsCell, error code 12\n"));
}

TEST_F(IctiHandlerTest, TheOnlyInstanceNeedsExactlyOne) {
  ASSERT_TRUE(initWith({}));
  GroupRecordBuilder none("NsNone"), one("NsOne"), two("NsTwo");
  one.instance("", {{"oneId", "1"}});
  two.instance("", {{"twoId", "1"}}).instance("", {{"twoId", "2"}});
  answerRead("NsNone", none);
  answerRead("NsOne", one);
  answerRead("NsTwo", two);
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("None", ""));
  InstanceIf* only = handler.getTheOnlyInstance("One", "");
  ASSERT_NE(nullptr, only);
  EXPECT_EQ("oneId=1", only->getLdn());
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("Two", ""));
  EXPECT_CALL(env, immCtReadInstances(_, StrEq("NsMissing"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("Missing", ""));
}

// A class to create is looked up in the old model first: its instances are
// kept. A removed class stays removed until it is created again.
TEST_F(IctiHandlerTest, GroupsAreAddedWithoutLosingOldInstancesAndRemovedForGood) {
  ASSERT_TRUE(initWith({}));
  GroupRecordBuilder old("NsOld"), empty("NsEmpty");
  old.instance("", {{"oldId", "1"}});
  answerRead("NsOld", old);
  answerRead("NsEmpty", empty);
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsNewClass"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsBroken"), _)).WillOnce(Return(SA_AIS_ERR_LIBRARY));

  InstanceGroupIf* added = handler.addInstanceGroup("NewClass");
  ASSERT_NE(nullptr, added);
  EXPECT_EQ("NewClass", added->getClassName());
  EXPECT_EQ(nullptr, handler.addInstanceGroup("NewClass"));
  EXPECT_EQ(added, handler.getInstanceGroup("NewClass"));
  EXPECT_EQ(nullptr, handler.addInstanceGroup("Old"));
  ASSERT_NE(nullptr, handler.getInstanceGroup("Old"));
  EXPECT_EQ(1u, handler.getInstanceGroup("Old")->getNumberOfInstances());
  InstanceGroupIf* emptyGroup = handler.addInstanceGroup("Empty");
  ASSERT_NE(nullptr, emptyGroup);
  EXPECT_EQ(emptyGroup, handler.getInstanceGroup("Empty"));
  EXPECT_EQ(nullptr, handler.addInstanceGroup("Broken"));
  EXPECT_EQ(std::vector<std::string>{kIdentityPrefix +
                                     std::string("Could not read class NsBroken from the old model before creating it, error 2")},
            failures);

  EXPECT_TRUE(handler.removeInstanceGroup("Old"));
  EXPECT_FALSE(handler.removeInstanceGroup("Old"));
  EXPECT_EQ(nullptr, handler.getInstanceGroup("Old"));
  InstanceGroupIf* again = handler.addInstanceGroup("Old");
  ASSERT_NE(nullptr, again);
  EXPECT_EQ(0u, again->getNumberOfInstances());
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("Adding new instance group NsNewClass"));
  EXPECT_TRUE(log.contains("Trying to add already existing instance group: NsNewClass\n"));
  EXPECT_TRUE(log.contains("Trying to add already existing instance group: NsOld\n"));
  EXPECT_TRUE(log.contains("Remove instance group NsOld"));
  EXPECT_TRUE(log.contains("ABN: Trying to remove a non existent instance group: NsOld\n"));
}

TEST_F(IctiHandlerTest, TheEndWritesTouchedClassesCopiesTheOthersAndSplitsRuntimePersistentOnes) {
  std::deque<GroupRecordBuilder> records;
  ON_CALL(env, immCtReadInstances(42, _, _))
      .WillByDefault(Invoke([&](SafcImmCtHandleT, const SaImmClassNameT name, SafcImmCtInstanceGroupT*** out) {
        *out = records.emplace_back(name).build();
        return SA_AIS_OK;
      }));
  using Names = std::vector<std::string>;
  const SaAisErrorT ok = SA_AIS_OK;
  const struct {
    bool implementer;
    SaAisErrorT write, copy, rtp, finalize;
    bool result;
    Names written, rtpWritten;
    const char* failure;  // or null
  } cases[] = {
      {false, ok, ok, ok, ok, true, {"NsA", "NsRt"}, {}, nullptr},
      {true, ok, ok, ok, ok, true, {"NsA"}, {"NsRt"}, nullptr},
      {true, ok, ok, SA_AIS_ERR_LIBRARY, ok, false, {"NsA"}, {"NsRt"}, "Write RTP instances failed, SaAisErrorT = 2"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.implementer << c.write << c.copy << c.rtp << c.finalize);
    IctiHandler fresh(env, "RadioNode", "Ns");
    ASSERT_TRUE(fresh.init({{"NsA", "aId"}, {"NsB", "bId"}, {"NsC", "cId"}, {"NsRt", "rtId"}}, {{"NsRt", "rtId"}}));
    ASSERT_NE(nullptr, fresh.getInstanceGroup("A"));
    ASSERT_NE(nullptr, fresh.getInstanceGroup("Rt"));
    // A deleted class, listed or read, is neither written nor copied.
    for (const char* deleted : {"Gone", "C"}) {
      ASSERT_NE(nullptr, fresh.getInstanceGroup(deleted));
      ASSERT_TRUE(fresh.removeInstanceGroup(deleted));
    }
    if (c.implementer) fresh.setImplementerName("upgradeImpl");
    std::tie(writeAnswer, copyAnswer, rtpAnswer, finalizeAnswer) = std::tie(c.write, c.copy, c.rtp, c.finalize);
    failures.clear(), rtpWritten.clear(), finalizeCalls = 0;
    EXPECT_EQ(c.result, fresh.writeCopyClasses());
    // A model not written whole is never finalized.
    EXPECT_EQ(c.failure == nullptr ? 1 : 0, finalizeCalls);
    EXPECT_EQ(c.written, written);
    EXPECT_TRUE(c.implementer || copied == Names({"NsB"})) << testing::PrintToString(copied);
    EXPECT_EQ(c.rtpWritten, rtpWritten);
    EXPECT_EQ(c.failure ? Names{kIdentityPrefix + std::string(c.failure)} : Names{}, failures);
  }
  EXPECT_TRUE(LogRecorder::installed().contains(
      "icti finalize 0 ms, tables 0 ms, writeClasses 0 ms size 2, copyClasses 0 ms, size 1, writeRTPClasses size 0, "
      "introduce 0 ms"));
  EXPECT_TRUE(LogRecorder::installed().contains(
      "RTP classes write after split, instanceGroupMap.size() 1: , instanceGroupMapRTP.size() 1: "));
}

TEST_F(IctiHandlerTest, TheFailureTextNamesTheIdentityAndIsBounded) {
  env.variables["WPK_REV"] = "R9";
  env.variables.erase("WMT_NO");
  handler.failUpgrade(std::string(1000, 'x').c_str());
  ASSERT_EQ(1u, failures.size());
  EXPECT_EQ(699u, failures[0].size());
  const std::string expected =
      "UPGRADE FAIL: Application identity: wmtName = Upgrader, wmtNumber = (null), wmtRevision = R1A, wpkRevision = "
      "R9. xxx";
  EXPECT_EQ(expected, failures[0].substr(0, expected.size()));
  env.variables.erase("WPK_REV");
  // A context says where the failure comes from, after the reason.
  handler.setFailureContext("at m.xml:3, Mo Cell");
  handler.failUpgrade("bad");
  EXPECT_EQ("(null). bad (at m.xml:3, Mo Cell)", failures.back().substr(failures.back().find("(null). ")));
}

}  // namespace
