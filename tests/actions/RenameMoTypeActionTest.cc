#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "actions/RenameMoTypeAction.h"
#include "safcImmCt.h"

namespace {

using Texts = std::vector<std::string>;

// Foo (fooId=1 and fooId=2 below ME=1) with a struct attribute, children and
// grandchildren, and a class that refers to Foo instances and to others.
class RenameMoTypeActionTest : public testing::Test {
 protected:
  RenameMoTypeActionTest() {
    InstanceGroup& foos = handler.group("Foo");
    foo1 = foos.createInstance("ME=1", "1", false, "");
    foo2 = foos.createInstance("ME=1", "2", false, "");
    setValues(*foo1, "settings", SA_IMM_ATTR_SANAMET, {"id=settings_0,fooId=1,ME=1"});
    handler.group("FooSettings").createInstance("fooId=1,ME=1", "settings_0", true, "");

    handler.group("Child").createInstance("fooId=1,ME=1", "1", false, "");
    handler.group("Child").createInstance("xfooId=1,ME=1", "2", false, "");
    handler.group("Grandchild").createInstance("childId=1,fooId=2,ME=1", "1", false, "");

    referrer = handler.group("Ref").createInstance("ME=1", "1", false, "");
    setValues(*referrer, "fooRef", SA_IMM_ATTR_SANAMET,
              {"fooId=2,ME=1", "xfooId=1,ME=1", "childId=1,fooId=1,ME=1", "fooIdx=1,ME=1"});
  }

  bool run(const ArgumentList& list) {
    auto args = makeArguments(list);
    return action.execute(&handler, handler.getInstanceGroup("Foo", "", false), *args);
  }

