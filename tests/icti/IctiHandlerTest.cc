#include "icti/IctiHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <tuple>
#include <vector>

#include "MockEnv.h"
#include "icti/ImmRecords.h"
#include "icti/InstanceGroup.h"

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

// What readInstances hands out for one class: its instances, one per RDN
// value below `parent`, as the model writes them.
class GroupRecord {
 public:
  explicit GroupRecord(const std::string& immClassName, const std::vector<std::string>& ids = {},
                       const std::string& parent = "")
      : group_(immClassName, "", "Ns", ids.size()) {
    for (const std::string& id : ids) group_.createInstance(parent, id, false, "");
    EXPECT_TRUE(records_.add(group_));
  }
  SafcImmCtInstanceGroupT** get() { return records_.terminated(); }

 private:
  InstanceGroup group_;
  ImmRecords records_;
};

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
    // Every call succeeds; failure texts are collected in `failures`.
    ON_CALL(env, immCtInitialize(_, _)).WillByDefault(DoAll(SetArgPointee<0>(42), Return(SA_AIS_OK)));
    ON_CALL(env, immCtFailUpgrade(_, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, const char* text) {
      failures.push_back(text);
      return SA_AIS_OK;
    }));
    ON_CALL(env, immCtInstanceGroupsMemoryFree(_, _)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(env, immCtFinalize(_)).WillByDefault(Invoke([this](SafcImmCtHandleT) {
      ++finalizeCalls;
      return SA_AIS_OK;
    }));
    ON_CALL(env, immCtWriteInstances(42, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, SafcImmCtInstanceGroupT** g) {
      written = groupNames(g);
      return SA_AIS_OK;
    }));
    ON_CALL(env, immCtCopyInstances(42, _)).WillByDefault(Invoke([this](SafcImmCtHandleT, SaImmClassNameT* n) {
      copied = names(n);
      return SA_AIS_OK;
    }));
    ON_CALL(env, immCtWriteRtInstances(42, StrEq("upgradeImpl"), _))
        .WillByDefault(Invoke([this](SafcImmCtHandleT, const SaImmOiImplementerNameT, SafcImmCtInstanceGroupT** g) {
          rtpWritten = groupNames(g);
          return rtpAnswer;
        }));
  }

  // Lets readInstances of `className` answer with `record`.
  void answerRead(const std::string& className, GroupRecord& record) {
    EXPECT_CALL(env, immCtReadInstances(42, StrEq(className), _))
        .WillOnce(DoAll(SetArgPointee<2>(record.get()), Return(SA_AIS_OK)));
  }

  NiceMock<MockEnv> env;
  IctiHandler handler{env, "RadioNode", "Ns"};
  std::vector<std::string> failures, written, copied, rtpWritten;
  SaAisErrorT rtpAnswer = SA_AIS_OK;
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
  // The virtual machine mode follows BT.
  env.variables["BT"] = "VM";
  EXPECT_CALL(env, immCtInitialize(_, 1)).WillOnce(Return(SA_AIS_OK));
  EXPECT_TRUE(handler.init({}, {}));
}

// Reading the versions, and the failures of the calls a whole run makes, are
// checked by the whole runs (FaultMatrixTest).
TEST_F(IctiHandlerTest, AGroupIsReadOnceAndThenServedFromTheCacheButAFailedReadIsNot) {
  ASSERT_TRUE(handler.init({{"NsEUtranCellFDD", "eUtranCellFDDId"}}, {}));
  GroupRecord cells("NsEUtranCellFDD", {"1", "2"}, "ENodeBFunction=1");
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsEUtranCellFDD"), _))
      .WillOnce(Return(SA_AIS_ERR_TRY_AGAIN))
      .WillOnce(DoAll(SetArgPointee<2>(cells.get()), Return(SA_AIS_OK)));

  EXPECT_EQ(nullptr, handler.getInstanceGroup("EUtranCellFDD"));
  InstanceGroupIf* first = handler.getInstanceGroup("EUtranCellFDD");
  ASSERT_NE(nullptr, first);
  EXPECT_EQ(first, handler.getInstanceGroup("EUtranCellFDD"));
  EXPECT_NE(nullptr, first->getInstance("eUtranCellFDDId=2,ENodeBFunction=1"));

  // A class the old model lacks is asked for once; the answer is kept.
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsNowhere"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_FALSE(handler.classDefined("Nowhere"));
  EXPECT_FALSE(handler.classDefined("Nowhere"));
  EXPECT_TRUE(handler.classDefined("EUtranCellFDD"));
}

