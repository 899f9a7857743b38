#include "icti/Instance.h"

#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "icti/AttributeName.h"

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

TEST(InstanceTest, TheLdnIsTheRdnBelowTheParent) {
  Instance root("", "topId", "1", "Top");
  EXPECT_EQ("topId=1", root.getLdn());
  EXPECT_FALSE(root.hasLdn("topId=1,"));
  Instance child("Top=1", "fooId", "7", "Foo");
  EXPECT_EQ("fooId=7,Top=1", child.getLdn());
  for (const char* other : {"fooId=7,Top=12", "fooId=7", "fooId=8,Top=1", "fooId=7;Top=1"}) {
    EXPECT_FALSE(child.hasLdn(other)) << other;
  }
  EXPECT_TRUE(child.hasLdn("fooId=7,Top=1"));
}

// What the RDN of an instance read from a record is, by the attributes in record order.
TEST(InstanceTest, TheReadRdnComesFromTheTargetsRdnAttributeTheClassOrTheStructId) {
  struct Read {
    const char* name;
    ValueType type;
    const char* value;
  };
  const Read barId = {"barId", ValueType::kString, "7"}, key = {"key", ValueType::kString, "k1"};
  const struct {
    std::string targetRdnAttribute;
    std::vector<Read> attributes;
    std::string rdn;
  } cases[] = {
      {"", {{"barId", ValueType::kUint32, "9"}}, "barId=9"},
      {"", {{"id", ValueType::kInt32, "3"}}, ""},
      {"key", {key, barId}, "key=k1"},
      {"key", {barId, key}, "barId=7"},
      {"key", {{"key", ValueType::kInt32, "1"}, {"id", ValueType::kString, "4"}}, "id=4"},
      // A name attribute may carry the RDN too, and a value with "=" is the whole RDN as written.
      {"key", {{"key", ValueType::kName, "k1"}}, "key=k1"},
      {"key", {{"key", ValueType::kString, "keyCfg=a\\,b"}}, "keyCfg=a\\,b"},
      {"", {{"barId", ValueType::kString, "a,b"}}, "barId=a\\,b"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.targetRdnAttribute + " -> " + c.rdn);
    LogRecorder::installed().clear();
    Instance instance(AttributeName::of("Bar"), nullptr);
    std::vector<AttributeBase*> readOrder;
    for (const Read& read : c.attributes) {
      readOrder.push_back(instance.addReadAttribute(AttributeName::of(read.name), read.type));
      readOrder.back()->addCopy(read.value);
    }
    instance.nameByAttributes(readOrder, c.targetRdnAttribute);
    EXPECT_EQ(c.rdn, instance.getRdn());
    EXPECT_EQ(c.rdn.empty(), logged("Could not find rdn in SafcImmCtInstanceT input for Bar"));
  }
}

TEST(InstanceTest, AttributesAreKeptOncePerNameInByteWiseOrderUntilErased) {
  Instance instance("Top=1", "fooId", "2", "Foo");
  for (uint32_t code : {0u, 11u}) EXPECT_FALSE(instance.addAttribute("a", static_cast<ValueType>(code))) << code;
  AttributeInternalIf* first = nullptr;
  ASSERT_TRUE(instance.addAttribute("a", ValueType::kInt32, &first));
  AttributeInternalIf* second = first;
  EXPECT_TRUE(instance.addAttribute("a", ValueType::kString, &second));
  EXPECT_EQ(nullptr, second);
  EXPECT_EQ(first, instance.getAttribute("a"));
  for (const char* name : {"b", "B", "_", "aa"}) instance.addAttribute(name, ValueType::kInt32);
  EXPECT_EQ((std::vector<std::string>{"B", "_", "a", "aa", "b", "fooId"}), attributeNames(instance));
  EXPECT_TRUE(instance.eraseAttribute("a"));
  EXPECT_FALSE(instance.eraseAttribute("a"));
  EXPECT_FALSE(instance.eraseAttribute("c"));
  EXPECT_EQ((std::vector<std::string>{"B", "_", "aa", "b", "fooId"}), attributeNames(instance));
}

