#include "runtime/UpgradeAction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "MockIctiHandler.h"
#include "MockInstance.h"
#include "MockInstanceGroup.h"
#include "runtime/ActionArguments.h"

using testing::_;
using testing::NiceMock;
using testing::Return;
using testing::StrEq;
using testing::StrictMock;

namespace {

// What the test instance operation saw, and which instances it fails.
struct Visits {
  std::vector<InstanceIf*> visited;
  std::vector<bool> admitted;
  std::set<InstanceIf*> failing;
  IctiHandlerIf* handler = nullptr;
};
Visits visits;

bool visitInstance(InstanceIf& instance, ActionContext& context) {
  visits.visited.push_back(&instance);
  visits.admitted.push_back(context.filter.applies(instance, 0));
  visits.handler = &context.handler;
  return visits.failing.count(&instance) == 0;
}

class TestAction : public UpgradeAction {
 public:
  TestAction() : UpgradeAction("TestAction", visitInstance) {}

  MOCK_METHOD(bool, validateArgs, (ActionArgumentsIf & args, IctiHandlerIf* ictiHandler), (override));
  void reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override {
    std::string text = std::string("Action Failed: no instance group to operate on, ") + args.argumentsToString();
    ictiHandler->failUpgrade(text.c_str());
  }
};

// Accepts a missing group, as the child-instance actions do.
class GrouplessAction : public TestAction {
 public:
  bool validateInstanceGroup(InstanceGroupIf*) override { return true; }
  MOCK_METHOD(bool, executeAction, (IctiHandlerIf*, InstanceGroupIf*, ActionArgumentsIf&), (override));
};

class UpgradeActionTest : public testing::Test {
 protected:
  void SetUp() override {
    visits = Visits();
    args.addArgument("name", "counter");
  }

  std::vector<InstanceIf*> makeInstances(int count) {
    std::vector<InstanceIf*> result;
    for (int i = 0; i < count; ++i) {
      auto* instance = &instances[i];
      ON_CALL(*instance, getRdn()).WillByDefault(Return("xId=" + std::to_string(i + 1)));
      result.push_back(instance);
    }
    return result;
  }

  StrictMock<MockIctiHandler> handler;
  NiceMock<MockInstanceGroup> group;
  NiceMock<MockInstance> instances[3];
  ActionArguments args;
};

TEST_F(UpgradeActionTest, MissingGroupOrInvalidArgumentsStopBeforeAnyInstance) {
  TestAction withoutGroup;
  EXPECT_CALL(withoutGroup, validateArgs(_, _)).Times(0);
  EXPECT_CALL(handler, failUpgrade(StrEq("Action Failed: no instance group to operate on, name=counter")));
  EXPECT_FALSE(withoutGroup.execute(&handler, nullptr, args));

  TestAction invalid;
  group.visitInOrder(makeInstances(2));
  EXPECT_CALL(invalid, validateArgs(testing::Ref(args), &handler)).WillOnce(Return(false));
  EXPECT_CALL(group, forEachInstance(_)).Times(0);
  EXPECT_FALSE(invalid.execute(&handler, &group, args));
  EXPECT_TRUE(visits.visited.empty());
}

TEST_F(UpgradeActionTest, VisitsEveryInstanceWithAFilterAndTheHandlerAndAndsTheResults) {
  args.addArgument("rdnValue", "2");
  const struct {
    int instances;
    std::set<int> failing;
    bool result;
  } cases[] = {{0, {}, true}, {3, {}, true}, {3, {1}, false}, {2, {0}, false}};
  for (const auto& c : cases) {
    visits = Visits();
    std::vector<InstanceIf*> members = makeInstances(c.instances);
    for (int index : c.failing) visits.failing.insert(members[index]);
    group.visitInOrder(members);
    TestAction action;
    EXPECT_CALL(action, validateArgs(_, _)).WillOnce(Return(true));
    EXPECT_EQ(c.result, action.execute(&handler, &group, args)) << c.instances;
    EXPECT_EQ(members, visits.visited);
    std::vector<bool> admitted;
    for (int i = 0; i < c.instances; ++i) admitted.push_back(i == 1);
    EXPECT_EQ(admitted, visits.admitted);
    EXPECT_EQ(c.instances == 0 ? nullptr : &handler, visits.handler);
  }
}

TEST_F(UpgradeActionTest, GroupCheckOfTheActionDecidesWhetherANullGroupProceeds) {
  GrouplessAction action;
  testing::InSequence order;
  EXPECT_CALL(action, validateArgs(_, &handler)).WillOnce(Return(true));
  EXPECT_CALL(action, executeAction(&handler, nullptr, testing::Ref(args))).WillOnce(Return(true));

  EXPECT_TRUE(action.execute(&handler, nullptr, args));
}

TEST(RdnValueTest, ValueOfTheFirstRdnUnescaped) {
  const std::pair<const char*, const char*> cases[] = {
      {"aId=1,bId=2", "1"}, {"aId=,bId=2", ""},  {"aId=x=y,b=1", "x=y"},        {"noEquals", ""},
      {"a,b=2,c=3", ""},    {"aId=x\\,y,b=1", "x,y"}, {"aId=x\\\\,b=1", "x\\"}, {"id=struct 1", "struct 1"}};
  for (const auto& [ldn, value] : cases) EXPECT_EQ(value, UpgradeAction::rdnValue(ldn)) << ldn;
}

}  // namespace
