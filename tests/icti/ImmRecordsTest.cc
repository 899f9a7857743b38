#include "icti/ImmRecords.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "LogRecorder.h"
#include "PlatformRecords.h"
#include "icti/InstanceGroup.h"

namespace {

bool logged(const std::string& text) { return LogRecorder::installed().contains(text); }

std::string describeWritten(const InstanceGroup& group) {
  ImmRecords records;
  EXPECT_TRUE(records.add(group));
  return describe(records.terminated()[0]);
}

std::unique_ptr<InstanceGroup> read(SafcImmCtInstanceGroupT* record, const std::string& rdnAttribute = "") {
  return ImmRecords::readGroup(*record, rdnAttribute, "Ns");
}

// What is read and written back gives the record it came from, for every
// value type and its edges: one attribute of each type on an instance, in
// name order as the model writes them.
TEST(ImmRecordsTest, ReadAndWrittenBackGivesTheSameRecord) {
  const AttributeData cases[] = {
      {"a", SA_IMM_ATTR_SAINT32T, {"-2147483648", "2147483647", "0"}},
      {"a", SA_IMM_ATTR_SAUINT32T, {"4294967295"}},
      {"a", SA_IMM_ATTR_SAINT64T, {"-9223372036854775808"}},
      {"a", SA_IMM_ATTR_SAUINT64T, {"18446744073709551615", "0"}},
      {"a", SA_IMM_ATTR_SATIMET, {"9223372036854775807"}},
      {"a", SA_IMM_ATTR_SANAMET, {"A=1,B=2", "", std::string(599, 'n')}},
      {"a", SA_IMM_ATTR_SAFLOATT, {"0.100000001", "-3.40282347e+38"}},
      {"a", SA_IMM_ATTR_SADOUBLET, {"0.125", "4.9406564584124654e-324"}},
      {"a", SA_IMM_ATTR_SASTRINGT, {"text", ""}},
      {"a", SA_IMM_ATTR_SAANYT, {"00ff10", ""}},
      {"a", SA_IMM_ATTR_SAINT32T, {}},
  };
  for (const AttributeData& attribute : cases) {
    SCOPED_TRACE(describe(PlatformRecords().attribute(attribute)));
    PlatformRecords records;
    SafcImmCtInstanceGroupT* record =
        records.group("NsFoo", {{"Top=1,Root=1", {attribute, {"fooId", SA_IMM_ATTR_SASTRINGT, {"1"}}}},
                                {std::nullopt, {{"fooId", SA_IMM_ATTR_SASTRINGT, {"2"}}}}});
    auto group = read(record);
    EXPECT_EQ(describe(record), describeWritten(*group));
  }
}

TEST(ImmRecordsTest, NamesKeepTheirLengthFieldAndAtMost599Characters) {
  PlatformRecords records;
  SafcImmCtInstanceT* instance = records.instance({std::nullopt, {{"fooId", SA_IMM_ATTR_SASTRINGT, {"1"}}}});
  SaImmAttrValuesT_2 names = {const_cast<char*>("n"), SA_IMM_ATTR_SANAMET, 3, nullptr};
  SaImmAttrValueT values[] = {records.name("a=1,b=2", 3), records.name(std::string(600, 'z'), 700),
                              records.name("c=3", 1000), nullptr};
  names.attrValues = values;
  SaImmAttrValuesT_2* attributes[] = {instance->attrValues[0], &names, nullptr};
  instance->attrValues = attributes;
  SafcImmCtInstanceT* instances[] = {instance, nullptr};
  SafcImmCtInstanceGroupT record = {const_cast<char*>("NsFoo"), instances};

  auto group = read(&record);
  AttributeInternalIf* name = group->getFirstInstance()->getAttribute("n");
  EXPECT_EQ("a=1", name->readValueAtIndex(0));
  EXPECT_EQ(std::string(599, 'z'), name->readValueAtIndex(1));
  EXPECT_EQ("instance parent=null\n  fooId:9[1] '1'\n  n:6[3] a=1#3 " + std::string(599, 'z') + "#700 c=3#1000\n",
            describeWritten(*group).substr(std::string("class NsFoo\n").size()));
}

TEST(ImmRecordsTest, ReadingCopiesEverythingAndSkipsNullValues) {
  PlatformRecords records;
  SafcImmCtInstanceGroupT* record = records.group(
      "NsFoo", {{"Top=1", {{"fooId", SA_IMM_ATTR_SASTRINGT, {"b"}}, {"blob", SA_IMM_ATTR_SAANYT, {"0a0b", "ff"}}}}});
  SaImmAttrValuesT_2* blob = record->instances[0]->attrValues[1];
  blob->attrValues[1] = nullptr;
  auto group = read(record);
  static_cast<SaAnyT*>(blob->attrValues[0])->bufferAddr[0] = 0;
  (*static_cast<SaStringT*>(record->instances[0]->attrValues[0]->attrValues[0]))[0] = 'X';
  record->instances[0]->parentName->value[0] = 'X';

  InstanceIf* instance = group->getFirstInstance();
  EXPECT_EQ("fooId=b,Top=1", instance->getLdn());
  EXPECT_EQ(1u, instance->getAttribute("blob")->getNumberOfValues());
  EXPECT_EQ((std::vector<uint8_t>{0x0a, 0x0b}), instance->getAttribute("blob")->getRawDataValueAtIndex(0));
}

TEST(ImmRecordsTest, AGroupKeepsTheRecordOrderAndLosesThePrefix) {
  PlatformRecords records;
  SafcImmCtInstanceGroupT* record =
      records.group("NsFoo", {{"Top=1", {{"fooId", SA_IMM_ATTR_SASTRINGT, {"b"}}}},
                              {"Top=1", {{"fooId", SA_IMM_ATTR_SASTRINGT, {"a"}}}},
                              {std::nullopt, {{"fooId", SA_IMM_ATTR_SASTRINGT, {"c"}}}}});
  auto group = read(record);
  EXPECT_EQ("Foo", group->getClassName());
  EXPECT_EQ("NsFoo", group->getImmClassName());
  EXPECT_TRUE(logged("Creating instance group Foo"));
  std::vector<std::string> ldns;
  for (InstanceIf* instance : group->getInstances()) ldns.push_back(instance->getLdn());
  EXPECT_EQ((std::vector<std::string>{"fooId=b,Top=1", "fooId=a,Top=1", "fooId=c"}), ldns);
  EXPECT_EQ(2u, group->getChildInstances("Top=1").size());
  EXPECT_EQ("NsFoo", ImmRecords::readGroup(*record, "", "Other")->getClassName());
  // The RDN attribute read with the group names the instances it creates.
  EXPECT_EQ("key=1,Top=1", ImmRecords::readGroup(*records.group("NsFoo", {}), "key", "Ns")
                               ->createInstance("Top=1", "1", true, "")
                               ->getLdn());
}

TEST(ImmRecordsTest, TheRdnComesFromTheTargetsRdnAttributeTheClassOrTheStructId) {
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
      {"", {barId, {"barId", SA_IMM_ATTR_SASTRINGT, {"8"}}}, "barId=7"},
      // A name attribute may carry the RDN too, and a value with "=" is the whole RDN as written.
      {"key", {{"key", SA_IMM_ATTR_SANAMET, {"k1"}}}, "key=k1"},
      {"key", {{"key", SA_IMM_ATTR_SASTRINGT, {"keyCfg=a\\,b"}}}, "keyCfg=a\\,b"},
      {"", {{"barId", SA_IMM_ATTR_SASTRINGT, {"a,b"}}}, "barId=a\\,b"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.targetRdnAttribute + " -> " + c.rdn);
    LogRecorder::installed().clear();
    PlatformRecords records;
    auto group = read(records.group("NsBar", {{std::nullopt, c.attributes}}), c.targetRdnAttribute);
    EXPECT_EQ(c.rdn, group->getFirstInstance()->getRdn());
    EXPECT_EQ(c.rdn.empty(), logged("Could not find rdn in SafcImmCtInstanceT input for Bar"));
  }
}

