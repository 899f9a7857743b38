// The value types as modification files and IMM XML name them, and the
// text form of one number, shared by every part of the upgrader that turns
// text into values or values into text:
//
//   - integers (time included) are whole decimal numbers within the type's
//     range: an optional sign ("-" only for the signed types), then digits,
//     nothing before or after;
//   - floating-point numbers are complete C floating-point texts ("0.1",
//     "1e-300", "inf", "nan") that do not overflow the type; denormals are
//     taken as they are;
//   - a floating-point value becomes the shortest text that reads back to
//     exactly the same value.

#ifndef VOSK_ICTI_VALUE_TEXT_H
#define VOSK_ICTI_VALUE_TEXT_H

#include <cstdint>
#include <string>

#include "icti/ValueType.h"

class ValueText {
 public:
  // "SA_INT32_T", ..., "SA_ANY_T" for the ten value types;
  // "unknown" for kNone.
  static const char* typeName(ValueType type);
  // The type of a type name; kNone for a text that names no type (also a
  // different case).
  static ValueType typeOfName(const std::string& name);

  // 32 or 64 for the integer types (time is a signed 64-bit count), 0 for
  // the others.
  static unsigned integerWidth(ValueType type);
  static bool isSignedInteger(ValueType type);
  static bool isFloating(ValueType type);
  static bool isNumber(ValueType type) { return integerWidth(type) != 0 || isFloating(type); }

  // A whole decimal number of the integer type `type`; true and `value`
  // set when `text` is one within the type's range.
  [[nodiscard]] static bool parseSigned(ValueType type, const std::string& text, long long& value);
  [[nodiscard]] static bool parseUnsigned(ValueType type, const std::string& text, unsigned long long& value);
  [[nodiscard]] static bool parseDouble(const std::string& text, double& value);
  [[nodiscard]] static bool parseFloat(const std::string& text, float& value);

  static std::string shortest(double value);
  static std::string shortest(float value);

  ValueText() = delete;
};

#endif
