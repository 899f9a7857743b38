#include "icti/Attribute.h"

#include <gtest/gtest.h>

#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>

#include "LogRecorder.h"
#include "PlatformRecords.h"

namespace {

using TextOperation = bool (AttributeIf::*)(uint32_t, const char*);

std::unique_ptr<AttributeBase> makeAttribute(uint32_t type, const std::vector<const char*>& values,
                                             const char* name = "attr") {
  std::unique_ptr<AttributeBase> attribute(AttributeBase::create(name, type));
  for (const char* value : values) attribute->addCopy(value);
  return attribute;
}

std::vector<std::string> valuesOf(AttributeIf& attribute) {
  std::vector<std::string> values;
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) values.emplace_back(attribute.readValueAtIndex(i));
  return values;
}

bool logged(const std::string& text) { return LogRecorder::installed().contains(text); }

// ---------------------------------------------------------------------------
// Operations on a value, by type.

struct OperationCase {
  const char* what;
  uint32_t type;
  std::vector<const char*> initial;
  TextOperation operation;
  uint32_t index;
  const char* argument;
  bool result;
  std::vector<std::string> values;
  const char* message;  // expected in the log, or null
};

const uint32_t kInt = SA_IMM_ATTR_SAINT32T;
const uint32_t kUint = SA_IMM_ATTR_SAUINT32T;
const uint32_t kLong = SA_IMM_ATTR_SAINT64T;
const uint32_t kUlong = SA_IMM_ATTR_SAUINT64T;
const uint32_t kName = SA_IMM_ATTR_SANAMET;
const uint32_t kDouble = SA_IMM_ATTR_SADOUBLET;
const uint32_t kString = SA_IMM_ATTR_SASTRINGT;
const uint32_t kAny = SA_IMM_ATTR_SAANYT;

