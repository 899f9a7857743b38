#include "icti/Attribute.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "LogRecorder.h"

namespace {

using TextOperation = bool (AttributeIf::*)(uint32_t, const char*);

// `values` are separated by single spaces.
std::unique_ptr<AttributeBase> makeAttribute(ValueType type, const std::string& values, const char* name = "attr") {
  std::unique_ptr<AttributeBase> attribute(AttributeBase::create(name, type));
  for (size_t start = 0; !values.empty() && start <= values.size();) {
    const size_t end = std::min(values.find(' ', start), values.size());
    attribute->addCopy(values.substr(start, end - start).c_str());
    start = end + 1;
  }
  return attribute;
}

std::string valuesOf(AttributeIf& attribute) {
  std::string values;
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    values += (i == 0 ? "" : " ") + *attribute.readValueAtIndex(i);
  }
  return values;
}

bool logged(const std::string& text) { return LogRecorder::installed().contains(text); }

const ValueType kInt = ValueType::kInt32;
const ValueType kUint = ValueType::kUint32;
const ValueType kLong = ValueType::kInt64;
const ValueType kUlong = ValueType::kUint64;
const ValueType kTime = ValueType::kTime;
const ValueType kName = ValueType::kName;
const ValueType kFloat = ValueType::kFloat;
const ValueType kDouble = ValueType::kDouble;
const ValueType kString = ValueType::kString;
const ValueType kAny = ValueType::kAny;

using A = AttributeIf;

std::string refusedShift(const char* operation, const char* count, int size) {
  return std::string(operation) + " unsupported operation, improper bitwiseShiftIndex " + count +
         ", or data type size " + std::to_string(size);
}

