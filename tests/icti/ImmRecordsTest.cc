#include "icti/ImmRecords.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "icti/InstanceGroup.h"

// Values of every type at their edges go through the records in the whole
// runs (NothingLostPropertyTest); these are the cases a node may hand out
// that the simulated node never writes. Records are built by writing a model;
// that the written records hold the model as it is now is part of the whole runs.

namespace {

// The record `records` writes for `group`, the only one it holds.
SafcImmCtInstanceGroupT& written(ImmRecords& records, const InstanceGroup& group) {
  EXPECT_TRUE(records.add(group));
  EXPECT_EQ(nullptr, records.terminated()[1]);
  return *records.terminated()[0];
}

SaNameT& nameValue(const SafcImmCtInstanceGroupT& record, size_t attribute, size_t index) {
  return *static_cast<SaNameT*>(record.instances[0]->attrValues[attribute]->attrValues[index]);
}

TEST(ImmRecordsTest, NamesKeepTheirLengthFieldAndAtMost599Characters) {
  InstanceGroup group("Ns", "Foo");
  InstanceIf* instance = group.createInstance(std::string(700, 'p'), "1", false, "");
  instance->addAttribute("n", ValueType::kName);
  instance->getAttribute("n")->addCopy("a=1,b=2");
  instance->getAttribute("n")->addCopy(std::string(700, 'z').c_str());
  ImmRecords records;
  SafcImmCtInstanceGroupT& record = written(records, group);
  EXPECT_EQ(700, record.instances[0]->parentName->length);
  EXPECT_EQ(std::string(599, 'p'), reinterpret_cast<const char*>(record.instances[0]->parentName->value));
  EXPECT_EQ(700, nameValue(record, 1, 1).length);
  nameValue(record, 1, 0).length = 3;  // a length field shorter than the text

  auto read = ImmRecords::readGroup(record, "", "Ns");
  AttributeInternalIf* name = read->getFirstInstance()->getAttribute("n");
  EXPECT_EQ("a=1", name->readValueAtIndex(0));
  EXPECT_EQ(std::string(599, 'z'), name->readValueAtIndex(1));
  ImmRecords again;
  SafcImmCtInstanceGroupT& rewritten = written(again, *read);
  EXPECT_EQ(3, nameValue(rewritten, 1, 0).length);
  EXPECT_EQ(700, nameValue(rewritten, 1, 1).length);
}

TEST(ImmRecordsTest, ReadingCopiesEverythingAndSkipsNullValues) {
  InstanceGroup group("Ns", "Foo");
  InstanceIf* instance = group.createInstance("Top=1", "b", false, "");
  instance->addAttribute("blob", ValueType::kAny);
  instance->getAttribute("blob")->addCopy(std::vector<uint8_t>{0x0a, 0x0b});
  instance->getAttribute("blob")->addCopy(std::vector<uint8_t>{0xff});
  ImmRecords records;
  SafcImmCtInstanceT& record = *written(records, group).instances[0];
  record.attrValues[0]->attrValues[1] = nullptr;
  auto read = ImmRecords::readGroup(*records.terminated()[0], "", "Ns");
  static_cast<SaAnyT*>(record.attrValues[0]->attrValues[0])->bufferAddr[0] = 0;
  (*static_cast<SaStringT*>(record.attrValues[1]->attrValues[0]))[0] = 'X';
  record.parentName->value[0] = 'X';

  InstanceIf* copy = read->getFirstInstance();
  EXPECT_EQ("fooId=b,Top=1", copy->getLdn());
  EXPECT_EQ(1u, copy->getAttribute("blob")->getNumberOfValues());
  EXPECT_EQ((std::vector<uint8_t>{0x0a, 0x0b}), copy->getAttribute("blob")->getRawDataValueAtIndex(0));
}

TEST(ImmRecordsTest, AGroupKeepsTheRecordOrderAndLosesThePrefix) {
  InstanceGroup group("Ns", "Foo");
  group.createInstance("Top=1", "b", false, "");
  group.createInstance("Top=1", "a", false, "");
  group.createInstance("", "c", false, "");
  ImmRecords records;
  auto read = ImmRecords::readGroup(written(records, group), "", "Ns");
  EXPECT_EQ("Foo", read->getClassName());
  std::vector<std::string> ldns;
  for (InstanceIf* instance : read->getInstances()) ldns.push_back(instance->getLdn());
  EXPECT_EQ((std::vector<std::string>{"fooId=b,Top=1", "fooId=a,Top=1", "fooId=c"}), ldns);
  EXPECT_EQ(2u, read->getChildInstances("Top=1").size());
  EXPECT_EQ("NsFoo", ImmRecords::readGroup(*records.terminated()[0], "", "Other")->getClassName());
  // The RDN attribute read with the group names the instances it creates.
  EXPECT_EQ(
      "key=1,Top=1",
      ImmRecords::readGroup(*records.terminated()[0], "key", "Ns")->createInstance("Top=1", "1", true, "")->getLdn());
}

}  // namespace
