// One named, typed, possibly multi-valued attribute of an instance held in
// memory during the upgrade. Values pass in and out as text, parsed and
// formatted by the attribute's type, or as typed values (AttributeValue)
// when they move from one attribute to another; they are addressed by index
// from 0.
//
// An operation the type does not support, or given a text that is no value
// of the type, logs why and returns false (or an empty result) without
// changing anything.

#ifndef VOSK_ICTI_ATTRIBUTE_IF_H
#define VOSK_ICTI_ATTRIBUTE_IF_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "icti/AttributeValue.h"
#include "icti/ValueType.h"

class AttributeIf {
 public:
  virtual ~AttributeIf() = default;

  virtual std::string getName() const = 0;
  virtual ValueType getType() const = 0;
  virtual uint32_t getNumberOfValues() const = 0;

  // Appends the value; an empty text appends nothing (but still succeeds)
  // for every type except strings.
  virtual bool addCopy(const char* value) = 0;
  // Appends a byte value: byte-buffer attributes only.
  virtual bool addCopy(const std::vector<uint8_t>& value) = 0;
  // Inserts before the value at `index`; past the end it appends.
  virtual bool insertValueAtIndex(const char* value, uint32_t index) = 0;
  // Removes the value at `index`; past the end it removes the last value.
  virtual bool eraseValueAtIndex(uint32_t index) = 0;
  virtual bool setValueAtIndex(uint32_t index, const char* value) = 0;
  virtual bool setRawDataValueAtIndex(uint32_t index, const std::vector<uint8_t>& value) = 0;
  virtual bool valueEqualsAtIndex(uint32_t index, const char* value) = 0;
  // The value as text; none past the end.
  virtual std::optional<std::string> readValueAtIndex(uint32_t index) = 0;
  virtual std::vector<uint8_t> getRawDataValueAtIndex(uint32_t index) = 0;

  virtual bool addIntegerAtIndex(uint32_t index, const char* value) = 0;
  virtual bool substractIntegerAtIndex(uint32_t index, const char* value) = 0;
  virtual bool multiplyAtIndex(uint32_t index, const char* value) = 0;
  virtual bool divideAtIndex(uint32_t index, const char* value) = 0;
  virtual bool bitwiseLeftShiftAtIndex(uint32_t index, const char* value) = 0;
  virtual bool bitwiseRightShiftAtIndex(uint32_t index, const char* value) = 0;
  virtual bool bitwiseAndAtIndex(uint32_t index, const char* value) = 0;
  virtual bool bitwiseOrAtIndex(uint32_t index, const char* value) = 0;
  virtual bool bitwiseXorAtIndex(uint32_t index, const char* value) = 0;
  virtual bool lessThanAtIndex(uint32_t index, const char* value) = 0;
  virtual bool greaterThanAtIndex(uint32_t index, const char* value) = 0;

  // The value at `index` with its type; false past the end.
  [[nodiscard]] virtual bool getValue(uint32_t index, AttributeValue* value) const = 0;
  // Inserts `value` converted to this attribute's type (AttributeValue::
  // convertTo) before the value at `index`; past the end it appends. False,
  // and nothing added, when the value does not convert.
  [[nodiscard]] virtual bool insertValue(uint32_t index, const AttributeValue& value) = 0;
  bool addValue(const AttributeValue& value) { return insertValue(getNumberOfValues(), value); }
};

#endif
