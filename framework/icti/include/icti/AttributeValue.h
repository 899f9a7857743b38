// One value of an attribute together with its IMM value type, taken out of
// an attribute or made from text. Values move between attributes in this
// form, never through formatted text, so nothing of a value is lost on the
// way: a double keeps every bit, a name its length field, a byte buffer its
// bytes.
//
// A value goes into an attribute of another type through its text (numbers
// in the shortest exact form): a literal of a modification file is a string
// that takes the type of the attribute it is given to; a number goes into a
// string attribute as its text. A conversion that does not fit fails.

#ifndef VOSK_ICTI_ATTRIBUTE_VALUE_H
#define VOSK_ICTI_ATTRIBUTE_VALUE_H

#include <cstdint>
#include <string>

#include "icti/ValueType.h"

class AttributeValue {
 public:
  // No value: ValueType::kNone.
  AttributeValue() = default;

  static AttributeValue ofSigned(ValueType type, long long value);
  static AttributeValue ofUnsigned(ValueType type, unsigned long long value);
  static AttributeValue ofDouble(double value);
  static AttributeValue ofFloat(float value);
  // `length` is the name record's length field, which may claim more than
  // the text it keeps.
  static AttributeValue ofName(std::string text, uint16_t length);
  static AttributeValue ofString(std::string text);
  static AttributeValue ofBytes(std::string bytes);

  // The value of type `type` that `text` writes; false when the text is no
  // such value: numbers as ValueText reads them, names of at most 599
  // characters, any string; byte buffers have no text.
  [[nodiscard]] static bool fromText(ValueType type, const std::string& text, AttributeValue* value);
  [[nodiscard]] static bool fits(ValueType type, const std::string& text);

  ValueType type() const { return type_; }
  long long asSigned() const { return signed_; }
  unsigned long long asUnsigned() const { return unsigned_; }
  double asDouble() const { return double_; }
  float asFloat() const { return float_; }
  // The text of a name or string, the bytes of a byte buffer.
  const std::string& data() const { return data_; }
  uint16_t nameLength() const { return nameLength_; }

  // Numbers in decimal, floating-point numbers in the shortest text that
  // reads back exactly, names and strings as they are. False for a byte
  // buffer, which has no text.
  [[nodiscard]] bool toText(std::string* text) const;
  // This value as one of `type`: itself for its own type, else the value
  // its text gives for `type`. False when there is none.
  [[nodiscard]] bool convertTo(ValueType type, AttributeValue* value) const;
  // True for a number equal to zero.
  bool isZero() const;

 private:
  ValueType type_ = ValueType::kNone;
  union {
    long long signed_ = 0;
    unsigned long long unsigned_;
    double double_;
    float float_;
  };
  uint16_t nameLength_ = 0;
  std::string data_;
};

#endif
