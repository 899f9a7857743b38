#include "icti/InstanceGroup.h"

#include <gtest/gtest.h>

#include <random>

namespace {

std::vector<std::string> ldnsOf(const std::vector<InstanceIf*>& instances) {
  std::vector<std::string> ldns;
  for (InstanceIf* instance : instances) ldns.push_back(instance->getLdn());
  return ldns;
}

TEST(InstanceGroupTest, CreateInstanceNamesItAfterTheClassOrTheStructOnce) {
  InstanceGroup group("Ns", "Foo");
  group.createInstance("Top=1", "1", false, "");
  // The RDN attribute, once chosen, stays: also for a struct request.
  EXPECT_EQ("fooId=2,Top=1", group.createInstance("Top=1", "2", true, "S")->getLdn());
  InstanceGroup pairs("Ns", "Pair");
  pairs.createInstance("Top=1", "1", true, "Pair");
  EXPECT_TRUE(pairs.isStructGroup());
  EXPECT_EQ("id=2,Top=1", pairs.createInstance("Top=1", "2", false, "")->getLdn());
}

TEST(InstanceGroupTest, AnErasedInstanceStaysAliveButLeavesTheGroup) {
  InstanceGroup group("", "Foo");
  InstanceIf* first = group.createInstance("Top=1", "1", false, "");
  group.createInstance("Top=1", "2", false, "");
  EXPECT_FALSE(group.eraseInstance(""));
  EXPECT_FALSE(group.eraseInstance("fooId=9,Top=1"));
  EXPECT_TRUE(group.eraseInstance("fooId=1,Top=1"));
  // Renaming it no longer touches the group.
  first->setRdn("fooId=2");
  EXPECT_EQ(1u, group.getInstances().size());
  EXPECT_NE(first, group.getInstance("fooId=2,Top=1"));
  EXPECT_NE(nullptr, group.createInstance("Top=1", "1", false, ""));
}

// Among equal names the first in list order is found, also after renames.
TEST(InstanceGroupTest, FirstMatchWinsAmongEqualNames) {
  InstanceGroup group("", "Foo");
  InstanceIf* a = group.createInstance("Top=1", "1", false, "");
  InstanceIf* b = group.createInstance("Top=1", "2", false, "");
  InstanceIf* c = group.createInstance("Top=1", "3", false, "");
  b->setRdn("fooId=1");
  EXPECT_EQ(a, group.getInstance("fooId=1,Top=1"));
  EXPECT_TRUE(group.eraseInstance("fooId=1,Top=1"));
  c->setRdn("fooId=1");
  EXPECT_EQ(b, group.getInstance("fooId=1,Top=1"));
  b->setRdn("fooId=4");
  EXPECT_EQ(c, group.getInstance("fooId=1,Top=1"));
}

TEST(InstanceGroupWalkTest, VisitsAllEvenWhenErasingAndAddingAndAndsTheResults) {
  InstanceGroup group("", "Foo");
  for (const char* id : {"1", "2", "3", "4"}) group.createInstance("", id, false, "");
  std::vector<std::string> visited;
  EXPECT_FALSE(group.forEachInstance([&](InstanceIf& instance) {
    visited.push_back(instance.getRdn());
    if (instance.getRdn() == "fooId=1") {
      group.eraseInstance("fooId=1");  // the one being visited
      group.eraseInstance("fooId=3");  // one still ahead
    }
    if (instance.getRdn() == "fooId=4") group.createInstance("", "5", false, "");
    return instance.getRdn() != "fooId=2";
  }));
  EXPECT_EQ((std::vector<std::string>{"fooId=1", "fooId=2", "fooId=4", "fooId=5"}), visited);
  EXPECT_EQ((std::vector<std::string>{"fooId=2", "fooId=4", "fooId=5"}), ldnsOf(group.getInstances()));
}

// ---------------------------------------------------------------------------
// The indexes against a plain walk, over many random changes.

TEST(InstanceGroupIndexTest, AgreesWithAWalkOverRandomChanges) {
  InstanceGroup group("", "Foo");
  std::mt19937 random(42);
  auto pick = [&](int n) { return static_cast<int>(random() % n); };
  auto parent = [&] { return pick(4) == 0 ? std::string() : "P=" + std::to_string(pick(5)); };
  for (int step = 0; step < 800; ++step) {
    std::vector<InstanceIf*> all = group.getInstances();
    InstanceIf* some = all.empty() ? nullptr : all[pick(all.size())];
    const int change = pick(6);
    if (change < 2) group.createInstance(parent(), std::to_string(pick(30)), false, "");
    if (some != nullptr && change == 2) group.eraseInstance(some->getLdn());
    if (some != nullptr && change == 3) some->setParentName(parent());
    if (some != nullptr && change == 4) some->setRdn("fooId=" + std::to_string(pick(30)));
    if (some != nullptr && change == 5) group.detachInstance(some), group.addInstance(some);

    all = group.getInstances();
    ASSERT_EQ(all.size(), group.getNumberOfInstances());
    const std::string p = parent();
    const std::string ldn = "fooId=" + std::to_string(pick(30)) + (p.empty() ? "" : "," + p);
    std::vector<InstanceIf*> children;
    InstanceIf* found = nullptr;
    for (InstanceIf* instance : all) {
      if (instance->getParentName() == p) children.push_back(instance);
      if (found == nullptr && instance->getLdn() == ldn) found = instance;
    }
    ASSERT_EQ(children, group.getChildInstances(p)) << "step " << step;
    ASSERT_EQ(found, group.getInstance(ldn)) << "step " << step << " " << ldn;
  }
}

}  // namespace
