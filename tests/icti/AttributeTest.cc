#include "icti/Attribute.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "LogRecorder.h"

namespace {

using TextOperation = bool (AttributeIf::*)(uint32_t, const char*);

// `values` are separated by single spaces.
std::unique_ptr<AttributeBase> makeAttribute(ValueType type, const std::string& values) {
  std::unique_ptr<AttributeBase> attribute(AttributeBase::create("attr", type));
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

constexpr ValueType kInt = ValueType::kInt32, kUint = ValueType::kUint32, kLong = ValueType::kInt64,
                    kUlong = ValueType::kUint64, kTime = ValueType::kTime, kName = ValueType::kName,
                    kFloat = ValueType::kFloat, kDouble = ValueType::kDouble, kString = ValueType::kString,
                    kAny = ValueType::kAny;

using A = AttributeIf;

// The actions check an operation's type and operand before they call it
// (shift counts, bitwise on floating point, arithmetic on names and bytes).
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
      {kUlong, "18446744073709551615", &A::addIntegerAtIndex, 0, "2", true, "1"},
      {kTime, "9223372036854775807", &A::addIntegerAtIndex, 0, "1", true, "-9223372036854775808"},
      {kFloat, "0.1", &A::addIntegerAtIndex, 0, "0.2", true, "0.3"},
      {kDouble, "0.1", &A::addIntegerAtIndex, 0, "0.2", true, "0.30000000000000004"},
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
      {kInt, "1", &A::bitwiseLeftShiftAtIndex, 0, "-31", true, "2"},
      {kLong, "1", &A::bitwiseLeftShiftAtIndex, 0, "63", true, "-9223372036854775808"},
      {kInt, "-8", &A::bitwiseRightShiftAtIndex, 0, "1", true, "2147483644"},
      {kLong, "-8", &A::bitwiseRightShiftAtIndex, 0, "1", true, "9223372036854775804"},
      {kUint, "8", &A::bitwiseRightShiftAtIndex, 0, "3", true, "1"},
      {kInt, "12", &A::bitwiseAndAtIndex, 0, "10", true, "8"},
      {kUint, "12", &A::bitwiseOrAtIndex, 0, "10", true, "14"},
      {kUlong, "12", &A::bitwiseXorAtIndex, 0, "10", true, "6"},
      {kInt, "1 2 3", &A::setValueAtIndex, 1, "7", true, "1 7 3"},
      {kInt, "1 2 3", &A::setValueAtIndex, 3, "7", false, "1 2 3"},
      {kInt, "7", &A::valueEqualsAtIndex, 0, "7", true, "7"},
      {kInt, "7", &A::valueEqualsAtIndex, 0, "8", false, "7"},
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

// Inserting and erasing at positions are checked with the array actions.
TEST(AttributeTest, AnEmptyTextIsNoValueButForAString) {
  for (ValueType type : {kInt, kUint, kLong, kUlong, kName, kDouble, kAny, kString}) {
    auto attribute = makeAttribute(type, "");
    EXPECT_TRUE(attribute->addCopy(""));
    EXPECT_EQ(type == kString ? 1u : 0u, attribute->getNumberOfValues()) << codeOf(type);
  }
}

// Between types values go through their exact text, and what does not fit is
// refused (within a type the whole runs check them bit for bit).
TEST(AttributeTest, ValuesMoveExactlyAndConvertThroughTheirText) {
  const struct {
    ValueType from;
    const char* values;
    ValueType to;
    bool moved;
    const char* after;
  } cases[] = {
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
  EXPECT_FALSE(makeAttribute(kString, "")->addValue(value));
}

// The byte interface that client actions use: copies in and out, only for SaAnyT.
TEST(AttributeTest, BytesAreCopiedInAndOutOnlyForSaAnyT) {
  auto blob = makeAttribute(kAny, "");
  std::vector<uint8_t> bytes = {0xde, 0xad};
  EXPECT_TRUE(blob->addCopy(bytes));
  bytes[0] = 0;
  EXPECT_EQ((std::vector<uint8_t>{0xde, 0xad}), blob->getRawDataValueAtIndex(0));
  EXPECT_TRUE(blob->setRawDataValueAtIndex(0, {1, 2, 3}));
  EXPECT_FALSE(blob->setRawDataValueAtIndex(1, {3}));
  EXPECT_EQ((std::vector<uint8_t>{1, 2, 3}), blob->getRawDataValueAtIndex(0));
  EXPECT_TRUE(blob->getRawDataValueAtIndex(1).empty());
  auto number = makeAttribute(kInt, "1");
  EXPECT_FALSE(number->addCopy(std::vector<uint8_t>{1}));
  EXPECT_FALSE(number->setRawDataValueAtIndex(0, {1}));
  EXPECT_TRUE(number->getRawDataValueAtIndex(0).empty());
  EXPECT_EQ("1", valuesOf(*number));
}

}  // namespace