// That the group learns of a rename is checked with the group (InstanceGroupIndexTest).
// Packed attributes leave the block when asked for, erased or displaced;
// every way must give the same attributes as objects would (the sanitizer
// builds see a wrong release).
TEST(InstanceTest, PackedAttributesAreErasedDisplacedAndJoinedLikeOthers) {
  const std::vector<PackedAttributes::Layout::Read> read = {{AttributeName::of("fooId"), ValueType::kString},
                                                            {AttributeName::of("ref"), ValueType::kName},
                                                            {AttributeName::of("n"), ValueType::kInt32},
                                                            {AttributeName::of("label"), ValueType::kString},
                                                            {AttributeName::of("many"), ValueType::kUint64}};
  const PackedAttributes::Layout* layout = PackedAttributes::Layout::of(read);
  ASSERT_NE(nullptr, layout);
  EXPECT_EQ(layout, PackedAttributes::Layout::of(read));
  Instance instance(AttributeName::of("Foo"), std::make_shared<const std::string>("Top=1"));
  PackedAttributes& packed = instance.readPacked(*layout);
  for (size_t i = 0; i < read.size(); ++i) {
    packed.lend(layout->slotRead(i), [&read, i](AttributeBase& attribute) {
      const bool number = read[i].second == ValueType::kInt32 || read[i].second == ValueType::kUint64;
      ASSERT_TRUE(attribute.addCopy(number ? "5" : read[i].first->c_str()));
      if (read[i].second == ValueType::kUint64) {
        ASSERT_TRUE(attribute.addCopy("6"));
      }
    });
  }
  instance.nameByAttributes({}, "");
  EXPECT_EQ("fooId=fooId,Top=1", instance.getLdn());

  EXPECT_TRUE(instance.eraseAttribute("label"));
  EXPECT_FALSE(instance.eraseAttribute("label"));
  ASSERT_TRUE(instance.setRdn("ref=x"));
  AttributeInternalIf* added = nullptr;
  ASSERT_TRUE(instance.addAttribute("z", ValueType::kString, &added));
  ASSERT_TRUE(added->addCopy("zz"));
  EXPECT_EQ(2u, instance.getAttribute("many")->getNumberOfValues());
  EXPECT_EQ((std::vector<std::string>{"many", "n", "ref", "z"}), attributeNames(instance));
  EXPECT_EQ(ValueType::kString, instance.getAttribute("ref")->getType());
  for (const auto& [name, value] : {std::pair<const char*, const char*>{"n", "5"}, {"ref", "x"}, {"z", "zz"}}) {
    EXPECT_EQ(value, instance.getAttribute(name)->readValueAtIndex(0).value_or("")) << name;
  }
}

// Attributes that share a name or have no value type are read one by one.
TEST(InstanceTest, OnlyDistinctlyNamedValueTypesPack) {
  const std::string* a = AttributeName::of("a");
  const std::string* b = AttributeName::of("b");
  EXPECT_EQ(nullptr,
            PackedAttributes::Layout::of({{a, ValueType::kInt32}, {b, ValueType::kInt32}, {a, ValueType::kString}}));
  EXPECT_EQ(nullptr, PackedAttributes::Layout::of({{a, ValueType::kInt32}, {b, static_cast<ValueType>(11)}}));
  const PackedAttributes::Layout* layout =
      PackedAttributes::Layout::of({{b, ValueType::kInt32}, {a, ValueType::kName}});
  ASSERT_NE(nullptr, layout);
  EXPECT_EQ(a, layout->name(0));
  EXPECT_EQ(1u, layout->slotRead(0));
}

TEST(InstanceTest, SetRdnRenamesTheAttribute) {
  Instance instance("Top=1", "fooId", "1", "Foo");
  instance.addAttribute("zeta", ValueType::kInt32);
  instance.addAttribute("barId", ValueType::kInt32);
  EXPECT_FALSE(instance.setRdn("fooId"));
  EXPECT_FALSE(instance.setRdn("fooId=1,Top=1"));
  EXPECT_TRUE(instance.setRdn("barId=2"));
  EXPECT_EQ("barId=2,Top=1", instance.getLdn());
  EXPECT_EQ((std::vector<std::string>{"barId", "zeta"}), attributeNames(instance));
  AttributeInternalIf* rdn = instance.getAttribute("barId");
  EXPECT_EQ(ValueType::kString, rdn->getType());
  EXPECT_EQ(1u, rdn->getNumberOfValues());
  EXPECT_EQ("2", rdn->readValueAtIndex(0));
  // The name holds the value escaped, the attribute the value itself.
  EXPECT_TRUE(instance.setRdn("barId=a\\,b"));
  EXPECT_EQ("a,b", rdn->readValueAtIndex(0));
  // A value with "=" could not be told from a whole RDN: the attribute holds the whole RDN.
  EXPECT_TRUE(instance.setRdn("barId=k=v"));
  EXPECT_EQ("barId=k=v", rdn->readValueAtIndex(0));
}

}  // namespace
