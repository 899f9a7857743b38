#include "icti/IctiHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "FakeClock.h"
#include "GroupRecordBuilder.h"
#include "LogRecorder.h"
#include "MockSafcImmCtWrapper.h"

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
    setenv("WMT_NAME", "Upgrader", 1);
    setenv("WMT_NO", "CXP1", 1);
    setenv("WMT_REV", "R1A", 1);
    unsetenv("WPK_REV");
    unsetenv("BT");
    ON_CALL(wrapper, initialize(_, _)).WillByDefault(DoAll(SetArgPointee<0>(42), Return(SA_AIS_OK)));
    ON_CALL(wrapper, readSchemaVersion(_, _, _, _))
        .WillByDefault(DoAll(SetArgPointee<2>(SafcImmCtSchemaVersionT_2{1, 0, 0}),
                             SetArgPointee<3>(SafcImmCtSchemaVersionT_2{2, 1, 3}), Return(SA_AIS_OK)));
    ON_CALL(wrapper, failUpgrade(_, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, const char* text) {
      failures.push_back(text);
      return SA_AIS_OK;
    }));
    ON_CALL(wrapper, instanceGroupsMemoryFree(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, finalize(_)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, writeInstances(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, copyInstances(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, writeRtInstances(_, _, _)).WillByDefault(Return(SA_AIS_OK));
  }
  void TearDown() override {
    for (const char* v : {"WMT_NAME", "WMT_NO", "WMT_REV", "BT"}) unsetenv(v);
  }

  // Lets readInstances of `className` answer with `builder`'s record.
  void answerRead(const std::string& className, GroupRecordBuilder& builder) {
    EXPECT_CALL(wrapper, readInstances(42, StrEq(className), _))
        .WillOnce(DoAll(SetArgPointee<2>(builder.build()), Return(SA_AIS_OK)));
  }

  bool initWith(const IctiHandler::ClassList& config, const IctiHandler::ClassList& rtp = {}) {
    return handler.init(config, rtp);
  }

  NiceMock<MockSafcImmCtWrapper> wrapper;
  FakeClock clock;
  IctiHandler handler{wrapper, clock, "RadioNode", "Ns"};
  std::vector<std::string> failures;
};

TEST_F(IctiHandlerTest, OpeningRetriesOnlyWhileTheToolAsksToTryAgainLater) {
  struct Case {
    const char* name;
    std::vector<SaAisErrorT> answers;
    bool opened;
    std::vector<unsigned int> sleeps;
  };
  const Case cases[] = {
      {"at once", {SA_AIS_OK}, true, {}},
      {"second attempt", {SA_AIS_ERR_UNAVAILABLE, SA_AIS_OK}, true, {5}},
      {"never", {SA_AIS_ERR_UNAVAILABLE, SA_AIS_ERR_UNAVAILABLE, SA_AIS_ERR_UNAVAILABLE}, false, {5, 5}},
      {"other error", {SA_AIS_ERR_LIBRARY}, false, {}},
  };
  for (const Case& c : cases) {
    NiceMock<MockSafcImmCtWrapper> tool;
    FakeClock pauses;
    auto& expectation = EXPECT_CALL(tool, initialize(_, 0)).Times(static_cast<int>(c.answers.size()));
    for (SaAisErrorT answer : c.answers) expectation.WillOnce(Return(answer));
    IctiHandler fresh(tool, pauses, "RadioNode", "");
    EXPECT_EQ(c.opened, fresh.init({}, {})) << c.name;
    EXPECT_EQ(c.sleeps, pauses.sleeps) << c.name;
  }
  EXPECT_TRUE(LogRecorder::installed().contains(
      "Failed to init upgrade, error 31, handle value 0. Initialize ICTI attempt: 3 out of 3."));
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to init upgrade, error 2, handle value 0."));
}

TEST_F(IctiHandlerTest, AnInterruptedPauseIsResumed) {
  EXPECT_CALL(wrapper, initialize(_, _)).WillOnce(Return(SA_AIS_ERR_UNAVAILABLE)).WillOnce(Return(SA_AIS_OK));
  clock.interruptions = {3};
  EXPECT_TRUE(initWith({}));
  EXPECT_EQ((std::vector<unsigned int>{5, 3}), clock.sleeps);
}

TEST_F(IctiHandlerTest, TheVirtualMachineModeFollowsBt) {
  setenv("BT", "VM", 1);
  EXPECT_CALL(wrapper, initialize(_, 1)).WillOnce(Return(SA_AIS_OK));
  EXPECT_TRUE(initWith({}));
}

TEST_F(IctiHandlerTest, VersionsAreReadForTheSchema) {
  EXPECT_CALL(wrapper, readSchemaVersion(42, StrEq("RadioNode"), _, _));
  ASSERT_TRUE(initWith({{"NsManagedElement", "managedElementId"}}));
  SafcImmCtSchemaVersionT_2 from{}, to{};
  ASSERT_TRUE(handler.getSchemaVersions(from, to));
  EXPECT_EQ(1u, from.version);
  EXPECT_EQ(3u, to.correction);
  EXPECT_TRUE(LogRecorder::installed().contains("Inserting class NsManagedElement, rdn attr managedElementId"));
}

TEST_F(IctiHandlerTest, AVersionFailureIsReportedAndLeavesNoVersions) {
  EXPECT_CALL(wrapper, readSchemaVersion(_, _, _, _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_TRUE(initWith({}));
  SafcImmCtSchemaVersionT_2 from{}, to{};
  EXPECT_FALSE(handler.getSchemaVersions(from, to));
  ASSERT_EQ(1u, failures.size());
  EXPECT_EQ(std::string(kIdentityPrefix) + "Failed to get schema versions for RadioNode, error 12!\n", failures[0]);
}

TEST_F(IctiHandlerTest, AGroupIsReadOnceAndThenServedFromTheCache) {
  ASSERT_TRUE(initWith({{"NsEUtranCellFDD", "eUtranCellFDDId"}}));
  GroupRecordBuilder cells("NsEUtranCellFDD");
  cells.instance("ENodeBFunction=1", {{"eUtranCellFDDId", "1"}}).instance("ENodeBFunction=1", {{"eUtranCellFDDId", "2"}});
  answerRead("NsEUtranCellFDD", cells);
  EXPECT_CALL(wrapper, instanceGroupsMemoryFree(42, _)).Times(1);

  InstanceGroupIf* first = handler.getInstanceGroup("EUtranCellFDD");
  InstanceGroupIf* second = handler.getInstanceGroup("EUtranCellFDD");
  ASSERT_NE(nullptr, first);
  EXPECT_EQ(first, second);
  EXPECT_EQ(2u, first->getNumberOfInstances());
  EXPECT_EQ("EUtranCellFDD", first->getClassName());
  EXPECT_NE(nullptr, first->getInstance("eUtranCellFDDId=2,ENodeBFunction=1"));
  EXPECT_TRUE(LogRecorder::installed().contains("Return cached data for MO NsEUtranCellFDD"));
}

TEST_F(IctiHandlerTest, TheImmClassNameTakesTheRightPrefix) {
  struct Case {
    const char* className;
    const char* prefix;
    bool usePrefix;
    const char* immName;
  };
  const Case cases[] = {{"Cell", "", false, "NsCell"},
                        {"Cell", "Other", true, "OtherCell"},
                        {"Cell", "Other", false, "NsCell"},
                        {"KmovENodeBFunction", "Other", true, "KmovENodeBFunction"}};
  ASSERT_TRUE(initWith({}));
  for (const Case& c : cases) {
    EXPECT_CALL(wrapper, readInstances(_, StrEq(c.immName), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
    EXPECT_EQ(nullptr, handler.getInstanceGroup(c.className, c.prefix, c.usePrefix)) << c.immName;
  }
  EXPECT_TRUE(LogRecorder::installed().contains("Found class KmovENodeBFunction , adding prefix cancelled"));
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to read instances for NsCell, error code 12\n"));
}

TEST_F(IctiHandlerTest, AFailedReadIsNotCached) {
  ASSERT_TRUE(initWith({}));
  GroupRecordBuilder cells("NsCell");
  EXPECT_CALL(wrapper, readInstances(_, StrEq("NsCell"), _))
      .WillOnce(Return(SA_AIS_ERR_TRY_AGAIN))
      .WillOnce(DoAll(SetArgPointee<2>(cells.build()), Return(SA_AIS_OK)));
  EXPECT_EQ(nullptr, handler.getInstanceGroup("Cell"));
  EXPECT_NE(nullptr, handler.getInstanceGroup("Cell"));
}

TEST_F(IctiHandlerTest, AFailedReleaseOfTheRecordsFailsTheUpgrade) {
  ASSERT_TRUE(initWith({}));
  GroupRecordBuilder cells("NsCell");
  answerRead("NsCell", cells);
  EXPECT_CALL(wrapper, instanceGroupsMemoryFree(_, _)).WillOnce(Return(SA_AIS_ERR_LIBRARY));
  EXPECT_EQ(nullptr, handler.getInstanceGroup("Cell"));
  ASSERT_EQ(1u, failures.size());
  EXPECT_EQ(std::string(kIdentityPrefix) + "Failed to free memory, error code 2\n", failures[0]);
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
  EXPECT_CALL(wrapper, readInstances(_, StrEq("NsMissing"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("Missing", ""));
}

TEST_F(IctiHandlerTest, GroupsAreAddedOnceAndRemovedByClassName) {
  ASSERT_TRUE(initWith({}));
  InstanceGroupIf* added = handler.addInstanceGroup("NewClass");
  ASSERT_NE(nullptr, added);
  EXPECT_EQ("NewClass", added->getClassName());
  EXPECT_EQ(nullptr, handler.addInstanceGroup("NewClass"));
  EXPECT_EQ(added, handler.getInstanceGroup("NewClass"));
  EXPECT_TRUE(handler.removeInstanceGroup("NewClass"));
  EXPECT_FALSE(handler.removeInstanceGroup("NewClass"));
  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("Adding new instance group NsNewClass"));
  EXPECT_TRUE(log.contains("Trying to add already existing instance group: NsNewClass\n"));
  EXPECT_TRUE(log.contains("Remove instance group NsNewClass"));
  EXPECT_TRUE(log.contains("ABN: Trying to remove a non existent instance group: NsNewClass\n"));
}

TEST_F(IctiHandlerTest, TheGroupOfAnLdnComesFromItsFirstRdn) {
  ASSERT_TRUE(initWith({}));
  EXPECT_CALL(wrapper, readInstances(_, StrEq("NsEUtranCellFDD"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_EQ(nullptr, handler.getInstanceGroupForLdn("eUtranCellFDDId=1,eNodeBFunctionId=1"));
  EXPECT_TRUE(LogRecorder::installed().contains("Fetching instanceGroup for classname: EUtranCellFDD"));
}

TEST_F(IctiHandlerTest, TouchedClassesAreWrittenAndTheOthersCopied) {
  ASSERT_TRUE(initWith({{"NsA", "aId"}, {"NsB", "bId"}, {"NsC", "cId"}}));
  GroupRecordBuilder a("NsA");
  a.instance("", {{"aId", "1"}});
  answerRead("NsA", a);
  ASSERT_NE(nullptr, handler.getInstanceGroup("A"));

  std::vector<std::string> written, copied;
  EXPECT_CALL(wrapper, writeInstances(42, _)).WillOnce(Invoke([&](SafcImmCtHandleT, SafcImmCtInstanceGroupT** g) {
    written = groupNames(g);
    return SA_AIS_OK;
  }));
  EXPECT_CALL(wrapper, copyInstances(42, _)).WillOnce(Invoke([&](SafcImmCtHandleT, SaImmClassNameT* n) {
    copied = names(n);
    return SA_AIS_OK;
  }));
  EXPECT_CALL(wrapper, writeRtInstances(_, _, _)).Times(0);
  EXPECT_CALL(wrapper, finalize(42)).WillOnce(Return(SA_AIS_OK));
  EXPECT_TRUE(handler.writeCopyClasses());
  EXPECT_EQ(std::vector<std::string>{"NsA"}, written);
  EXPECT_EQ((std::vector<std::string>{"NsB", "NsC"}), copied);
  EXPECT_TRUE(LogRecorder::installed().contains(
      "icti finalize 0 ms, tables 0 ms, writeClasses 0 ms size 1, copyClasses 0 ms, size 2, writeRTPClasses size 0, "
      "introduce 0 ms"));
}

TEST_F(IctiHandlerTest, RuntimePersistentGroupsGoUnderTheImplementerWhenOneIsSet) {
  ASSERT_TRUE(initWith({{"NsA", "aId"}, {"NsRt", "rtId"}}, {{"NsRt", "rtId"}}));
  GroupRecordBuilder rt("NsRt");
  rt.instance("", {{"rtId", "1"}});
  answerRead("NsRt", rt);
  ASSERT_NE(nullptr, handler.getInstanceGroup("Rt"));
  handler.setImplementerName("upgradeImpl");

  std::vector<std::string> rtpWritten;
  EXPECT_CALL(wrapper, writeInstances(_, _)).Times(0);
  EXPECT_CALL(wrapper, writeRtInstances(42, StrEq("upgradeImpl"), _))
      .WillOnce(Invoke([&](SafcImmCtHandleT, const SaImmOiImplementerNameT, SafcImmCtInstanceGroupT** g) {
        rtpWritten = groupNames(g);
        return SA_AIS_OK;
      }));
  EXPECT_TRUE(handler.writeCopyClasses());
  EXPECT_EQ(std::vector<std::string>{"NsRt"}, rtpWritten);
  EXPECT_TRUE(LogRecorder::installed().contains(
      "RTP classes write after split, instanceGroupMap.size() 0: , instanceGroupMapRTP.size() 1: "));
}

TEST_F(IctiHandlerTest, AFailedRuntimePersistentWriteIsReportedAndTheSessionStillEnds) {
  ASSERT_TRUE(initWith({{"NsRt", "rtId"}}, {{"NsRt", "rtId"}}));
  GroupRecordBuilder rt("NsRt");
  answerRead("NsRt", rt);
  ASSERT_NE(nullptr, handler.getInstanceGroup("Rt"));
  handler.setImplementerName("upgradeImpl");
  EXPECT_CALL(wrapper, writeRtInstances(_, _, _)).WillOnce(Return(SA_AIS_ERR_LIBRARY));
  EXPECT_CALL(wrapper, finalize(_)).WillOnce(Return(SA_AIS_OK));
  EXPECT_TRUE(handler.writeCopyClasses());
  EXPECT_EQ(std::vector<std::string>{std::string(kIdentityPrefix) + "Write RTP instances failed, SaAisErrorT = 2"},
            failures);
}

TEST_F(IctiHandlerTest, WithoutAnImplementerRuntimePersistentGroupsAreWrittenWithTheRest) {
  ASSERT_TRUE(initWith({{"NsRt", "rtId"}}, {{"NsRt", "rtId"}}));
  GroupRecordBuilder rt("NsRt");
  answerRead("NsRt", rt);
  ASSERT_NE(nullptr, handler.getInstanceGroup("Rt"));
  EXPECT_CALL(wrapper, writeInstances(_, _)).WillOnce(Return(SA_AIS_OK));
  EXPECT_CALL(wrapper, writeRtInstances(_, _, _)).Times(0);
  EXPECT_TRUE(handler.writeCopyClasses());
}

TEST_F(IctiHandlerTest, EveryEndStepFailureIsReported) {
  struct Case {
    const char* name;
    SaAisErrorT write, copy, finalize;
    std::vector<std::string> failures;
    bool result;
  };
  const Case cases[] = {
      {"write", SA_AIS_ERR_INVALID_PARAM, SA_AIS_OK, SA_AIS_OK, {"Write instances init failed, SaAisErrorT = 7"}, true},
      {"copy", SA_AIS_OK, SA_AIS_ERR_NOT_EXIST, SA_AIS_OK, {"Copy instances init failed, SaAisErrorT = 12"}, true},
      {"finalize", SA_AIS_OK, SA_AIS_OK, SA_AIS_ERR_BAD_OPERATION, {}, false},
  };
  for (const Case& c : cases) {
    NiceMock<MockSafcImmCtWrapper> tool;
    std::vector<std::string> reported;
    ON_CALL(tool, initialize(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(tool, readSchemaVersion(_, _, _, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(tool, instanceGroupsMemoryFree(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(tool, failUpgrade(_, _)).WillByDefault(Invoke([&](SafcImmCtHandleT, const char* text) {
      reported.push_back(std::string(text).substr(std::string(kIdentityPrefix).size()));
      return SA_AIS_OK;
    }));
    EXPECT_CALL(tool, writeInstances(_, _)).WillOnce(Return(c.write));
    EXPECT_CALL(tool, copyInstances(_, _)).WillOnce(Return(c.copy));
    EXPECT_CALL(tool, finalize(_)).WillOnce(Return(c.finalize));
    IctiHandler fresh(tool, clock, "RadioNode", "Ns");
    ASSERT_TRUE(fresh.init({{"NsA", "aId"}, {"NsB", "bId"}}, {}));
    GroupRecordBuilder a("NsA");
    EXPECT_CALL(tool, readInstances(_, _, _)).WillOnce(DoAll(SetArgPointee<2>(a.build()), Return(SA_AIS_OK)));
    fresh.getInstanceGroup("A");
    EXPECT_EQ(c.result, fresh.writeCopyClasses()) << c.name;
    EXPECT_EQ(c.failures, reported) << c.name;
  }
  EXPECT_TRUE(LogRecorder::installed().contains("Finalize failed, SaAisErrorT = 20"));
}

TEST_F(IctiHandlerTest, AnIntroducedSchemaWritesItsCachedGroups) {
  ASSERT_TRUE(initWith({{"NsA", "aId"}, {"NsB", "bId"}}));
  ASSERT_NE(nullptr, handler.addInstanceGroup("A"));
  std::vector<std::string> written;
  EXPECT_CALL(wrapper, writeInstances(_, _)).WillOnce(Invoke([&](SafcImmCtHandleT, SafcImmCtInstanceGroupT** g) {
    written = groupNames(g);
    return SA_AIS_OK;
  }));
  EXPECT_CALL(wrapper, copyInstances(_, _)).Times(0);
  EXPECT_TRUE(handler.writeIntroducedClasses());
  EXPECT_EQ(std::vector<std::string>{"NsA"}, written);
}

TEST_F(IctiHandlerTest, TheFailureTextNamesTheIdentityAndIsBounded) {
  setenv("WPK_REV", "R9", 1);
  unsetenv("WMT_NO");
  handler.failUpgrade(std::string(1000, 'x').c_str());
  ASSERT_EQ(1u, failures.size());
  EXPECT_EQ(699u, failures[0].size());
  const std::string expected =
      "UPGRADE FAIL: Application identity: wmtName = Upgrader, wmtNumber = (null), wmtRevision = R1A, wpkRevision = "
      "R9. xxx";
  EXPECT_EQ(expected, failures[0].substr(0, expected.size()));
  unsetenv("WPK_REV");
}

TEST_F(IctiHandlerTest, ARefusedRollbackIsLoggedAndOnlyABadHandleAborts) {
  EXPECT_CALL(wrapper, failUpgrade(_, _)).WillOnce(Return(SA_AIS_ERR_TRY_AGAIN));
  handler.failUpgrade("reason");
  EXPECT_TRUE(LogRecorder::installed().contains("Failed to trigger rollback. Error: 6, handle value: 0."));
  EXPECT_DEATH(
      {
        ON_CALL(wrapper, failUpgrade(_, _)).WillByDefault(Return(SA_AIS_ERR_BAD_HANDLE));
        handler.failUpgrade("reason");
      },
      "");
}

}  // namespace