TEST_F(IctiHandlerTest, TheImmClassNameTakesTheRightPrefix) {
  const std::tuple<const char*, const char*, bool, const char*> cases[] = {
      {"Cell", "", false, "NsCell"},
      {"Cell", "Other", true, "OtherCell"},
      {"Cell", "Other", false, "NsCell"},
      {"KmovENodeBFunction", "Other", true, "KmovENodeBFunction"}};
  ASSERT_TRUE(handler.init({}, {}));
  for (const auto& [className, prefix, usePrefix, immName] : cases) {
    EXPECT_CALL(env, immCtReadInstances(_, StrEq(immName), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
    EXPECT_EQ(nullptr, handler.getInstanceGroup(className, prefix, usePrefix)) << immName;
  }
  // The group of an LDN is the class of its first RDN.
  EXPECT_CALL(env, immCtReadInstances(_, StrEq("NsEUtranCellFDD"), _)).WillOnce(Return(SA_AIS_ERR_NOT_EXIST));
  EXPECT_EQ(nullptr, handler.getInstanceGroupForLdn("eUtranCellFDDId=1,eNodeBFunctionId=1"));
}

TEST_F(IctiHandlerTest, TheOnlyInstanceNeedsExactlyOne) {
  ASSERT_TRUE(handler.init({}, {}));
  GroupRecord none("NsNone"), one("NsOne", {"1"}), two("NsTwo", {"1", "2"});
  answerRead("NsNone", none);
  answerRead("NsOne", one);
  answerRead("NsTwo", two);
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("None", ""));
  InstanceIf* only = handler.getTheOnlyInstance("One", "");
  ASSERT_NE(nullptr, only);
  EXPECT_EQ("oneId=1", only->getLdn());
  EXPECT_EQ(nullptr, handler.getTheOnlyInstance("Two", ""));
}

// A class to create is looked up in the old model first: its instances are
// kept. A removed class stays removed until it is created again.
// Creating a new class is part of the whole runs.
TEST_F(IctiHandlerTest, GroupsAreAddedWithoutLosingOldInstancesAndRemovedForGood) {
  ASSERT_TRUE(handler.init({}, {}));
  GroupRecord old("NsOld", {"1"}), empty("NsEmpty");
  answerRead("NsOld", old);
  answerRead("NsEmpty", empty);
  EXPECT_CALL(env, immCtReadInstances(42, StrEq("NsBroken"), _)).WillOnce(Return(SA_AIS_ERR_LIBRARY));

  EXPECT_EQ(nullptr, handler.addInstanceGroup("Old"));
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
}

// Failures of the write, copy and finalize calls are part of the whole runs (FaultMatrixTest).
TEST_F(IctiHandlerTest, TheEndWritesTouchedClassesCopiesTheOthersAndSplitsRuntimePersistentOnes) {
  std::deque<GroupRecord> records;
  ON_CALL(env, immCtReadInstances(42, _, _))
      .WillByDefault(Invoke([&](SafcImmCtHandleT, const SaImmClassNameT name, SafcImmCtInstanceGroupT*** out) {
        *out = records.emplace_back(name).get();
        return SA_AIS_OK;
      }));
  using Names = std::vector<std::string>;
  const struct {
    bool implementer;
    SaAisErrorT rtp;
    Names written, rtpWritten;
    const char* failure;  // or null
  } cases[] = {
      {false, SA_AIS_OK, {"NsA", "NsRt"}, {}, nullptr},
      {true, SA_AIS_OK, {"NsA"}, {"NsRt"}, nullptr},
      {true, SA_AIS_ERR_LIBRARY, {"NsA"}, {"NsRt"}, "Write RTP instances failed, SaAisErrorT = 2"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.implementer << c.rtp);
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
    rtpAnswer = c.rtp;
    failures.clear(), rtpWritten.clear(), finalizeCalls = 0;
    EXPECT_EQ(c.failure == nullptr, fresh.writeCopyClasses());
    // A model not written whole is never finalized.
    EXPECT_EQ(c.failure == nullptr ? 1 : 0, finalizeCalls);
    EXPECT_EQ(c.written, written);
    EXPECT_TRUE(c.implementer || copied == Names({"NsB"})) << testing::PrintToString(copied);
    EXPECT_EQ(c.rtpWritten, rtpWritten);
    EXPECT_EQ(c.failure ? Names{kIdentityPrefix + std::string(c.failure)} : Names{}, failures);
  }
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
