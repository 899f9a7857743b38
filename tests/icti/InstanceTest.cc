#include "icti/Instance.h"

#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "PlatformRecords.h"
#include "icti/DistinguishedName.h"

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

TEST(InstanceTest, NewInstanceHasItsRdnAttributeAndLdn) {
  Instance root("", "topId", "1", "Top");
  EXPECT_EQ("topId=1", root.getLdn());
  EXPECT_FALSE(root.hasLdn("topId=1,"));
  Instance child("Top=1", "fooId", "7", "Foo");
  EXPECT_EQ("fooId=7", child.getRdn());
  EXPECT_EQ("fooId=7,Top=1", child.getLdn());
  EXPECT_TRUE(child.hasLdn("fooId=7,Top=1"));
  EXPECT_FALSE(child.hasLdn("fooId=7,Top=12"));
  EXPECT_FALSE(child.hasLdn("fooId=7"));
  EXPECT_EQ("Foo", child.className());
  AttributeInternalIf* rdn = child.getAttribute("fooId");
  ASSERT_NE(nullptr, rdn);
  EXPECT_EQ(static_cast<uint32_t>(SA_IMM_ATTR_SASTRINGT), rdn->getType());
  EXPECT_STREQ("7", rdn->readValueAtIndex(0));
  EXPECT_EQ(nullptr, child.getAttribute("missing"));
  EXPECT_EQ(std::vector<std::string>{"fooId"}, attributeNames(child));
}

TEST(InstanceTest, AddAttributeByTypeCode) {
  const std::pair<uint32_t, bool> cases[] = {{1, true}, {2, true}, {3, true}, {4, true},  {5, true},  {6, true},
                                             {7, true}, {8, true}, {9, true}, {10, true}, {0, false}, {11, false}};
  for (const auto& [type, created] : cases) {
    LogRecorder::installed().clear();
    Instance instance("", "fooId", "1", "Foo");
    AttributeInternalIf* attribute = reinterpret_cast<AttributeInternalIf*>(1);
    EXPECT_EQ(created, instance.addAttribute("a", type, &attribute)) << type;
    EXPECT_EQ(attribute, instance.getAttribute("a"));
    if (created) {
      ASSERT_NE(nullptr, attribute);
      EXPECT_EQ(type, attribute->getType());
    } else {
      EXPECT_TRUE(logged("Unable to create attribute a")) << type;
    }
  }
}

TEST(InstanceTest, AttributesAreKeptOncePerNameInByteWiseOrderUntilErased) {
  Instance instance("Top=1", "fooId", "2", "Foo");
  AttributeInternalIf* first = nullptr;
  ASSERT_TRUE(instance.addAttribute("a", SA_IMM_ATTR_SAINT32T, &first));
  first->addCopy("5");
  AttributeInternalIf* second = first;
  EXPECT_TRUE(instance.addAttribute("a", SA_IMM_ATTR_SASTRINGT, &second));
  EXPECT_EQ(nullptr, second);
  EXPECT_EQ(first, instance.getAttribute("a"));
  EXPECT_STREQ("5", first->readValueAtIndex(0));
  EXPECT_TRUE(logged("Instance: fooId=2,Top=1 already has attribute with name: a"));

  for (const char* name : {"b", "B", "_", "aa"}) instance.addAttribute(name, SA_IMM_ATTR_SAINT32T);
  EXPECT_EQ((std::vector<std::string>{"B", "_", "a", "aa", "b", "fooId"}), attributeNames(instance));
  EXPECT_TRUE(instance.eraseAttribute("a"));
  EXPECT_EQ(nullptr, instance.getAttribute("a"));
  EXPECT_FALSE(instance.eraseAttribute("a"));
  EXPECT_TRUE(logged("Tried to remove non-existing Attribute a"));
  EXPECT_EQ((std::vector<std::string>{"B", "_", "aa", "b", "fooId"}), attributeNames(instance));
}

TEST(InstanceTest, FromARecordFindsTheRdn) {
  const AttributeData barId = {"barId", SA_IMM_ATTR_SASTRINGT, {"7"}};
  const AttributeData key = {"key", SA_IMM_ATTR_SASTRINGT, {"k1"}};
  const struct {
    std::string targetRdnAttribute;
    std::vector<AttributeData> attributes;
    std::string rdn;
  } cases[] = {
      {"", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}, barId}, "barId=7"},
      {"", {{"barId", SA_IMM_ATTR_SAUINT32T, {"9"}}}, "barId=9"},
      {"", {{"id", SA_IMM_ATTR_SASTRINGT, {"3"}}}, "id=3"},
      {"", {{"id", SA_IMM_ATTR_SAINT32T, {"3"}}}, ""},
      {"key", {key, barId}, "key=k1"},
      {"key", {barId, key}, "barId=7"},
      {"key", {{"key", SA_IMM_ATTR_SAINT32T, {"1"}}, {"id", SA_IMM_ATTR_SASTRINGT, {"4"}}}, "id=4"},
      {"", {{"x", SA_IMM_ATTR_SAINT32T, {"1"}}}, ""},
      // A name attribute may carry the RDN too, and a value with "=" is the whole RDN as written.
      {"key", {{"key", SA_IMM_ATTR_SANAMET, {"k1"}}}, "key=k1"},
      {"key", {{"key", SA_IMM_ATTR_SASTRINGT, {"keyCfg=a\\,b"}}}, "keyCfg=a\\,b"},
      {"", {{"barId", SA_IMM_ATTR_SASTRINGT, {"a,b"}}}, "barId=a\\,b"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.targetRdnAttribute + " -> " + c.rdn);
    LogRecorder::installed().clear();
    PlatformRecords records;
    Instance instance(records.instance({std::nullopt, c.attributes}), "Bar", c.targetRdnAttribute);
    EXPECT_EQ(c.rdn, instance.getRdn());
    EXPECT_EQ(c.attributes.size(), instance.getAttributes().size());
    EXPECT_EQ(c.rdn.empty(), logged("Could not find rdn in SafcImmCtInstanceT input for Bar"));
  }
}