  RenameMoTypeAction action;
  InMemoryIctiHandler handler;
  InstanceIf* foo1;
  InstanceIf* foo2;
  InstanceIf* referrer;
};

TEST_F(RenameMoTypeActionTest, InstancesMoveToTheNewClassWithTheirDependants) {
  EXPECT_TRUE(run({{"newName", "Bar"},
                   {"structAttr1", "settings"},
                   {"structType1", "FooSettings"},
                   {"descendant1", "Child"},
                   {"descendant2", "Grandchild"},
                   {"morefAttr1", "fooRef"},
                   {"referringMoType1", "Ref"}}));
  EXPECT_EQ(Texts{}, handler.failures);
  EXPECT_FALSE(handler.has("Foo"));
  ASSERT_TRUE(handler.has("Bar"));
  InstanceGroup& bars = handler.group("Bar");
  EXPECT_EQ((Texts{"barId=1,ME=1", "barId=2,ME=1"}), ldnsOf(bars));
  EXPECT_EQ("Bar", bars.getImmClassName());
  EXPECT_EQ(Texts{"1"}, valuesOf(*foo1, "barId"));
  EXPECT_EQ(Texts{"<absent>"}, valuesOf(*foo1, "fooId"));
  EXPECT_EQ(Texts{"id=settings_0,barId=1,ME=1"}, valuesOf(*foo1, "settings"));
  EXPECT_EQ(Texts{"id=settings_0,barId=1,ME=1"}, ldnsOf(handler.group("FooSettings")));
  EXPECT_EQ((Texts{"childId=1,barId=1,ME=1", "childId=2,xfooId=1,ME=1"}), ldnsOf(handler.group("Child")));
  EXPECT_EQ(Texts{"grandchildId=1,childId=1,barId=2,ME=1"}, ldnsOf(handler.group("Grandchild")));
  EXPECT_EQ((Texts{"barId=2,ME=1", "xfooId=1,ME=1", "childId=1,barId=1,ME=1", "fooIdx=1,ME=1"}),
            valuesOf(*referrer, "fooRef"));
}

TEST_F(RenameMoTypeActionTest, ArgumentRules) {
  const std::string newName = "RenameMoTypeAction requires argument newName.";
  const std::string structs = "RenameMoTypeAction requires structAttrN and structTypeN arguments to come in pair.";
  const std::string references =
      "RenameMoTypeAction requires morefAttrN and referringMoTypeN arguments to come in pair.";
  struct Case {
    const char* what;
    ArgumentList args;
    bool valid;
    Texts failures;
  } cases[] = {
      {"newName alone", {{"newName", "Bar"}}, true, {}},
      {"no newName", {{"name", "Foo"}}, false, {newName, structs, references}},
      {"struct attribute without type", {{"newName", "Bar"}, {"structAttr1", "s"}}, false, {structs, references}},
      {"struct type alone", {{"newName", "Bar"}, {"structType1", "S"}}, true, {}},
      {"second struct pair broken",
       {{"newName", "Bar"}, {"structAttr1", "s"}, {"structType1", "S"}, {"structAttr2", "t"}},
       false,
       {structs, references}},
      {"reference without class", {{"newName", "Bar"}, {"morefAttr1", "r"}}, false, {references}},
      {"referring class alone", {{"newName", "Bar"}, {"referringMoType1", "Ref"}}, true, {}},
      {"gap ends the pairs",
       {{"newName", "Bar"}, {"morefAttr1", "r"}, {"referringMoType1", "Ref"}, {"morefAttr3", "q"}},
       true,
       {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    handler.failures.clear();
    auto args = makeArguments(c.args);
    EXPECT_EQ(c.valid, action.validateArgs(*args, &handler));
    EXPECT_EQ(c.failures, handler.failures);
  }
}

TEST_F(RenameMoTypeActionTest, NumberingStopsAtTheFirstGap) {
  setValues(*foo1, "otherRef", SA_IMM_ATTR_SANAMET, {"fooId=2,ME=1"});
  EXPECT_TRUE(run({{"newName", "Bar"},
                   {"morefAttr1", "fooRef"},
                   {"referringMoType1", "Ref"},
                   {"morefAttr3", "otherRef"},
                   {"referringMoType3", "NoSuchClass"},
                   {"descendant2", "Child"}}));
  EXPECT_EQ(Texts{}, handler.failures);
  EXPECT_EQ("barId=2,ME=1", valuesOf(*referrer, "fooRef")[0]);
  EXPECT_EQ(Texts{"fooId=2,ME=1"}, valuesOf(*foo1, "otherRef"));
  EXPECT_EQ("childId=1,fooId=1,ME=1", ldnsOf(handler.group("Child"))[0]);
}

TEST_F(RenameMoTypeActionTest, DescendantsFollowOnlyTogetherWithStructAttributes) {
  EXPECT_TRUE(run({{"newName", "Bar"}, {"descendant1", "Child"}}));
  EXPECT_EQ(Texts{}, handler.failures);
  EXPECT_EQ("childId=1,fooId=1,ME=1", ldnsOf(handler.group("Child"))[0]);
}

TEST_F(RenameMoTypeActionTest, MissingDependantsKeepInstancesOutOfTheNewClass) {
  struct Case {
    const char* what;
    ArgumentList extra;
    Texts failures;
    Texts moved;
  } cases[] = {
      {"descendant class",
       {{"structAttr1", "unset"}, {"structType1", "Child"}, {"descendant1", "Nowhere"}},
       {"No instance group Nowhere", "No instance group Nowhere"},
       {}},
      {"referring class",
       {{"morefAttr1", "fooRef"}, {"referringMoType1", "Nowhere"}},
       {"Not able to get referring MO type Nowhere", "Not able to get referring MO type Nowhere"},
       {}},
      {"reference attribute",
       {{"morefAttr1", "fooRef"}, {"referringMoType1", "Ref"}},
       {"No reference attribute fooRef on instance refId=2,ME=1",
        "No reference attribute fooRef on instance refId=2,ME=1"},
       {}},
      {"struct class",
       {{"structAttr1", "settings"}, {"structType1", "Nowhere"}},
       {"No struct MO type Nowhere", "No struct MO type Nowhere"},
       {}},
      {"struct instance",
       {{"structAttr1", "settings"}, {"structType1", "Child"}},
       {"Not able to retrieve struct instance id=settings_0,fooId=1,ME=1"},
       {"barId=2,ME=1"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    InMemoryIctiHandler fresh;
    InstanceGroup& foos = fresh.group("Foo");
    setValues(*foos.createInstance("ME=1", "1", false, ""), "settings", SA_IMM_ATTR_SANAMET,
              {"id=settings_0,fooId=1,ME=1"});
    foos.createInstance("ME=1", "2", false, "");
    fresh.group("Child");
    setValues(*fresh.group("Ref").createInstance("ME=1", "1", false, ""), "fooRef", SA_IMM_ATTR_SANAMET, {});
    fresh.group("Ref").createInstance("ME=1", "2", false, "");
    ArgumentList list = {{"newName", "Bar"}};
    list.insert(list.end(), c.extra.begin(), c.extra.end());
    auto args = makeArguments(list);
    action.execute(&fresh, &foos, *args);
    EXPECT_EQ(c.failures, fresh.failures);
    EXPECT_FALSE(fresh.has("Foo"));
    EXPECT_EQ(c.moved, ldnsOf(fresh.group("Bar")));
  }
}

TEST_F(RenameMoTypeActionTest, StructClassIsNotRenamed) {
  auto args = makeArguments({{"newName", "Other"}});
  EXPECT_FALSE(action.execute(&handler, handler.getInstanceGroup("FooSettings", "", false), *args));
  EXPECT_EQ(Texts{"RenameMoTypeAction can not be performed on struct MO types"}, handler.failures);
  EXPECT_TRUE(handler.has("FooSettings"));
  EXPECT_FALSE(handler.has("Other"));
}

TEST_F(RenameMoTypeActionTest, ExistingNewClassFailsAndKeepsTheOldOne) {
  handler.group("Bar");
  EXPECT_FALSE(run({{"newName", "Bar"}}));
  EXPECT_EQ((Texts{"fooId=1,ME=1", "fooId=2,ME=1"}), ldnsOf(handler.group("Foo")));
}

TEST_F(RenameMoTypeActionTest, AbsentClassIsReportedWithBothNames) {
  auto args = makeArguments({{"name", "Foo"}, {"newName", "Bar"}});
  EXPECT_FALSE(action.execute(&handler, nullptr, *args));
  EXPECT_EQ(Texts{"Action Failed: renameMoType: No instance group to operate on. Renaming a non-existing MO class "
                  "is not permitted. Action arguments: name = Foo, value = Bar "},
            handler.failures);
}

TEST(RenameMoTypeActionRdnsTest, OnlyWholeRdnsOfTheOldAttributeChange) {
  struct Case {
    const char* name;
    const char* renamed;
  } cases[] = {
      {"fooId=1", "barId=1"},
      {"fooId=1,ME=1", "barId=1,ME=1"},
      {"childId=3,fooId=1,ME=1", "childId=3,barId=1,ME=1"},
      {"fooId=1,fooId=2", "barId=1,barId=2"},
      {"xfooId=1,ME=1", "xfooId=1,ME=1"},
      {"fooIdx=1,ME=1", "fooIdx=1,ME=1"},
      {"childId=fooId=1", "childId=fooId=1"},
      {"fooId", "fooId"},
      {"fooId=", "barId="},
      {"", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.renamed, RenameMoTypeAction::renameRdns(c.name, "fooId", "barId")) << c.name;
  }
}

}  // namespace
