#include "icti/ValueText.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "icti/ValueType.h"

namespace {

struct TypeName {
  ValueType type;
  const char* name;
};

constexpr TypeName kTypeNames[] = {
    {ValueType::kInt32, "SA_INT32_T"},   {ValueType::kUint32, "SA_UINT32_T"},
    {ValueType::kInt64, "SA_INT64_T"},   {ValueType::kUint64, "SA_UINT64_T"},
    {ValueType::kTime, "SA_TIME_T"},     {ValueType::kName, "SA_NAME_T"},
    {ValueType::kFloat, "SA_FLOAT_T"},   {ValueType::kDouble, "SA_DOUBLE_T"},
    {ValueType::kString, "SA_STRING_T"}, {ValueType::kAny, "SA_ANY_T"},
};

// strto* accept leading blanks and, for the unsigned types, a minus sign
// that wraps around; neither is a value a model author means.
bool startsLikeNumber(const std::string& text, bool minusAllowed) {
  size_t first = !text.empty() && (text[0] == '+' || (minusAllowed && text[0] == '-')) ? 1 : 0;
  return first < text.size() && std::isdigit(static_cast<unsigned char>(text[first]));
}

// Overflow gives an infinity from a finite text; underflow is no error: the
// text's value is then a denormal or zero, the nearest the type holds.
template <typename Float, typename Convert>
bool parseFloating(const std::string& text, Float& value, Convert convert) {
  if (text.empty() || std::isspace(static_cast<unsigned char>(text[0]))) return false;
  char* tail = nullptr;
  errno = 0;
  value = convert(text.c_str(), &tail);
  return *tail == '\0' && !(errno == ERANGE && std::isinf(value));
}

template <typename Float>
std::string shortestOf(Float value) {
  char text[64];
  for (int digits = 1; digits <= std::numeric_limits<Float>::max_digits10; ++digits) {
    std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(value));
    Float back;
    if constexpr (std::is_same_v<Float, float>) back = std::strtof(text, nullptr);
    else back = std::strtod(text, nullptr);
    if (back == value || std::isnan(value)) break;
  }
  return text;
}

}  // namespace

const char* ValueText::typeName(ValueType type) {
  for (const TypeName& entry : kTypeNames) {
    if (entry.type == type) return entry.name;
  }
  return "unknown";
}

ValueType ValueText::typeOfName(const std::string& name) {
  for (const TypeName& entry : kTypeNames) {
    if (name == entry.name) return entry.type;
  }
  return ValueType::kNone;
}

unsigned ValueText::integerWidth(ValueType type) {
  switch (type) {
    case ValueType::kInt32:
    case ValueType::kUint32:
      return 32;
    case ValueType::kInt64:
    case ValueType::kUint64:
    case ValueType::kTime:
      return 64;
    default:
      return 0;
  }
}

bool ValueText::isSignedInteger(ValueType type) {
  return type == ValueType::kInt32 || type == ValueType::kInt64 || type == ValueType::kTime;
}

bool ValueText::isFloating(ValueType type) { return type == ValueType::kFloat || type == ValueType::kDouble; }

bool ValueText::parseSigned(ValueType type, const std::string& text, long long& value) {
  if (!isSignedInteger(type) || !startsLikeNumber(text, true)) return false;
  char* tail = nullptr;
  errno = 0;
  value = std::strtoll(text.c_str(), &tail, 10);
  if (*tail != '\0' || errno == ERANGE) return false;
  return integerWidth(type) == 64 ||
         (value >= std::numeric_limits<int32_t>::min() && value <= std::numeric_limits<int32_t>::max());
}

bool ValueText::parseUnsigned(ValueType type, const std::string& text, unsigned long long& value) {
  if (integerWidth(type) == 0 || isSignedInteger(type) || !startsLikeNumber(text, false)) return false;
  char* tail = nullptr;
  errno = 0;
  value = std::strtoull(text.c_str(), &tail, 10);
  if (*tail != '\0' || errno == ERANGE) return false;
  return integerWidth(type) == 64 || value <= std::numeric_limits<uint32_t>::max();
}

bool ValueText::parseDouble(const std::string& text, double& value) { return parseFloating(text, value, std::strtod); }

bool ValueText::parseFloat(const std::string& text, float& value) { return parseFloating(text, value, std::strtof); }

std::string ValueText::shortest(double value) { return shortestOf(value); }

std::string ValueText::shortest(float value) { return shortestOf(value); }
