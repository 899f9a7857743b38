#include "icti/Instance.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "LogRecorder.h"
#include "PlatformRecords.h"

namespace {

bool logged(const std::string& text) { return LogRecorder::installed().contains(text); }

std::vector<std::string> attributeNames(const Instance& instance) {
  std::vector<std::string> names;
  for (const auto& [name, attribute] : instance.getAttributes()) {
    EXPECT_EQ(name, attribute->getName());
    names.push_back(name);
  }
  return names;
}

TEST(InstanceTest, LdnIsRdnThenParent) {
  Instance root("", "topId", "1", "Top");
  EXPECT_EQ("topId=1", root.getLdn());
  Instance child("Top=1", "foo", "2", "Foo");
  EXPECT_EQ("foo=2", child.getRdn());
  EXPECT_EQ("foo=2,Top=1", child.getLdn());
  EXPECT_TRUE(child.hasLdn("foo=2,Top=1"));
  EXPECT_FALSE(child.hasLdn("foo=2,Top=12"));
  EXPECT_FALSE(child.hasLdn("foo=2"));
  EXPECT_FALSE(root.hasLdn("topId=1,"));
}

TEST(InstanceTest, NewInstanceHasItsRdnAttribute) {
  Instance instance("Top=1", "fooId", "7", "Foo");
  EXPECT_TRUE(logged("Instance::Instance(_parentName: Top=1, _rdnAttribute: fooId, _rdnId: 7, _className: Foo)"));
  AttributeInternalIf* rdn = instance.getAttribute("fooId");
  ASSERT_NE(nullptr, rdn);
  EXPECT_EQ(static_cast<uint32_t>(SA_IMM_ATTR_SASTRINGT), rdn->getType());
  EXPECT_STREQ("7", rdn->readValueAtIndex(0));
  EXPECT_EQ("Top=1", instance.getParentName());
  EXPECT_EQ("Foo", instance.className());
}

TEST(InstanceTest, GetAttributeNeverInserts) {
  Instance instance("", "fooId", "1", "Foo");
  EXPECT_EQ(nullptr, instance.getAttribute("missing"));
  EXPECT_EQ(std::vector<std::string>{"fooId"}, attributeNames(instance));
}

TEST(InstanceTest, AddAttributeByTypeCode) {
  struct Case {
    uint32_t type;
    bool created;
  };
  const Case kCases[] = {{1, true}, {2, true}, {3, true}, {4, true}, {5, false}, {6, true},
                         {7, false}, {8, true}, {9, true}, {10, true}, {0, false}, {11, false}};
  for (const Case& c : kCases) {
    LogRecorder::installed().clear();
    Instance instance("", "fooId", "1", "Foo");
    AttributeInternalIf* created = reinterpret_cast<AttributeInternalIf*>(1);
    EXPECT_EQ(c.created, instance.addAttribute("a", c.type, &created)) << c.type;
    if (c.created) {
      ASSERT_NE(nullptr, created);
      EXPECT_EQ(c.type, created->getType());
      EXPECT_EQ(created, instance.getAttribute("a"));
    } else {
      EXPECT_EQ(nullptr, created);
      EXPECT_EQ(nullptr, instance.getAttribute("a"));
      EXPECT_TRUE(logged("Unable to create attribute a")) << c.type;
    }
  }
}

TEST(InstanceTest, AddingAnExistingNameKeepsTheAttribute) {
  Instance instance("Top=1", "fooId", "2", "Foo");
  AttributeInternalIf* first = nullptr;
  ASSERT_TRUE(instance.addAttribute("a", SA_IMM_ATTR_SAINT32T, &first));
  first->addCopy("5");
  AttributeInternalIf* second = first;
  EXPECT_TRUE(instance.addAttribute("a", SA_IMM_ATTR_SASTRINGT, &second));
  EXPECT_EQ(nullptr, second);
  EXPECT_EQ(first, instance.getAttribute("a"));
  EXPECT_STREQ("5", instance.getAttribute("a")->readValueAtIndex(0));
  EXPECT_TRUE(logged("Instance: fooId=2,Top=1 already has attribute with name: a"));
}

TEST(InstanceTest, AttributesAreInByteWiseNameOrder) {
  Instance instance("", "m", "1", "M");
  for (const char* name : {"b", "B", "a", "_", "aa"}) instance.addAttribute(name, SA_IMM_ATTR_SAINT32T);
  EXPECT_EQ((std::vector<std::string>{"B", "_", "a", "aa", "b", "m"}), attributeNames(instance));
}

TEST(InstanceTest, EraseAttribute) {
  Instance instance("", "fooId", "1", "Foo");
  instance.addAttribute("a", SA_IMM_ATTR_SAINT32T);
  EXPECT_TRUE(instance.eraseAttribute("a"));
  EXPECT_TRUE(logged("Erase attribute a"));
  EXPECT_EQ(nullptr, instance.getAttribute("a"));
  EXPECT_FALSE(instance.eraseAttribute("a"));
  EXPECT_TRUE(logged("Tried to remove non-existing Attribute a"));
  EXPECT_EQ(std::vector<std::string>{"fooId"}, attributeNames(instance));
}

// ---------------------------------------------------------------------------
// From platform records.

struct RdnCase {
  const char* what;
  std::string targetRdnAttribute;
  std::vector<AttributeData> attributes;
  std::string rdn;
  const char* calculated;
};

TEST(InstanceRecordTest, FindsTheRdn) {
  const RdnCase kCases[] = {
      {"class rdn",
       "",
       {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}, {"barId", SA_IMM_ATTR_SASTRINGT, {"7"}}},
       "barId=7",
       "RDN calculated from ICTI = barId=7, className: Bar, MOclassRdn: 1, structClassRdn: 0, rdnFoundInToState: 0"},
      {"class rdn of any type",
       "",
       {{"barId", SA_IMM_ATTR_SAUINT32T, {"9"}}},
       "barId=9",
       "RDN calculated from ICTI = barId=9, className: Bar, MOclassRdn: 1, structClassRdn: 0, rdnFoundInToState: 0"},
      {"struct rdn",
       "",
       {{"id", SA_IMM_ATTR_SASTRINGT, {"3"}}},
       "id=3",
       "RDN calculated from ICTI = id=3, className: Bar, MOclassRdn: 0, structClassRdn: 1, rdnFoundInToState: 0"},
      {"struct rdn must be a string", "", {{"id", SA_IMM_ATTR_SAINT32T, {"3"}}}, "", nullptr},
      {"target model rdn",
       "key",
       {{"key", SA_IMM_ATTR_SASTRINGT, {"k1"}}, {"barId", SA_IMM_ATTR_SASTRINGT, {"7"}}},
       "key=k1",
       "RDN calculated from ICTI = key=k1, className: Bar, MOclassRdn: 0, structClassRdn: 0, rdnFoundInToState: 1"},
      {"first in record order wins",
       "key",
       {{"barId", SA_IMM_ATTR_SASTRINGT, {"7"}}, {"key", SA_IMM_ATTR_SASTRINGT, {"k1"}}},
       "barId=7",
       nullptr},
      {"target model rdn must be a string",
       "key",
       {{"key", SA_IMM_ATTR_SAINT32T, {"1"}}, {"id", SA_IMM_ATTR_SASTRINGT, {"4"}}},
       "id=4",
       nullptr},
      {"no rdn",
       "",
       {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}},
       "",
       "RDN calculated from ICTI = , className: Bar, MOclassRdn: 0, structClassRdn: 0, rdnFoundInToState: 0"},
  };
  for (const RdnCase& c : kCases) {
    LogRecorder::installed().clear();
    PlatformRecords records;
    Instance instance(records.instance({std::nullopt, c.attributes}), "Bar", c.targetRdnAttribute);
    EXPECT_EQ(c.rdn, instance.getRdn()) << c.what;
    EXPECT_EQ(c.attributes.size(), instance.getAttributes().size()) << c.what;
    if (c.calculated != nullptr) {
      EXPECT_TRUE(logged(c.calculated)) << c.what;
    }
    EXPECT_EQ(c.rdn.empty(), logged("Could not find rdn in SafcImmCtInstanceT input for Bar")) << c.what;
  }
}