TEST(InstanceTest, FromARecordReadsParentAndValues) {
  PlatformRecords records;
  Instance instance(records.instance({"Top=1", {{"barId", SA_IMM_ATTR_SASTRINGT, {"1"}},
                                                {"n", SA_IMM_ATTR_SAINT64T, {"4", "5"}}}}),
                    "Bar");
  EXPECT_EQ("barId=1,Top=1", instance.getLdn());
  EXPECT_STREQ("5", instance.getAttribute("n")->readValueAtIndex(1));
  Instance root(records.instance({std::nullopt, {}}), "Bar");
  EXPECT_EQ("", root.getParentName());
}

class CountingOwner : public Instance::Owner {
 public:
  void renamed(Instance& instance) override { names.push_back(instance.getLdn()); }
  std::vector<std::string> names;
};

TEST(InstanceTest, SetRdnRenamesTheAttributeAndTellsTheOwner) {
  CountingOwner owner;
  Instance instance("Top=1", "fooId", "1", "Foo");
  instance.setOwner(&owner, nullptr);
  instance.addAttribute("zeta", SA_IMM_ATTR_SAINT32T);
  instance.addAttribute("barId", SA_IMM_ATTR_SAINT32T);
  EXPECT_FALSE(instance.setRdn("fooId"));
  EXPECT_FALSE(instance.setRdn("fooId=1,Top=1"));
  EXPECT_EQ("fooId=1", instance.getRdn());
  EXPECT_TRUE(instance.setRdn("barId=2"));
  EXPECT_EQ("barId=2,Top=1", instance.getLdn());
  EXPECT_EQ(nullptr, instance.getAttribute("fooId"));
  AttributeInternalIf* rdn = instance.getAttribute("barId");
  ASSERT_NE(nullptr, rdn);
  EXPECT_EQ(static_cast<uint32_t>(SA_IMM_ATTR_SASTRINGT), rdn->getType());
  EXPECT_EQ(1u, rdn->getNumberOfValues());
  EXPECT_STREQ("2", rdn->readValueAtIndex(0));
  EXPECT_EQ((std::vector<std::string>{"barId", "zeta"}), attributeNames(instance));
  // The name holds the value escaped, the attribute the value itself.
  EXPECT_TRUE(instance.setRdn("barId=a\\,b"));
  EXPECT_STREQ("a,b", rdn->readValueAtIndex(0));
  // A value with "=" could not be told from a whole RDN: the attribute holds the whole RDN.
  EXPECT_TRUE(instance.setRdn("barId=k=v"));
  EXPECT_STREQ("barId=k=v", rdn->readValueAtIndex(0));
  EXPECT_TRUE(instance.setRdn("barId=a\\,b"));

  instance.setParentName("Top=2");
  instance.setOwner(nullptr, nullptr);
  instance.setParentName("Top=3");
  EXPECT_EQ((std::vector<std::string>{"barId=2,Top=1", "barId=a\\,b,Top=1", "barId=k=v,Top=1", "barId=a\\,b,Top=1",
                                      "barId=a\\,b,Top=2"}),
            owner.names);
}

// Values and how names write them; the separator after a written value is
// the first one found.
TEST(DistinguishedNameTest, ValuesRoundTripThroughTheirWrittenForm) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain", "plain"},  {"a,b", "a\\,b"},     {"a\\b", "a\\b"},         {"a\\", "a\\\\"},
      {"a\\,b", "a\\\\\\,b"}, {"x\\\\y", "x\\\\\\y"}, {",", "\\,"}, {"", ""}};
  for (const auto& [value, written] : cases) {
    EXPECT_EQ(written, DistinguishedName::escapeValue(value)) << value;
    EXPECT_EQ(value, DistinguishedName::unescapeValue(written)) << written;
    const std::string name = "xId=" + written + ",topId=1";
    EXPECT_EQ(4 + written.size(), DistinguishedName::nextSeparator(name)) << name;
    EXPECT_EQ("topId=1", DistinguishedName::parentOf(name)) << name;
    EXPECT_EQ(value, DistinguishedName::rdnValue(name)) << name;
  }
}

}  // namespace