TEST(AttributeTest, OperationsChangeTheValueAndReport) {
  const struct {
    ValueType type;
    const char* initial;
    TextOperation operation;
    uint32_t index;
    const char* argument;
    bool result;
    const char* after;
    std::string message = "";  // expected in the log, or empty
  } cases[] = {
      {kInt, "1 2", &A::addIntegerAtIndex, 1, "40", true, "1 42"},
      {kInt, "2147483647", &A::addIntegerAtIndex, 0, "1", true, "-2147483648"},
      {kUint, "4294967295", &A::addIntegerAtIndex, 0, "1", true, "0"},
      {kUlong, "18446744073709551615", &A::addIntegerAtIndex, 0, "2", true, "1"},
      {kDouble, "1.5", &A::addIntegerAtIndex, 0, "2.25", true, "3.75"},
      {kTime, "9223372036854775807", &A::addIntegerAtIndex, 0, "1", true, "-9223372036854775808"},
      {kFloat, "0.1", &A::addIntegerAtIndex, 0, "0.2", true, "0.3"},
      {kDouble, "0.1", &A::addIntegerAtIndex, 0, "0.2", true, "0.30000000000000004"},
      {kDouble, "0", &A::setValueAtIndex, 0, "1.7976931348623157e308", true, "1.7976931348623157e+308"},
      {kDouble, "0", &A::setValueAtIndex, 0, "4.9e-324", true, "5e-324"},
      {kInt, "1", &A::setValueAtIndex, 0, "12x", false, "1", "Could not read value as int (value: 12x), tailPtr is not empty (tailPtr: x)"},
      {kUint, "1", &A::setValueAtIndex, 0, "4294967296", false, "1", "Could not read value as unsigned int (value: 4294967296), out of range or not a plain decimal number"},
      {kTime, "1", &A::substractIntegerAtIndex, 0, " 3;", false, "1", "Could not read value as SaTimeT (value:  3;), tailPtr is not empty (tailPtr: ;)"},
      {kFloat, "1", &A::valueEqualsAtIndex, 0, "1e39", false, "1", "Could not read value as float (value: 1e39), out of range or not a plain decimal number"},
      {kDouble, "1", &A::multiplyAtIndex, 0, "2,5", false, "1", "Could not read value as double (value: 2,5), tailPtr is not empty (tailPtr: ,5)"},
      {kInt, "5", &A::addIntegerAtIndex, 1, "1", false, "5"},
      {kString, "ab", &A::addIntegerAtIndex, 0, "cdef", true, "abcdef"},
      {kInt, "5", &A::substractIntegerAtIndex, 0, "7", true, "-2"},
      {kUint, "0", &A::substractIntegerAtIndex, 0, "1", true, "4294967295"},
      {kInt, "65536", &A::multiplyAtIndex, 0, "65536", true, "0"},
      {kUlong, "4294967296", &A::multiplyAtIndex, 0, "4294967297", true, "4294967296"},
      {kInt, "-7", &A::divideAtIndex, 0, "2", true, "-3"},
      {kInt, "5", &A::divideAtIndex, 0, "0", true, "0"},
      {kInt, "-2147483648", &A::divideAtIndex, 0, "-1", true, "-2147483648"},
      {kLong, "-9223372036854775808", &A::divideAtIndex, 0, "-1", true, "-9223372036854775808"},
      {kDouble, "1", &A::divideAtIndex, 0, "0", true, "0"},
      {kInt, "1", &A::bitwiseLeftShiftAtIndex, 0, "31", true, "-2147483648"},
      {kInt, "1", &A::bitwiseLeftShiftAtIndex, 0, "32", true, "1", refusedShift("bitwiseLeftShiftAtIndex", "32", 32)},
      {kInt, "1", &A::bitwiseLeftShiftAtIndex, 0, "-31", true, "2"},
      {kLong, "1", &A::bitwiseLeftShiftAtIndex, 0, "63", true, "-9223372036854775808"},
      {kLong, "1", &A::bitwiseLeftShiftAtIndex, 0, "64", true, "1", refusedShift("bitwiseLeftShiftAtIndex", "64", 64)},
      {kInt, "1", &A::bitwiseLeftShiftAtIndex, 2, "1", false, "1"},
      {kInt, "-8", &A::bitwiseRightShiftAtIndex, 0, "1", true, "2147483644"},
      {kLong, "-8", &A::bitwiseRightShiftAtIndex, 0, "1", true, "9223372036854775804"},
      {kUint, "8", &A::bitwiseRightShiftAtIndex, 0, "3", true, "1"},
      {kUlong, "8", &A::bitwiseRightShiftAtIndex, 0, "64", true, "8", refusedShift("bitwiseRightShiftAtIndex", "64", 64)},
      {kInt, "12", &A::bitwiseAndAtIndex, 0, "10", true, "8"},
      {kUint, "12", &A::bitwiseOrAtIndex, 0, "10", true, "14"},
      {kUlong, "12", &A::bitwiseXorAtIndex, 0, "10", true, "6"},
      {kLong, "12", &A::bitwiseXorAtIndex, 1, "10", false, "12"},
      {kDouble, "1", &A::bitwiseLeftShiftAtIndex, 0, "2", false, "1",
       refusedShift("bitwiseLeftShiftAtIndex", "2", 64)},
      {kDouble, "1", &A::bitwiseRightShiftAtIndex, 0, "1e300", false, "1",
       refusedShift("bitwiseRightShiftAtIndex", "2147483647", 64)},
      {kDouble, "1", &A::bitwiseAndAtIndex, 0, "3", false, "1", refusedShift("bitwiseAndAtIndex", "3", 64)},
      {kInt, "1 2 3", &A::setValueAtIndex, 1, "7", true, "1 7 3"},
      {kInt, "1 2 3", &A::setValueAtIndex, 3, "7", false, "1 2 3"},
      {kUlong, "9", &A::setValueAtIndex, 0, "", true, "0"},
      {kName, "a=1", &A::setValueAtIndex, 0, "b=2", true, "b=2"},
      {kInt, "7", &A::valueEqualsAtIndex, 0, "7", true, "7"},
      {kInt, "7", &A::valueEqualsAtIndex, 0, "8", false, "7"},
      {kInt, "7", &A::valueEqualsAtIndex, 1, "7", false, "7"},
      {kDouble, "0.5", &A::valueEqualsAtIndex, 0, "0.50", true, "0.5"},
      {kName, "a=1", &A::valueEqualsAtIndex, 0, "a=12", false, "a=1"},
      {kInt, "-3", &A::lessThanAtIndex, 0, "5", true, "-3"},
      {kUint, "5", &A::lessThanAtIndex, 0, "5", false, "5"},
      {kUlong, "18446744073709551615", &A::greaterThanAtIndex, 0, "1", true, "18446744073709551615"},
      {kString, "abc", &A::lessThanAtIndex, 0, "abd", true, "abc"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "type " << codeOf(c.type) << " on " << c.initial << " with " << c.argument);
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(c.type, c.initial);
    EXPECT_EQ(c.result, ((*attribute).*c.operation)(c.index, c.argument));
    EXPECT_EQ(c.after, valuesOf(*attribute));
    EXPECT_TRUE(c.message.empty() || logged(c.message)) << c.message;
  }
}

