#include <gtest/gtest.h>

#include "ActionModel.h"
#include "actions/RenameMoTypeAction.h"
#include "icti/ValueType.h"

namespace {

// Foo (fooId=1 and fooId=2 below ME=1) with a struct attribute, children and
// grandchildren, and a class that refers to Foo instances and to others.
class RenameMoTypeActionTest : public testing::Test {
 protected:
  RenameMoTypeActionTest()
      : foo1(model.add("Foo", "ME=1", "1", {{"settings", ValueType::kName, {"id=settings_0,fooId=1,ME=1"}}})),
        referrer(model.add("Ref", "ME=1", "1",
                           {{"fooRef",
                             ValueType::kName,
                             {"fooId=2,ME=1", "xfooId=1,ME=1", "childId=1,fooId=1,ME=1", "fooIdx=1,ME=1"}}})) {
    model.add("Foo", "ME=1", "2");
    model.add("FooSettings", "fooId=1,ME=1", "settings_0", {}, "id");
    model.add("Child", "fooId=1,ME=1", "1");
    model.add("Child", "xfooId=1,ME=1", "2");
    model.add("Grandchild", "childId=1,fooId=2,ME=1", "1");
  }

  bool run(const Args& args) { return model.run(action, "Foo", args); }

  RenameMoTypeAction action;
  ActionModel model;
  InstanceIf& foo1;
  InstanceIf& referrer;
};

// The whole runs check the move of a struct, a child and a reference, and
// renameRdns below the near names; this checks the descendants' descendants.
TEST_F(RenameMoTypeActionTest, DescendantsOfEveryListedClassMove) {
  EXPECT_TRUE(run(argsOf("newName=Bar structAttr1=settings structType1=FooSettings descendant1=Child "
                         "descendant2=Grandchild")));
  EXPECT_EQ(Strings{}, model.failures);
  EXPECT_EQ(Strings{"grandchildId=1,childId=1,barId=2,ME=1"}, model.ldns("Grandchild"));
}

TEST_F(RenameMoTypeActionTest, ArgumentRules) {
  const std::string newName = "RenameMoTypeAction requires argument newName.";
  const std::string structs = "RenameMoTypeAction requires structAttrN and structTypeN arguments to come in pair.";
  const std::string references =
      "RenameMoTypeAction requires morefAttrN and referringMoTypeN arguments to come in pair.";
  const struct {
    const char* args;
    bool valid;
    Strings failures;
  } cases[] = {{"newName=Bar", true, {}},
               {"name=Foo", false, {newName, structs, references}},
               {"newName=Bar structAttr1=s", false, {structs, references}},
               {"newName=Bar morefAttr1=r referringMoType1=Ref morefAttr3=q", true, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    model.failures.clear();
    EXPECT_EQ(c.valid, model.validate(action, argsOf(c.args)));
    EXPECT_EQ(c.failures, model.failures);
  }
}

// Child stays: descendants follow only with struct attributes, and descendant2 comes after a gap.
TEST_F(RenameMoTypeActionTest, NumberingStopsAtTheFirstGap) {
  ActionModel::set(foo1, "otherRef", ValueType::kName, {"fooId=2,ME=1"});
  EXPECT_TRUE(
      run(argsOf("newName=Bar morefAttr1=fooRef referringMoType1=Ref morefAttr3=otherRef referringMoType3=NoSuchClass "
                 "descendant2=Child")));
  EXPECT_EQ(Strings{}, model.failures);
  EXPECT_EQ("barId=2,ME=1", ActionModel::values(referrer, "fooRef")[0]);
  EXPECT_EQ(Strings{"fooId=2,ME=1"}, ActionModel::values(foo1, "otherRef"));
  EXPECT_EQ("childId=1,fooId=1,ME=1", model.ldns("Child")[0]);
}

// A referring class no model defines is the action base's check (MoTypeActionsTest).
TEST_F(RenameMoTypeActionTest, MissingDependantsKeepInstancesOutOfTheNewClass) {
  const struct {
    const char* extra;
    std::string failure;  // for each instance that stays out
    Strings moved;
  } cases[] = {
      {"structAttr1=unset structType1=Child descendant1=Nowhere", "No instance group Nowhere", {}},
      {"morefAttr1=fooRef referringMoType1=Nowhere", "Not able to get referring MO type Nowhere", {}},
      {"morefAttr1=fooRef referringMoType1=Ref", "No reference attribute fooRef on instance refId=2,ME=1", {}},
      {"structAttr1=settings structType1=Nowhere", "No struct MO type Nowhere", {}},
      {"structAttr1=settings structType1=Child", "Not able to retrieve struct instance id=settings_0,fooId=1,ME=1",
       {"barId=2,ME=1"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.extra);
    ActionModel fresh;
    fresh.add("Foo", "ME=1", "1", {{"settings", ValueType::kName, {"id=settings_0,fooId=1,ME=1"}}});
    fresh.add("Foo", "ME=1", "2");
    fresh.group("Child");
    fresh.add("Ref", "ME=1", "1", {{"fooRef", ValueType::kName, {}}});
    fresh.add("Ref", "ME=1", "2");
    fresh.defined.insert("Nowhere");
    fresh.run(action, "Foo", argsOf(std::string("newName=Bar ") + c.extra));
    EXPECT_EQ(Strings(2 - c.moved.size(), c.failure), fresh.failures);
    EXPECT_FALSE(fresh.has("Foo"));
    EXPECT_EQ(c.moved, fresh.ldns("Bar"));
  }
}

TEST_F(RenameMoTypeActionTest, RefusedRenamesKeepTheOldClass) {
  EXPECT_FALSE(model.run(action, "FooSettings", {{"newName", "Other"}}));
  EXPECT_EQ(Strings{"RenameMoTypeAction can not be performed on struct MO types"}, model.failures);
  EXPECT_TRUE(model.has("FooSettings"));
  EXPECT_FALSE(model.has("Other"));
  model.group("Bar");
  EXPECT_FALSE(run({{"newName", "Bar"}}));
  EXPECT_EQ((Strings{"fooId=1,ME=1", "fooId=2,ME=1"}), model.ldns("Foo"));
}

// A name that does not derive from the class (its naming attribute is no
// "<class>Id") belongs to the instance and stays.
TEST(RenameMoTypeActionRdnsTest, NamesThatDoNotFollowTheClassStay) {
  ActionModel model;
  model.add("Svc", "ME=1", "a", {}, "svcName");
  RenameMoTypeAction action;
  EXPECT_TRUE(model.run(action, "Svc", {{"newName", "Box"}}));
  EXPECT_EQ(Strings{"svcName=a,ME=1"}, model.ldns("Box"));
}

TEST(RenameMoTypeActionRdnsTest, OnlyWholeRdnsOfTheOldAttributeChange) {
  struct Case {
    const char* name;
    const char* renamed;
  } cases[] = {{"childId=3,fooId=1,ME=1", "childId=3,barId=1,ME=1"},
               {"fooId=1,fooId=2", "barId=1,barId=2"},
               {"xfooId=1,ME=1", "xfooId=1,ME=1"},
               {"fooIdx=1,ME=1", "fooIdx=1,ME=1"},
               {"childId=fooId=1", "childId=fooId=1"},
               {"fooId", "fooId"},
               {"fooId=", "barId="}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.renamed, RenameMoTypeAction::renameRdns(c.name, "fooId", "barId")) << c.name;
  }
}

}  // namespace