TEST(InstanceRecordTest, ReadsParentAndValues) {
  PlatformRecords records;
  Instance instance(records.instance({"Top=1", {{"barId", SA_IMM_ATTR_SASTRINGT, {"1"}},
                                                {"n", SA_IMM_ATTR_SAINT64T, {"4", "5"}}}}),
                    "Bar");
  EXPECT_TRUE(logged("Instance::instance(SafcImmCtInstanceT *, string) _className: Bar"));
  EXPECT_TRUE(logged("Parent name Top=1"));
  EXPECT_EQ("barId=1,Top=1", instance.getLdn());
  EXPECT_STREQ("5", instance.getAttribute("n")->readValueAtIndex(1));

  Instance root(records.instance({std::nullopt, {}}), "Bar");
  EXPECT_TRUE(logged("No parent to Bar"));
  EXPECT_EQ("", root.getParentName());
}

// ---------------------------------------------------------------------------
// Renaming.

TEST(InstanceRenameTest, SetRdnRenamesTheAttributeAndStoresTheValue) {
  Instance instance("Top=1", "fooId", "1", "Foo");
  instance.addAttribute("zeta", SA_IMM_ATTR_SAINT32T);
  instance.setRdn("barId=2");
  EXPECT_EQ("barId=2", instance.getRdn());
  EXPECT_EQ("barId=2,Top=1", instance.getLdn());
  EXPECT_EQ(nullptr, instance.getAttribute("fooId"));
  AttributeInternalIf* rdn = instance.getAttribute("barId");
  ASSERT_NE(nullptr, rdn);
  EXPECT_EQ("barId", rdn->getName());
  EXPECT_EQ(1u, rdn->getNumberOfValues());
  EXPECT_STREQ("2", rdn->readValueAtIndex(0));
  EXPECT_EQ((std::vector<std::string>{"barId", "zeta"}), attributeNames(instance));
}

