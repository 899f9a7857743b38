#include "icti/InstanceGroup.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "LogRecorder.h"

namespace {

bool logged(const std::string& text) { return LogRecorder::installed().contains(text); }

std::vector<std::string> ldnsOf(const std::vector<InstanceIf*>& instances) {
  std::vector<std::string> ldns;
  for (InstanceIf* instance : instances) ldns.push_back(instance->getLdn());
  return ldns;
}

TEST(InstanceGroupTest, CreateInstanceNamesItAfterTheClassOrTheStructOrTheTarget) {
  InstanceGroup group("Ns", "Foo");
  InstanceIf* created = group.createInstance("Top=1", "1", false, "");
  ASSERT_NE(nullptr, created);
  EXPECT_EQ("fooId=1,Top=1", created->getLdn());
  EXPECT_EQ(created, group.getInstance("fooId=1,Top=1"));
  EXPECT_NE(nullptr, created->getAttribute("fooId"));
  EXPECT_EQ(nullptr, group.createInstance("Top=1", "1", false, ""));
  EXPECT_TRUE(logged("The instance fooId=1,Top=1 could not be created because it already exists"));
  EXPECT_EQ(1u, group.getNumberOfInstances());
  // The RDN attribute, once chosen, stays: also for a struct request.
  EXPECT_EQ("fooId=2,Top=1", group.createInstance("Top=1", "2", true, "S")->getLdn());
  EXPECT_EQ("fooId=3", group.createInstance("", "3", false, "")->getLdn());

  InstanceGroup pairs("Ns", "Pair");
  pairs.createInstance("Top=1", "1", true, "Pair");
  EXPECT_TRUE(pairs.isStructGroup());
  EXPECT_EQ("id=2,Top=1", pairs.createInstance("Top=1", "2", false, "")->getLdn());
}

TEST(InstanceGroupTest, EraseUnlinksButKeepsTheInstance) {
  InstanceGroup group("", "Foo");
  InstanceIf* first = group.createInstance("Top=1", "1", false, "");
  group.createInstance("Top=1", "2", false, "");

  EXPECT_FALSE(group.eraseInstance(""));
  EXPECT_TRUE(logged("Tried to remove instance with empty ldn"));
  EXPECT_FALSE(group.eraseInstance("fooId=9,Top=1"));
  EXPECT_TRUE(logged("Could not find fooId=9,Top=1 for removal"));
  EXPECT_EQ(2u, group.getNumberOfInstances());

  EXPECT_TRUE(group.eraseInstance("fooId=1,Top=1"));
  EXPECT_EQ(1u, group.getNumberOfInstances());
  EXPECT_EQ(nullptr, group.getInstance("fooId=1,Top=1"));
  EXPECT_EQ((std::vector<std::string>{"fooId=2,Top=1"}), ldnsOf(group.getChildInstances("Top=1")));
  // Still alive for whoever holds it; renaming it no longer touches the group.
  EXPECT_EQ("fooId=1", first->getRdn());
  first->setRdn("fooId=2");
  EXPECT_EQ(1u, group.getInstances().size());
  EXPECT_NE(first, group.getInstance("fooId=2,Top=1"));
  // The name is free again.
  EXPECT_NE(nullptr, group.createInstance("Top=1", "1", false, ""));
}

TEST(InstanceGroupTest, FirstMatchWinsAmongEqualNames) {
  InstanceGroup group("", "Foo");
  auto* a = new Instance("Top=1", "fooId", "1", "Foo");
  auto* b = new Instance("Top=1", "fooId", "1", "Foo");
  EXPECT_EQ(1u, group.addInstance(a));
  EXPECT_EQ(2u, group.addInstance(b));
  EXPECT_EQ(2u, group.addInstance(b));
  EXPECT_EQ(a, group.getInstance("fooId=1,Top=1"));
  EXPECT_TRUE(group.eraseInstance("fooId=1,Top=1"));
  EXPECT_EQ(b, group.getInstance("fooId=1,Top=1"));

  // A rename that moves a later instance onto an earlier name: list order
  // still decides.
  auto* c = new Instance("Top=1", "fooId", "3", "Foo");
  group.addInstance(c);
  c->setRdn("fooId=1");
  EXPECT_EQ(b, group.getInstance("fooId=1,Top=1"));
  EXPECT_EQ(nullptr, group.createInstance("Top=1", "1", false, ""));
  b->setRdn("fooId=4");
  EXPECT_EQ(c, group.getInstance("fooId=1,Top=1"));
}

TEST(InstanceGroupTest, DetachHandsOverOwnership) {
  InstanceGroup group("", "Foo");
  InstanceIf* kept = group.createInstance("Top=1", "1", false, "");
  std::unique_ptr<InstanceIf> detached(group.createInstance("Top=1", "2", false, ""));
  group.detachInstance(detached.get());
  EXPECT_EQ(1u, group.getNumberOfInstances());
  EXPECT_EQ(nullptr, group.getInstance("fooId=2,Top=1"));
  EXPECT_EQ((std::vector<InstanceIf*>{kept}), group.getChildInstances("Top=1"));

  Instance stranger("Top=1", "fooId", "1", "Foo");
  group.detachInstance(&stranger);
  group.detachInstance(nullptr);
  EXPECT_EQ(1u, group.getNumberOfInstances());

  InstanceGroup other("", "Foo");
  other.addInstance(detached.release());
  EXPECT_NE(nullptr, other.getInstance("fooId=2,Top=1"));
}

// ---------------------------------------------------------------------------
// Walking the group.

InstanceGroup* g_group = nullptr;
std::vector<std::string> g_visited;

TEST(InstanceGroupWalkTest, VisitsAllEvenWhenErasingAndAddingAndAndsTheResults) {
  InstanceGroup group("", "Foo");
  for (const char* id : {"1", "2", "3", "4"}) group.createInstance("", id, false, "");
  g_group = &group;
  EXPECT_FALSE(group.forEachInstance(
      [](InstanceIf& instance) {
        g_visited.push_back(instance.getRdn());
        if (instance.getRdn() == "fooId=1") {
          g_group->eraseInstance("fooId=1");  // the one being visited
          g_group->eraseInstance("fooId=3");  // one still ahead
        }
        if (instance.getRdn() == "fooId=4") g_group->createInstance("", "5", false, "");
        return instance.getRdn() != "fooId=2";
      }));
  EXPECT_EQ((std::vector<std::string>{"fooId=1", "fooId=2", "fooId=4", "fooId=5"}), g_visited);
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