const std::pair<const char*, TextOperation> kArithmeticAndBitwise[] = {
    {"addIntegerAtIndex", &A::addIntegerAtIndex},   {"substractIntegerAtIndex", &A::substractIntegerAtIndex},
    {"multiplyAtIndex", &A::multiplyAtIndex},       {"divideAtIndex", &A::divideAtIndex},
    {"bitwiseLeftShiftAtIndex", &A::bitwiseLeftShiftAtIndex},
    {"bitwiseRightShiftAtIndex", &A::bitwiseRightShiftAtIndex},
    {"bitwiseAndAtIndex", &A::bitwiseAndAtIndex},   {"bitwiseOrAtIndex", &A::bitwiseOrAtIndex},
    {"bitwiseXorAtIndex", &A::bitwiseXorAtIndex},   {"valueEqualsAtIndex", &A::valueEqualsAtIndex},
    {"lessThanAtIndex", &A::lessThanAtIndex},       {"greaterThanAtIndex", &A::greaterThanAtIndex},
};

TEST(AttributeTest, RefusalsAreLoggedAndChangeNothing) {
  for (const auto& [operation, call] : kArithmeticAndBitwise) {
    const std::string name = operation;
    const bool comparison = name.find("Than") != std::string::npos || name.find("Equals") != std::string::npos;
    for (ValueType type : {kName, kString}) {
      if (comparison || (type == kString && name == "addIntegerAtIndex")) continue;
      LogRecorder::installed().clear();
      auto attribute = makeAttribute(type, "x=1");
      EXPECT_FALSE(((*attribute).*call)(0, "1")) << name;
      EXPECT_EQ("x=1", valuesOf(*attribute));
      EXPECT_TRUE(logged(name + " called with type " + (type == kName ? "SaNameT" : "SaStringT"))) << name;
    }
    auto bytes = makeAttribute(kAny, "");
    bytes->addCopy(std::vector<uint8_t>{1, 2});
    EXPECT_FALSE(((*bytes).*call)(0, "1")) << name;
    EXPECT_EQ((std::vector<uint8_t>{1, 2}), bytes->getRawDataValueAtIndex(0));
    EXPECT_TRUE(logged((name == "addIntegerAtIndex" ? "addAtIndex" : name) + " not implemented for SaAnyT")) << name;
  }
  EXPECT_FALSE(makeAttribute(kAny, "")->hasValueAtIndex(0));
  EXPECT_TRUE(logged("hasValueAtIndex not implemented for SaAnyT"));

  for (ValueType type : {kInt, kUint, kLong, kUlong, kName, kDouble, kString}) {
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(type, "1");
    const std::string before = valuesOf(*attribute);
    EXPECT_FALSE(attribute->addCopy(std::vector<uint8_t>{1}));
    EXPECT_FALSE(attribute->setRawDataValueAtIndex(0, {1}));
    EXPECT_TRUE(attribute->getRawDataValueAtIndex(0).empty());
    EXPECT_EQ(before, valuesOf(*attribute)) << codeOf(type);
    EXPECT_TRUE(logged("Unsupported Imm type for addCopy(const std::vector<uint8_t> &v), only SaAnyT is allowed"));
    EXPECT_TRUE(logged("Unsupported operation, only for SA_ANY_T allowed"));
    EXPECT_TRUE(logged("Unsupported Imm type, only SaAnyT is allowed for method getRawDataValueAtIndex"));
  }
}