TEST(ImmRecordsTest, WrittenRecordsShowTheModelAsItIsNow) {
  PlatformRecords records;
  auto group = read(records.group("NsFoo", {{"Top=1", {{"fooId", SA_IMM_ATTR_SASTRINGT, {"1"}},
                                                        {"i", SA_IMM_ATTR_SAINT32T, {"5"}}}},
                                            {std::nullopt, {{"fooId", SA_IMM_ATTR_SASTRINGT, {"2"}}}}}));
  ASSERT_TRUE(group->eraseInstance("fooId=2"));
  InstanceIf* created = group->createInstance(std::string(700, 'p'), "3", false, "");
  created->addAttribute("z", ValueType::kName);
  created->getAttribute("z")->addCopy(std::string(700, 'q').c_str());

  ImmRecords written;
  ASSERT_TRUE(written.add(*group));
  SafcImmCtInstanceGroupT* record = written.terminated()[0];
  EXPECT_EQ(nullptr, written.terminated()[1]);
  EXPECT_EQ("class NsFoo\ninstance parent=Top=1#5\n  fooId:9[1] '1'\n  i:1[1] 5\ninstance parent=" +
                std::string(599, 'p') + "#700\n  fooId:9[1] '3'\n  z:6[1] " + std::string(599, 'q') + "#700\n",
            describe(record));
  // The record lends the model's own values.
  group->getFirstInstance()->getAttribute("i")->setValueAtIndex(0, "8");
  EXPECT_EQ(8, *static_cast<SaInt32T*>(record->instances[0]->attrValues[1]->attrValues[0]));
  EXPECT_EQ(group->getImmClassName().c_str(), record->className);
}

}  // namespace
