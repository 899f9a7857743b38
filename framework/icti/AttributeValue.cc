#include "icti/AttributeValue.h"

#include "icti/ValueText.h"
#include "icti/ValueType.h"

AttributeValue AttributeValue::ofSigned(ValueType type, long long value) {
  AttributeValue result;
  result.type_ = type;
  result.signed_ = value;
  return result;
}

AttributeValue AttributeValue::ofUnsigned(ValueType type, unsigned long long value) {
  AttributeValue result;
  result.type_ = type;
  result.unsigned_ = value;
  return result;
}

AttributeValue AttributeValue::ofDouble(double value) {
  AttributeValue result;
  result.type_ = ValueType::kDouble;
  result.double_ = value;
  return result;
}

AttributeValue AttributeValue::ofFloat(float value) {
  AttributeValue result;
  result.type_ = ValueType::kFloat;
  result.float_ = value;
  return result;
}

AttributeValue AttributeValue::ofName(std::string text, uint16_t length) {
  AttributeValue result;
  result.type_ = ValueType::kName;
  result.data_ = std::move(text);
  result.nameLength_ = length;
  return result;
}

AttributeValue AttributeValue::ofString(std::string text) {
  AttributeValue result;
  result.type_ = ValueType::kString;
  result.data_ = std::move(text);
  return result;
}

AttributeValue AttributeValue::ofBytes(std::string bytes) {
  AttributeValue result;
  result.type_ = ValueType::kAny;
  result.data_ = std::move(bytes);
  return result;
}

bool AttributeValue::fromText(ValueType type, const std::string& text, AttributeValue* value) {
  long long s = 0;
  unsigned long long u = 0;
  double d = 0;
  float f = 0;
  switch (type) {
    case ValueType::kInt32:
    case ValueType::kInt64:
    case ValueType::kTime:
      if (!ValueText::parseSigned(type, text, s)) return false;
      *value = ofSigned(type, s);
      return true;
    case ValueType::kUint32:
    case ValueType::kUint64:
      if (!ValueText::parseUnsigned(type, text, u)) return false;
      *value = ofUnsigned(type, u);
      return true;
    case ValueType::kDouble:
      if (!ValueText::parseDouble(text, d)) return false;
      *value = ofDouble(d);
      return true;
    case ValueType::kFloat:
      if (!ValueText::parseFloat(text, f)) return false;
      *value = ofFloat(f);
      return true;
    case ValueType::kName:
      if (text.size() > kNameTextLimit) return false;
      *value = ofName(text, static_cast<uint16_t>(text.size()));
      return true;
    case ValueType::kString:
      *value = ofString(text);
      return true;
    default:
      return false;
  }
}

bool AttributeValue::fits(ValueType type, const std::string& text) {
  AttributeValue value;
  return fromText(type, text, &value);
}

bool AttributeValue::toText(std::string* text) const {
  switch (type_) {
    case ValueType::kInt32:
    case ValueType::kInt64:
    case ValueType::kTime:
      *text = std::to_string(signed_);
      return true;
    case ValueType::kUint32:
    case ValueType::kUint64:
      *text = std::to_string(unsigned_);
      return true;
    case ValueType::kDouble:
      *text = ValueText::shortest(double_);
      return true;
    case ValueType::kFloat:
      *text = ValueText::shortest(float_);
      return true;
    case ValueType::kName:
    case ValueType::kString:
      *text = data_;
      return true;
    default:
      return false;
  }
}

bool AttributeValue::convertTo(ValueType type, AttributeValue* value) const {
  if (type == type_) {
    *value = *this;
    return true;
  }
  std::string text;
  return toText(&text) && fromText(type, text, value);
}

bool AttributeValue::isZero() const {
  if (type_ == ValueType::kDouble) return double_ == 0.0;
  if (type_ == ValueType::kFloat) return float_ == 0.0f;
  if (ValueText::isSignedInteger(type_)) return signed_ == 0;
  return ValueText::integerWidth(type_) != 0 && unsigned_ == 0;
}