TEST(AttributeTest, AddInsertEraseAndRead) {
  for (ValueType type : {kInt, kUint, kLong, kUlong, kName, kDouble, kAny}) {
    LogRecorder::installed().clear();
    auto attribute = makeAttribute(type, "", "weight");
    EXPECT_TRUE(attribute->addCopy(""));
    EXPECT_EQ(0u, attribute->getNumberOfValues()) << codeOf(type);
  }
  auto text = makeAttribute(kString, "");
  EXPECT_TRUE(text->addCopy(""));
  EXPECT_EQ(1u, text->getNumberOfValues());

  auto numbers = makeAttribute(kInt, "1 2");
  EXPECT_TRUE(numbers->insertValueAtIndex("7", 10));
  EXPECT_TRUE(numbers->insertValueAtIndex("0", 0));
  EXPECT_TRUE(numbers->insertValueAtIndex("5", 2));
  EXPECT_EQ("0 1 5 2 7", valuesOf(*numbers));
  EXPECT_TRUE(numbers->eraseValueAtIndex(10));
  EXPECT_TRUE(numbers->eraseValueAtIndex(0));
  EXPECT_EQ("1 5 2", valuesOf(*numbers));
  EXPECT_TRUE(numbers->hasValueAtIndex(2));
  EXPECT_FALSE(numbers->hasValueAtIndex(3));
  EXPECT_EQ(std::nullopt, numbers->readValueAtIndex(3));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(numbers->eraseValueAtIndex(0));
  EXPECT_FALSE(numbers->eraseValueAtIndex(0));
}

// Typed values leave and enter attributes bit for bit; between types they go
// through their exact text, and what does not fit is refused.
TEST(AttributeTest, ValuesMoveExactlyAndConvertThroughTheirText) {
  const struct {
    ValueType from;
    const char* values;
    ValueType to;
    bool moved;
    const char* after;
  } cases[] = {
      {kDouble, "1e-300 4.9e-324 -0 nan 1.7976931348623157e308", kDouble, true,
       "1e-300 5e-324 -0 nan 1.7976931348623157e+308"},
      {kFloat, "1.4e-45 3.4028235e38", kFloat, true, "1e-45 3.4028235e+38"},
      {kTime, "-9223372036854775808", kTime, true, "-9223372036854775808"},
      {kUlong, "18446744073709551615", kString, true, "18446744073709551615"},
      {kDouble, "0.1", kString, true, "0.1"},
      {kString, "42", kInt, true, "42"},
      {kString, "4x", kInt, false, ""},
      {kLong, "4294967296", kUint, false, ""},
      {kDouble, "0.5", kLong, false, ""},
      {kName, "a=1", kString, true, "a=1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.values);
    auto from = makeAttribute(c.from, c.values);
    auto to = makeAttribute(c.to, "");
    bool moved = true;
    for (uint32_t i = 0; i < from->getNumberOfValues(); ++i) {
      AttributeValue value;
      ASSERT_TRUE(from->getValue(i, &value));
      moved = to->addValue(value) && moved;
    }
    EXPECT_EQ(c.moved, moved);
    EXPECT_EQ(c.after, valuesOf(*to));
  }
  auto bytes = makeAttribute(kAny, "");
  bytes->addCopy(std::vector<uint8_t>{0, 0xff});
  AttributeValue value;
  ASSERT_TRUE(bytes->getValue(0, &value));
  auto copy = makeAttribute(kAny, "");
  EXPECT_TRUE(copy->insertValue(5, value));
  EXPECT_FALSE(makeAttribute(kString, "")->addValue(value));
  EXPECT_EQ((std::vector<uint8_t>{0, 0xff}), copy->getRawDataValueAtIndex(0));
}

TEST(AttributeTest, BytesAreCopiedInAndOutButNeverConverted) {
  auto attribute = makeAttribute(kAny, "", "blob");
  std::vector<uint8_t> bytes = {0xde, 0xad, 0xbe, 0xef};
  EXPECT_TRUE(attribute->addCopy(bytes));
  bytes[0] = 0;
  EXPECT_EQ((std::vector<uint8_t>{0xde, 0xad, 0xbe, 0xef}), attribute->getRawDataValueAtIndex(0));
  EXPECT_TRUE(attribute->setRawDataValueAtIndex(0, {1, 2, 3}));
  EXPECT_FALSE(attribute->setRawDataValueAtIndex(1, {3}));
  EXPECT_EQ((std::vector<uint8_t>{1, 2, 3}), attribute->getRawDataValueAtIndex(0));
  EXPECT_TRUE(attribute->getRawDataValueAtIndex(1).empty());
  EXPECT_EQ("SaAnyT, no conversion", attribute->readValueAtIndex(0));
  EXPECT_TRUE(attribute->addCopy("0102"));
  EXPECT_TRUE(attribute->getRawDataValueAtIndex(1).empty());
}

}  // namespace
