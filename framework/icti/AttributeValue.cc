#include "icti/AttributeValue.h"

#include "icti/ValueText.h"
#include "safcImmCt.h"

namespace {

// The most characters a name record keeps: its value area less the closing NUL.
constexpr size_t kNameTextLimit = SA_MAX_NAME_LENGTH - 1;

}  // namespace

AttributeValue AttributeValue::ofSigned(uint32_t type, long long value) {
  AttributeValue result;
  result.type_ = type;
  result.signed_ = value;
  return result;
}

AttributeValue AttributeValue::ofUnsigned(uint32_t type, unsigned long long value) {
  AttributeValue result;
  result.type_ = type;
  result.unsigned_ = value;
  return result;
}

AttributeValue AttributeValue::ofDouble(double value) {
  AttributeValue result;
  result.type_ = SA_IMM_ATTR_SADOUBLET;
  result.double_ = value;
  return result;
}

AttributeValue AttributeValue::ofFloat(float value) {
  AttributeValue result;
  result.type_ = SA_IMM_ATTR_SAFLOATT;
  result.float_ = value;
  return result;
}

AttributeValue AttributeValue::ofName(std::string text, uint16_t length) {
  AttributeValue result;
  result.type_ = SA_IMM_ATTR_SANAMET;
  result.data_ = std::move(text);
  result.nameLength_ = length;
  return result;
}

AttributeValue AttributeValue::ofString(std::string text) {
  AttributeValue result;
  result.type_ = SA_IMM_ATTR_SASTRINGT;
  result.data_ = std::move(text);
  return result;
}

AttributeValue AttributeValue::ofBytes(std::string bytes) {
  AttributeValue result;
  result.type_ = SA_IMM_ATTR_SAANYT;
  result.data_ = std::move(bytes);
  return result;
}

bool AttributeValue::fromText(uint32_t type, const std::string& text, AttributeValue* value) {
  long long s = 0;
  unsigned long long u = 0;
  double d = 0;
  float f = 0;
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      if (!ValueText::parseSigned(type, text, s)) return false;
      *value = ofSigned(type, s);
      return true;
    case SA_IMM_ATTR_SAUINT32T:
    case SA_IMM_ATTR_SAUINT64T:
      if (!ValueText::parseUnsigned(type, text, u)) return false;
      *value = ofUnsigned(type, u);
      return true;
    case SA_IMM_ATTR_SADOUBLET:
      if (!ValueText::parseDouble(text, d)) return false;
      *value = ofDouble(d);
      return true;
    case SA_IMM_ATTR_SAFLOATT:
      if (!ValueText::parseFloat(text, f)) return false;
      *value = ofFloat(f);
      return true;
    case SA_IMM_ATTR_SANAMET:
      if (text.size() > kNameTextLimit) return false;
      *value = ofName(text, static_cast<uint16_t>(text.size()));
      return true;
    case SA_IMM_ATTR_SASTRINGT:
      *value = ofString(text);
      return true;
    default:
      return false;
  }
}

bool AttributeValue::fits(uint32_t type, const std::string& text) {
  AttributeValue value;
  return fromText(type, text, &value);
}

bool AttributeValue::toText(std::string* text) const {
  switch (type_) {
    case SA_IMM_ATTR_SAINT32T:
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      *text = std::to_string(signed_);
      return true;
    case SA_IMM_ATTR_SAUINT32T:
    case SA_IMM_ATTR_SAUINT64T:
      *text = std::to_string(unsigned_);
      return true;
    case SA_IMM_ATTR_SADOUBLET:
      *text = ValueText::shortest(double_);
      return true;
    case SA_IMM_ATTR_SAFLOATT:
      *text = ValueText::shortest(float_);
      return true;
    case SA_IMM_ATTR_SANAMET:
    case SA_IMM_ATTR_SASTRINGT:
      *text = data_;
      return true;
    default:
      return false;
  }
}

bool AttributeValue::convertTo(uint32_t type, AttributeValue* value) const {
  if (type == type_) {
    *value = *this;
    return true;
  }
  std::string text;
  return toText(&text) && fromText(type, text, value);
}

bool AttributeValue::isZero() const {
  if (type_ == SA_IMM_ATTR_SADOUBLET) return double_ == 0.0;
  if (type_ == SA_IMM_ATTR_SAFLOATT) return float_ == 0.0f;
  if (ValueText::isSignedInteger(type_)) return signed_ == 0;
  return ValueText::integerWidth(type_) != 0 && unsigned_ == 0;
}
