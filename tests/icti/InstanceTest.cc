#include "icti/Instance.h"

#include <gtest/gtest.h>

#include "LogRecorder.h"
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
  EXPECT_EQ(ValueType::kString, rdn->getType());
  EXPECT_EQ("7", rdn->readValueAtIndex(0));
  EXPECT_EQ(nullptr, child.getAttribute("missing"));
  EXPECT_EQ(std::vector<std::string>{"fooId"}, attributeNames(child));
}

TEST(InstanceTest, AnAttributeOfNoTypeIsRefused) {
  Instance instance("", "fooId", "1", "Foo");
  for (uint32_t code : {0u, 11u}) EXPECT_FALSE(instance.addAttribute("a", static_cast<ValueType>(code))) << code;
  EXPECT_EQ(nullptr, instance.getAttribute("a"));
  EXPECT_TRUE(logged("Unable to create attribute a"));
}

TEST(InstanceTest, AttributesAreKeptOncePerNameInByteWiseOrderUntilErased) {
  Instance instance("Top=1", "fooId", "2", "Foo");
  AttributeInternalIf* first = nullptr;
  ASSERT_TRUE(instance.addAttribute("a", ValueType::kInt32, &first));
  first->addCopy("5");
  AttributeInternalIf* second = first;
  EXPECT_TRUE(instance.addAttribute("a", ValueType::kString, &second));
  EXPECT_EQ(nullptr, second);
  EXPECT_EQ(first, instance.getAttribute("a"));
  EXPECT_EQ("5", first->readValueAtIndex(0));
  EXPECT_TRUE(logged("Instance: fooId=2,Top=1 already has attribute with name: a"));

  for (const char* name : {"b", "B", "_", "aa"}) instance.addAttribute(name, ValueType::kInt32);
  EXPECT_EQ((std::vector<std::string>{"B", "_", "a", "aa", "b", "fooId"}), attributeNames(instance));
  EXPECT_TRUE(instance.eraseAttribute("a"));
  EXPECT_EQ(nullptr, instance.getAttribute("a"));
  EXPECT_FALSE(instance.eraseAttribute("a"));
  EXPECT_TRUE(logged("Tried to remove non-existing Attribute a"));
  EXPECT_EQ((std::vector<std::string>{"B", "_", "aa", "b", "fooId"}), attributeNames(instance));
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
  instance.addAttribute("zeta", ValueType::kInt32);
  instance.addAttribute("barId", ValueType::kInt32);
  EXPECT_FALSE(instance.setRdn("fooId"));
  EXPECT_FALSE(instance.setRdn("fooId=1,Top=1"));
  EXPECT_EQ("fooId=1", instance.getRdn());
  EXPECT_TRUE(instance.setRdn("barId=2"));
  EXPECT_EQ("barId=2,Top=1", instance.getLdn());
  EXPECT_EQ(nullptr, instance.getAttribute("fooId"));
  AttributeInternalIf* rdn = instance.getAttribute("barId");
  ASSERT_NE(nullptr, rdn);
  EXPECT_EQ(ValueType::kString, rdn->getType());
  EXPECT_EQ(1u, rdn->getNumberOfValues());
  EXPECT_EQ("2", rdn->readValueAtIndex(0));
  EXPECT_EQ((std::vector<std::string>{"barId", "zeta"}), attributeNames(instance));
  // The name holds the value escaped, the attribute the value itself.
  EXPECT_TRUE(instance.setRdn("barId=a\\,b"));
  EXPECT_EQ("a,b", rdn->readValueAtIndex(0));
  // A value with "=" could not be told from a whole RDN: the attribute holds the whole RDN.
  EXPECT_TRUE(instance.setRdn("barId=k=v"));
  EXPECT_EQ("barId=k=v", rdn->readValueAtIndex(0));
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
