// Checks of value texts against attribute types, made before a text is
// handed to an attribute. The attribute itself ends the process on a number
// text that does not parse, so the value actions ask here first and turn a
// bad text into a failure report.

#ifndef VOSK_ACTIONS_VALUE_TEXT_H
#define VOSK_ACTIONS_VALUE_TEXT_H

#include <cstdint>
#include <string>

class ValueText {
 public:
  // True when the attribute type takes `text` as a value: whole decimal
  // numbers within the type's range (no minus sign for the unsigned types),
  // a complete floating-point number for doubles, any text for strings, at
  // most 599 characters for names, nothing for byte buffers.
  static bool fits(uint32_t type, const std::string& text);
  // The type name a modification file uses ("SA_INT32_T", ...), or "unknown".
  static const char* typeName(uint32_t type);
  // 32 or 64 for the integer types, 0 for the others.
  static unsigned integerWidth(uint32_t type);
  static bool isNumber(uint32_t type) { return integerWidth(type) != 0 || isDouble(type); }
  static bool isDouble(uint32_t type);
  // A whole decimal number with optional sign that fits a signed 64-bit
  // value; true and `value` set when so.
  static bool parseSigned(const std::string& text, long long& value);
  // A whole decimal number without minus sign that fits an unsigned 64-bit
  // value.
  static bool parseUnsigned(const std::string& text, unsigned long long& value);
  // True when `text` is a number of the type that equals zero.
  static bool isZero(uint32_t type, const std::string& text);

  ValueText() = delete;
};

#endif