const OperationCase kOperationCases[] = {
    {"int add", kInt, {"1", "2"}, &AttributeIf::addIntegerAtIndex, 1, "40", true, {"1", "42"}, nullptr},
    {"int add wraps", kInt, {"2147483647"}, &AttributeIf::addIntegerAtIndex, 0, "1", true, {"-2147483648"}, nullptr},
    {"uint add wraps", kUint, {"4294967295"}, &AttributeIf::addIntegerAtIndex, 0, "1", true, {"0"}, nullptr},
    {"long add wraps", kLong, {"9223372036854775807"}, &AttributeIf::addIntegerAtIndex, 0, "1", true,
     {"-9223372036854775808"}, nullptr},
    {"ulong add", kUlong, {"18446744073709551615"}, &AttributeIf::addIntegerAtIndex, 0, "2", true, {"1"}, nullptr},
    {"double add", kDouble, {"1.5"}, &AttributeIf::addIntegerAtIndex, 0, "2.25", true, {"3.750000"}, nullptr},
    {"add past the end", kInt, {"5"}, &AttributeIf::addIntegerAtIndex, 1, "1", false, {"5"}, nullptr},
    {"string add concatenates", kString, {"ab"}, &AttributeIf::addIntegerAtIndex, 0, "cdef", true, {"abcdef"},
     nullptr},
    {"string add past the end", kString, {"ab"}, &AttributeIf::addIntegerAtIndex, 3, "cd", false, {"ab"}, nullptr},

    {"int subtract", kInt, {"5"}, &AttributeIf::substractIntegerAtIndex, 0, "7", true, {"-2"}, nullptr},
    {"int subtract wraps", kInt, {"-2147483648"}, &AttributeIf::substractIntegerAtIndex, 0, "1", true,
     {"2147483647"}, nullptr},
    {"uint subtract wraps", kUint, {"0"}, &AttributeIf::substractIntegerAtIndex, 0, "1", true, {"4294967295"},
     nullptr},
    {"double subtract", kDouble, {"1"}, &AttributeIf::substractIntegerAtIndex, 0, "0.5", true, {"0.500000"},
     nullptr},

    {"int multiply", kInt, {"3"}, &AttributeIf::multiplyAtIndex, 0, "-4", true, {"-12"}, nullptr},
    {"int multiply wraps", kInt, {"65536"}, &AttributeIf::multiplyAtIndex, 0, "65536", true, {"0"}, nullptr},
    {"long multiply wraps", kLong, {"4611686018427387904"}, &AttributeIf::multiplyAtIndex, 0, "2", true,
     {"-9223372036854775808"}, nullptr},
    {"ulong multiply", kUlong, {"4294967296"}, &AttributeIf::multiplyAtIndex, 0, "4294967297", true,
     {"4294967296"}, nullptr},

    {"int divide truncates", kInt, {"-7"}, &AttributeIf::divideAtIndex, 0, "2", true, {"-3"}, nullptr},
    {"int divide by zero stores 0", kInt, {"5"}, &AttributeIf::divideAtIndex, 0, "0", true, {"0"}, nullptr},
    {"uint divide by zero stores 0", kUint, {"5"}, &AttributeIf::divideAtIndex, 0, "0", true, {"0"}, nullptr},
    {"int min by -1", kInt, {"-2147483648"}, &AttributeIf::divideAtIndex, 0, "-1", true, {"-2147483648"}, nullptr},
    {"long min by -1", kLong, {"-9223372036854775808"}, &AttributeIf::divideAtIndex, 0, "-1", true,
     {"-9223372036854775808"}, nullptr},
    {"double divide", kDouble, {"1"}, &AttributeIf::divideAtIndex, 0, "4", true, {"0.250000"}, nullptr},
    {"double divide by zero stores 0", kDouble, {"1"}, &AttributeIf::divideAtIndex, 0, "0", true, {"0.000000"},
     nullptr},

    {"int shift left", kInt, {"3"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "2", true, {"12"}, nullptr},
    {"int shift left by 31", kInt, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "31", true, {"-2147483648"},
     nullptr},
    {"int shift left by 32 refused as success", kInt, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "32", true,
     {"1"}, "bitwiseLeftShiftAtIndex unsupported operation, improper bitwiseShiftIndex 32, or data type size 32"},
    {"int negative count takes low bits", kInt, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "-31", true,
     {"2"}, nullptr},
    {"uint shift left by 31", kUint, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "31", true, {"2147483648"},
     nullptr},
    {"long shift left by 63", kLong, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "63", true,
     {"-9223372036854775808"}, nullptr},
    {"long shift left by 64 refused", kLong, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "64", true, {"1"},
     "bitwiseLeftShiftAtIndex unsupported operation, improper bitwiseShiftIndex 64, or data type size 64"},
    {"shift past the end", kInt, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 2, "1", false, {"1"}, nullptr},

    {"int shift right is logical", kInt, {"-8"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "1", true,
     {"2147483644"}, nullptr},
    {"long shift right is logical", kLong, {"-8"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "1", true,
     {"9223372036854775804"}, nullptr},
    {"uint shift right", kUint, {"8"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "3", true, {"1"}, nullptr},
    {"ulong shift right by 64 refused", kUlong, {"8"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "64", true,
     {"8"}, "bitwiseRightShiftAtIndex unsupported operation, improper bitwiseShiftIndex 64, or data type size 64"},
    {"int shift right by 32 refused", kInt, {"8"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "32", true, {"8"},
     "bitwiseRightShiftAtIndex unsupported operation, improper bitwiseShiftIndex 32, or data type size 32"},

    {"int and", kInt, {"12"}, &AttributeIf::bitwiseAndAtIndex, 0, "10", true, {"8"}, nullptr},
    {"int and negative", kInt, {"-1"}, &AttributeIf::bitwiseAndAtIndex, 0, "255", true, {"255"}, nullptr},
    {"uint or", kUint, {"12"}, &AttributeIf::bitwiseOrAtIndex, 0, "10", true, {"14"}, nullptr},
    {"ulong xor", kUlong, {"12"}, &AttributeIf::bitwiseXorAtIndex, 0, "10", true, {"6"}, nullptr},
    {"xor past the end", kLong, {"12"}, &AttributeIf::bitwiseXorAtIndex, 1, "10", false, {"12"}, nullptr},

    {"double shift refused", kDouble, {"1"}, &AttributeIf::bitwiseLeftShiftAtIndex, 0, "2", false, {"1.000000"},
     "bitwiseLeftShiftAtIndex unsupported operation, improper bitwiseShiftIndex 2, or data type size 64"},
    {"double right shift refused", kDouble, {"1"}, &AttributeIf::bitwiseRightShiftAtIndex, 0, "1e300", false,
     {"1.000000"},
     "bitwiseRightShiftAtIndex unsupported operation, improper bitwiseShiftIndex 2147483647, or data type size 64"},
    {"double and refused", kDouble, {"1"}, &AttributeIf::bitwiseAndAtIndex, 0, "3", false, {"1.000000"},
     "bitwiseAndAtIndex unsupported operation, improper bitwiseShiftIndex 3, or data type size 64"},

    {"set", kInt, {"1", "2", "3"}, &AttributeIf::setValueAtIndex, 1, "7", true, {"1", "7", "3"}, nullptr},
    {"set past the end", kInt, {"1", "2", "3"}, &AttributeIf::setValueAtIndex, 3, "7", false, {"1", "2", "3"},
     nullptr},
    {"set empty text is 0", kUlong, {"9"}, &AttributeIf::setValueAtIndex, 0, "", true, {"0"}, nullptr},
    {"set string", kString, {"a"}, &AttributeIf::setValueAtIndex, 0, "b", true, {"b"}, nullptr},
    {"set name", kName, {"a=1"}, &AttributeIf::setValueAtIndex, 0, "b=2", true, {"b=2"}, nullptr},

    {"int equal", kInt, {"7"}, &AttributeIf::valueEqualsAtIndex, 0, "7", true, {"7"}, nullptr},
    {"int not equal", kInt, {"7"}, &AttributeIf::valueEqualsAtIndex, 0, "8", false, {"7"}, nullptr},
    {"equal past the end", kInt, {"7"}, &AttributeIf::valueEqualsAtIndex, 1, "7", false, {"7"}, nullptr},
    {"double equal", kDouble, {"0.5"}, &AttributeIf::valueEqualsAtIndex, 0, "0.50", true, {"0.500000"}, nullptr},
    {"string equal", kString, {"abc"}, &AttributeIf::valueEqualsAtIndex, 0, "abc", true, {"abc"}, nullptr},
    {"name equal", kName, {"a=1"}, &AttributeIf::valueEqualsAtIndex, 0, "a=1", true, {"a=1"}, nullptr},
    {"name not equal", kName, {"a=1"}, &AttributeIf::valueEqualsAtIndex, 0, "a=12", false, {"a=1"}, nullptr},

    {"int less", kInt, {"-3"}, &AttributeIf::lessThanAtIndex, 0, "5", true, {"-3"}, nullptr},
    {"uint not less", kUint, {"5"}, &AttributeIf::lessThanAtIndex, 0, "5", false, {"5"}, nullptr},
    {"ulong greater", kUlong, {"18446744073709551615"}, &AttributeIf::greaterThanAtIndex, 0, "1", true,
     {"18446744073709551615"}, nullptr},
    {"greater past the end", kInt, {"9"}, &AttributeIf::greaterThanAtIndex, 1, "1", false, {"9"}, nullptr},
    {"double greater", kDouble, {"2.5"}, &AttributeIf::greaterThanAtIndex, 0, "2.25", true, {"2.500000"}, nullptr},
    {"string less", kString, {"abc"}, &AttributeIf::lessThanAtIndex, 0, "abd", true, {"abc"}, nullptr},
};

void PrintTo(const OperationCase& c, std::ostream* out) { *out << c.what; }

class AttributeOperationTest : public testing::TestWithParam<OperationCase> {};

TEST_P(AttributeOperationTest, ChangesValueAndReports) {
  const OperationCase& c = GetParam();
  auto attribute = makeAttribute(c.type, c.initial);
  EXPECT_EQ(c.result, ((*attribute).*c.operation)(c.index, c.argument));
  EXPECT_EQ(c.values, valuesOf(*attribute));
  if (c.message != nullptr) {
    EXPECT_TRUE(logged(c.message)) << c.message;
  }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, AttributeOperationTest, testing::ValuesIn(kOperationCases),
                         [](const testing::TestParamInfo<OperationCase>& info) {
                           std::string name = info.param.what;
                           for (char& c : name) {
                             if (!isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return name;
                         });

// ---------------------------------------------------------------------------
// Refusals: logged, false, nothing changed.

struct Refusal {
  const char* operation;
  TextOperation call;
};

const Refusal kArithmeticAndBitwise[] = {
    {"addIntegerAtIndex", &AttributeIf::addIntegerAtIndex},
    {"substractIntegerAtIndex", &AttributeIf::substractIntegerAtIndex},
    {"multiplyAtIndex", &AttributeIf::multiplyAtIndex},
    {"divideAtIndex", &AttributeIf::divideAtIndex},
    {"bitwiseLeftShiftAtIndex", &AttributeIf::bitwiseLeftShiftAtIndex},
    {"bitwiseRightShiftAtIndex", &AttributeIf::bitwiseRightShiftAtIndex},
    {"bitwiseAndAtIndex", &AttributeIf::bitwiseAndAtIndex},
    {"bitwiseOrAtIndex", &AttributeIf::bitwiseOrAtIndex},
    {"bitwiseXorAtIndex", &AttributeIf::bitwiseXorAtIndex},
};

TEST(AttributeRefusalTest, NameAndStringRefuseArithmeticAndBitwise) {
  for (uint32_t type : {kName, kString}) {
    const std::string typeName = type == kName ? "SaNameT" : "SaStringT";
    for (const Refusal& refusal : kArithmeticAndBitwise) {
      if (type == kString && std::string(refusal.operation) == "addIntegerAtIndex") continue;
      LogRecorder::installed().clear();
      auto attribute = makeAttribute(type, {"x=1"});
      EXPECT_FALSE(((*attribute).*refusal.call)(0, "1")) << refusal.operation;
      EXPECT_EQ(std::vector<std::string>{"x=1"}, valuesOf(*attribute));
      const std::string message = std::string(refusal.operation) + " called with type " + typeName;
      EXPECT_TRUE(logged(message)) << message;
    }
  }
}

TEST(AttributeRefusalTest, ByteBufferRefusesTextOperations) {
  const Refusal kMore[] = {{"valueEqualsAtIndex", &AttributeIf::valueEqualsAtIndex},
                           {"lessThanAtIndex", &AttributeIf::lessThanAtIndex},
                           {"greaterThanAtIndex", &AttributeIf::greaterThanAtIndex}};
  std::vector<Refusal> refusals(std::begin(kArithmeticAndBitwise), std::end(kArithmeticAndBitwise));
  refusals.insert(refusals.end(), std::begin(kMore), std::end(kMore));
  for (const Refusal& refusal : refusals) {
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(kAny, {});
    attribute->addCopy(std::vector<uint8_t>{1, 2});
    EXPECT_FALSE(((*attribute).*refusal.call)(0, "1")) << refusal.operation;
    EXPECT_EQ((std::vector<uint8_t>{1, 2}), attribute->getRawDataValueAtIndex(0));
    std::string operation = refusal.operation;
    if (operation == "addIntegerAtIndex") operation = "addAtIndex";
    EXPECT_TRUE(logged(operation + " not implemented for SaAnyT")) << operation;
  }
  EXPECT_FALSE(makeAttribute(kAny, {})->hasValueAtIndex(0));
  EXPECT_TRUE(logged("hasValueAtIndex not implemented for SaAnyT"));
}

TEST(AttributeRefusalTest, OnlyByteBuffersTakeBytes) {
  for (uint32_t type : {kInt, kUint, kLong, kUlong, kName, kDouble, kString}) {
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(type, {"1"});
    const std::vector<std::string> before = valuesOf(*attribute);
    EXPECT_FALSE(attribute->addCopy(std::vector<uint8_t>{1}));
    EXPECT_FALSE(attribute->setRawDataValueAtIndex(0, {1}));
    EXPECT_TRUE(attribute->getRawDataValueAtIndex(0).empty());
    EXPECT_EQ(before, valuesOf(*attribute)) << type;
    EXPECT_TRUE(logged("Unsupported Imm type for addCopy(const std::vector<uint8_t> &v), only SaAnyT is allowed"));
    EXPECT_TRUE(logged("Unsupported operation, only for SA_ANY_T allowed"));
    EXPECT_TRUE(logged("Unsupported Imm type, only SaAnyT is allowed for method getRawDataValueAtIndex"));
  }
}

// ---------------------------------------------------------------------------
// Adding, inserting, erasing, reading.

TEST(AttributeValuesTest, EmptyTextAddsNothingExceptToStrings) {
  for (uint32_t type : {kInt, kUint, kLong, kUlong, kName, kDouble, kAny}) {
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(type, {}, "weight");
    EXPECT_TRUE(attribute->addCopy(""));
    EXPECT_EQ(0u, attribute->getNumberOfValues()) << type;
    EXPECT_TRUE(logged("Attribute<T>::addCopy called with empty string for weight, no new value created"));
  }
  auto text = makeAttribute(kString, {});
  EXPECT_TRUE(text->addCopy(""));
  EXPECT_EQ(std::vector<std::string>{""}, valuesOf(*text));
}

TEST(AttributeValuesTest, InsertBeforeIndexOrAppendPastTheEnd) {
  auto attribute = makeAttribute(kInt, {"1", "2"});
  EXPECT_TRUE(attribute->insertValueAtIndex("7", 10));
  EXPECT_TRUE(attribute->insertValueAtIndex("0", 0));
  EXPECT_TRUE(attribute->insertValueAtIndex("5", 2));
  EXPECT_EQ((std::vector<std::string>{"0", "1", "5", "2", "7"}), valuesOf(*attribute));
}

TEST(AttributeValuesTest, EraseAtIndexOrTheLastPastTheEnd) {
  auto attribute = makeAttribute(kString, {"a", "b", "c"});
  EXPECT_TRUE(attribute->eraseValueAtIndex(10));
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), valuesOf(*attribute));
  EXPECT_TRUE(attribute->eraseValueAtIndex(0));
  EXPECT_EQ((std::vector<std::string>{"b"}), valuesOf(*attribute));
  EXPECT_TRUE(attribute->eraseValueAtIndex(0));
  EXPECT_FALSE(attribute->eraseValueAtIndex(0));
}

TEST(AttributeValuesTest, ReadPastTheEndIsNull) {
  auto attribute = makeAttribute(kUint, {"3"});
  EXPECT_STREQ("3", attribute->readValueAtIndex(0));
  EXPECT_EQ(nullptr, attribute->readValueAtIndex(1));
  EXPECT_TRUE(attribute->hasValueAtIndex(0));
  EXPECT_FALSE(attribute->hasValueAtIndex(1));
}

TEST(AttributeValuesTest, ReadTextBelongsToTheCallingThread) {
  auto mine = makeAttribute(kInt, {"5"});
  auto theirs = makeAttribute(kInt, {"9"});
  const char* text = mine->readValueAtIndex(0);
  std::string theirText;
  std::thread([&] { theirText = theirs->readValueAtIndex(0); }).join();
  EXPECT_EQ("9", theirText);
  EXPECT_STREQ("5", text);
}

TEST(AttributeValuesTest, ReadTextSurvivesChangesToTheValue) {
  for (uint32_t type : {kString, kName}) {
    auto attribute = makeAttribute(type, {"first"});
    const char* text = attribute->readValueAtIndex(0);
    attribute->setValueAtIndex(0, "second");
    attribute->eraseValueAtIndex(0);
    EXPECT_STREQ("first", text);
  }
}

TEST(AttributeValuesTest, NameKeeps599CharactersAndTheFullLength) {
  const std::string text(700, 'n');
  auto attribute = makeAttribute(kName, {text.c_str()});
  EXPECT_EQ(std::string(599, 'n'), attribute->readValueAtIndex(0));
  std::unique_ptr<SaImmAttrValuesT_2, void (*)(void*)> record(attribute->createAttrValues(), std::free);
  const auto* name = static_cast<const SaNameT*>(record->attrValues[0]);
  EXPECT_EQ(700, name->length);
  EXPECT_EQ(599u, strnlen(reinterpret_cast<const char*>(name->value), sizeof name->value));
  free(record->attrValues);
}

TEST(AttributeValuesTest, SetNameReplacesTheName) {
  auto attribute = makeAttribute(kInt, {}, "old");
  attribute->setName("new");
  EXPECT_EQ("new", attribute->getName());
  attribute->setName(nullptr);
  EXPECT_EQ("", attribute->getName());
}

TEST(AttributeValuesTest, FactoryKnowsTheEightTypes) {
  for (uint32_t type : {kInt, kUint, kLong, kUlong, kName, kDouble, kString, kAny}) {
    std::unique_ptr<AttributeBase> attribute(AttributeBase::create("a", type));
    ASSERT_NE(nullptr, attribute) << type;
    EXPECT_EQ(type, attribute->getType());
    EXPECT_EQ("a", attribute->getName());
  }
  for (uint32_t type : {0u, 5u, 7u, 11u}) EXPECT_EQ(nullptr, AttributeBase::create("a", type)) << type;
}

// ---------------------------------------------------------------------------
// Byte buffers.

TEST(AttributeBytesTest, CopiesInAndOut) {
  auto attribute = makeAttribute(kAny, {}, "blob");
  std::vector<uint8_t> bytes = {0xde, 0xad, 0xbe, 0xef};
  EXPECT_TRUE(attribute->addCopy(bytes));
  bytes[0] = 0;
  EXPECT_EQ((std::vector<uint8_t>{0xde, 0xad, 0xbe, 0xef}), attribute->getRawDataValueAtIndex(0));
  EXPECT_TRUE(logged("addCopy triggered for SaAnyT"));
  EXPECT_TRUE(logged("SaAnyT getRawDataValueAtIndex at index:0, bufferSize: 4, v.size: 4, attribute: blob"));

  EXPECT_TRUE(attribute->setRawDataValueAtIndex(0, {1, 2}));
  EXPECT_FALSE(attribute->setRawDataValueAtIndex(1, {3}));
  EXPECT_TRUE(logged("setValueAtIndex called for SaAnyT with index: 1"));
  EXPECT_EQ((std::vector<uint8_t>{1, 2}), attribute->getRawDataValueAtIndex(0));
  EXPECT_TRUE(attribute->getRawDataValueAtIndex(1).empty());
}

TEST(AttributeBytesTest, TextDoesNotConvert) {
  auto attribute = makeAttribute(kAny, {});
  attribute->addCopy(std::vector<uint8_t>{7, 7, 7});
  EXPECT_STREQ("SaAnyT, no conversion", attribute->readValueAtIndex(0));
  EXPECT_TRUE(logged("readValue called, SaAnyT bufferSize 3"));
  EXPECT_TRUE(attribute->addCopy("0102"));
  EXPECT_TRUE(logged("readValue(char *) called on SaAnyT, returning null struct"));
  EXPECT_TRUE(attribute->getRawDataValueAtIndex(1).empty());
}

TEST(AttributeBytesTest, InitDeepCopiesAndNullBufferGivesZeroedValue) {
  PlatformRecords records;
  SaImmAttrValuesT_2* record = records.attribute({"blob", SA_IMM_ATTR_SAANYT, {"0a0b", "ff"}});
  auto attribute = makeAttribute(kAny, {}, "blob");
  attribute->init(record);
  static_cast<SaAnyT*>(record->attrValues[0])->bufferAddr[0] = 0;
  EXPECT_EQ((std::vector<uint8_t>{0x0a, 0x0b}), attribute->getRawDataValueAtIndex(0));
  EXPECT_TRUE(logged("allocAndCopySaAnyT SaAnyT attribute blob, bufferSize: 2"));

  static_cast<SaAnyT*>(record->attrValues[1])->bufferAddr = nullptr;
  attribute->init(record);
  EXPECT_TRUE(logged("SaAnyT allocAndCopySaAnyT valueToCopy buffer is NULL, return zeroed SaAnyT"));
  EXPECT_EQ(4u, attribute->getNumberOfValues());
  EXPECT_TRUE(attribute->getRawDataValueAtIndex(3).empty());
}

// ---------------------------------------------------------------------------
// Platform records.

TEST(AttributeRecordTest, InitAppendsEveryValueAndLogsIt) {
  PlatformRecords records;
  auto attribute = makeAttribute(kLong, {"1"}, "counter");
  attribute->init(records.attribute({"counter", SA_IMM_ATTR_SAINT64T, {"-5", "6"}}));
  EXPECT_EQ((std::vector<std::string>{"1", "-5", "6"}), valuesOf(*attribute));
  EXPECT_TRUE(logged("init::attr[0] name: \"counter\", type: 3, value: -5"));
  EXPECT_TRUE(logged("init::attr[1] name: \"counter\", type: 3, value: 6"));
}

TEST(AttributeRecordTest, InitDeepCopiesStringsAndNames) {
  PlatformRecords records;
  SaImmAttrValuesT_2* strings = records.attribute({"s", SA_IMM_ATTR_SASTRINGT, {"abc"}});
  auto text = makeAttribute(kString, {}, "s");
  text->init(strings);
  (*static_cast<SaStringT*>(strings->attrValues[0]))[0] = 'X';
  EXPECT_STREQ("abc", text->readValueAtIndex(0));

  auto name = makeAttribute(kName, {}, "n");
  SaImmAttrValuesT_2 record = {const_cast<char*>("n"), SA_IMM_ATTR_SANAMET, 2, nullptr};
  SaImmAttrValueT values[] = {records.name("a=1,b=2", 3), records.name(std::string(600, 'z'), 600), nullptr};
  record.attrValues = values;
  name->init(&record);
  EXPECT_EQ((std::vector<std::string>{"a=1", std::string(599, 'z')}), valuesOf(*name));
}

struct RecordCase {
  uint32_t type;
  std::vector<const char*> values;
  std::string description;
};

TEST(AttributeRecordTest, CreateAttrValuesBorrowsNameAndValues) {
  const RecordCase kCases[] = {
      {kInt, {"-1", "2"}, "a:1[2] -1 2"},
      {kUint, {"4294967295"}, "a:2[1] 4294967295"},
      {kLong, {"-9223372036854775808"}, "a:3[1] -9223372036854775808"},
      {kUlong, {"18446744073709551615"}, "a:4[1] 18446744073709551615"},
      {kName, {"x=1,y=2", "z=3"}, "a:6[2] x=1,y=2#7 z=3#3"},
      {kDouble, {"0.25"}, "a:8[1] 0.25"},
      {kString, {"hello", ""}, "a:9[2] 'hello' ''"},
      {kInt, {}, "a:1[0]"},
  };
  for (const RecordCase& c : kCases) {
    auto attribute = makeAttribute(c.type, c.values, "a");
    SaImmAttrValuesT_2* record = attribute->createAttrValues();
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(c.description, describe(record));
    EXPECT_EQ(attribute->name(), record->attrName);
    free(record->attrValues);
    free(record);
  }
}

TEST(AttributeRecordTest, CreateAttrValuesLogsTheRecord) {
  auto attribute = makeAttribute(kInt, {"5", "6"}, "x");
  SaImmAttrValuesT_2* record = attribute->createAttrValues();
  EXPECT_TRUE(logged("ATTRIBUTE(name: \"x\", type: 1, numOfValues: 2)"));
  EXPECT_TRUE(logged("ATTRIBUTE(name: \"x\", value: 6)"));
  // The record points into the attribute: a change shows through.
  attribute->setValueAtIndex(0, "8");
  EXPECT_EQ(8, *static_cast<int*>(record->attrValues[0]));
  free(record->attrValues);
  free(record);
}

// ---------------------------------------------------------------------------
// A malformed number ends the process after saying so.

void dumpLogAndDie(int) {
  for (const std::string& text : LogRecorder::installed().texts()) std::fprintf(stderr, "%s\n", text.c_str());
  _exit(1);
}

struct MalformedCase {
  uint32_t type;
  const char* typeName;
};

TEST(AttributeDeathTest, MalformedNumberAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const MalformedCase kCases[] = {{kInt, "int"},
                                  {kUint, "unsigned int"},
                                  {kLong, "long long"},
                                  {kUlong, "unsigned long long"},
                                  {kDouble, "double"}};
  for (const MalformedCase& c : kCases) {
    auto attribute = makeAttribute(c.type, {"1"});
    const std::string expected = std::string("Could not read value as ") + c.typeName +
                                 " \\(value: 12x\\), tailPtr is not empty \\(tailPtr: x\\)";
    EXPECT_DEATH(
        {
          std::signal(SIGABRT, dumpLogAndDie);
          attribute->setValueAtIndex(0, "12x");
        },
        expected)
        << c.typeName;
  }
}

TEST(AttributeDeathTest, MalformedOperandAbortsEveryTextOperation) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const Refusal& operation : kArithmeticAndBitwise) {
    auto attribute = makeAttribute(kInt, {"1"});
    EXPECT_DEATH(((*attribute).*operation.call)(0, " 3;"), "") << operation.operation;
  }
  auto attribute = makeAttribute(kUlong, {});
  EXPECT_DEATH(attribute->addCopy("0x10"), "");
}

}  // namespace