TEST(InstanceRenameTest, SetRdnReplacesAnAttributeOfTheNewName) {
  Instance instance("", "fooId", "1", "Foo");
  instance.addAttribute("barId", SA_IMM_ATTR_SAINT32T);
  instance.setRdn("barId=x");
  EXPECT_EQ((std::vector<std::string>{"barId"}), attributeNames(instance));
  EXPECT_EQ(static_cast<uint32_t>(SA_IMM_ATTR_SASTRINGT), instance.getAttribute("barId")->getType());
  EXPECT_STREQ("x", instance.getAttribute("barId")->readValueAtIndex(0));
}

TEST(InstanceRenameTest, SetRdnWithoutEqualsThrowsAndChangesNothing) {
  Instance instance("", "fooId", "1", "Foo");
  EXPECT_THROW(instance.setRdn("fooId"), std::out_of_range);
  EXPECT_EQ("fooId=1", instance.getRdn());
  EXPECT_NE(nullptr, instance.getAttribute("fooId"));
}

class CountingOwner : public Instance::Owner {
 public:
  void renamed(Instance& instance) override { names.push_back(instance.getLdn()); }
  std::vector<std::string> names;
};

TEST(InstanceRenameTest, OwnerHearsOfEveryRename) {
  CountingOwner owner;
  Instance instance("Top=1", "fooId", "1", "Foo");
  instance.setOwner(&owner, nullptr);
  instance.setRdn("fooId=2");
  instance.setParentName("Top=2");
  instance.setOwner(nullptr, nullptr);
  instance.setParentName("Top=3");
  EXPECT_EQ((std::vector<std::string>{"fooId=2,Top=1", "fooId=2,Top=2"}), owner.names);
}

}  // namespace
