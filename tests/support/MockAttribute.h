// GoogleMock double of an attribute (AttributeInternalIf, so that it can
// stand wherever an instance hands out its attributes).

#ifndef VOSK_TESTS_SUPPORT_MOCK_ATTRIBUTE_H
#define VOSK_TESTS_SUPPORT_MOCK_ATTRIBUTE_H

#include <gmock/gmock.h>

#include "icti/AttributeInternalIf.h"

class MockAttribute : public AttributeInternalIf {
 public:
  MOCK_METHOD(std::string, getName, (), (const, override));
  MOCK_METHOD(ValueType, getType, (), (const, override));
  MOCK_METHOD(uint32_t, getNumberOfValues, (), (const, override));
  MOCK_METHOD(bool, addCopy, (const char* value), (override));
  MOCK_METHOD(bool, addCopy, (const std::vector<uint8_t>& value), (override));
  MOCK_METHOD(bool, insertValueAtIndex, (const char* value, uint32_t index), (override));
  MOCK_METHOD(bool, eraseValueAtIndex, (uint32_t index), (override));
  MOCK_METHOD(bool, setValueAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, setRawDataValueAtIndex, (uint32_t index, const std::vector<uint8_t>& value), (override));
  MOCK_METHOD(bool, valueEqualsAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(std::optional<std::string>, readValueAtIndex, (uint32_t index), (override));
  MOCK_METHOD(std::vector<uint8_t>, getRawDataValueAtIndex, (uint32_t index), (override));
  MOCK_METHOD(bool, addIntegerAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, substractIntegerAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, multiplyAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, divideAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, bitwiseLeftShiftAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, bitwiseRightShiftAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, bitwiseAndAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, bitwiseOrAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, bitwiseXorAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, lessThanAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, greaterThanAtIndex, (uint32_t index, const char* value), (override));
  MOCK_METHOD(bool, getValue, (uint32_t index, AttributeValue* value), (const, override));
  MOCK_METHOD(bool, insertValue, (uint32_t index, const AttributeValue& value), (override));

  MOCK_METHOD(bool, hasValueAtIndex, (uint32_t index), (override));
  MOCK_METHOD(void, setName, (const char* name), (override));
};

#endif
