#include "icti/Attribute.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>

#include "common/Log.h"
#include "icti/AttributeName.h"

namespace {

using attribute_storage::Bytes;
using attribute_storage::Name;
using attribute_storage::Time;

template <typename T>
struct TypeInfo;
template <>
struct TypeInfo<int> {
  static constexpr ValueType kCode = ValueType::kInt32;
  static constexpr const char* kName = "int";
};
template <>
struct TypeInfo<unsigned int> {
  static constexpr ValueType kCode = ValueType::kUint32;
  static constexpr const char* kName = "unsigned int";
};
template <>
struct TypeInfo<long long> {
  static constexpr ValueType kCode = ValueType::kInt64;
  static constexpr const char* kName = "long long";
};
template <>
struct TypeInfo<unsigned long long> {
  static constexpr ValueType kCode = ValueType::kUint64;
  static constexpr const char* kName = "unsigned long long";
};
template <>
struct TypeInfo<Time> {
  static constexpr ValueType kCode = ValueType::kTime;
  static constexpr const char* kName = "SaTimeT";
};
template <>
struct TypeInfo<float> {
  static constexpr ValueType kCode = ValueType::kFloat;
  static constexpr const char* kName = "float";
};
template <>
struct TypeInfo<double> {
  static constexpr ValueType kCode = ValueType::kDouble;
  static constexpr const char* kName = "double";
};
template <>
struct TypeInfo<Name> {
  static constexpr ValueType kCode = ValueType::kName;
  static constexpr const char* kName = "SaNameT";
};
template <>
struct TypeInfo<char*> {
  static constexpr ValueType kCode = ValueType::kString;
  static constexpr const char* kName = "SaStringT";
};
template <>
struct TypeInfo<Bytes> {
  static constexpr ValueType kCode = ValueType::kAny;
  static constexpr const char* kName = "SaAnyT";
};

template <typename T>
using StoredValue = typename attribute_storage::Storage<T>::Value;
template <typename T>
constexpr bool kIsNumber = std::is_arithmetic_v<StoredValue<T>>;
template <typename T>
constexpr bool kIsInteger = std::is_integral_v<StoredValue<T>>;
template <typename T>
constexpr bool kIsFloating = std::is_floating_point_v<StoredValue<T>>;
template <typename T>
constexpr bool kIsName = std::is_same_v<T, Name>;
template <typename T>
constexpr bool kIsString = std::is_same_v<T, char*>;
template <typename T>
constexpr bool kIsBytes = std::is_same_v<T, Bytes>;

constexpr const char* kNoConversion = "SaAnyT, no conversion";

char* copyText(const char* text, size_t length) {
  char* copy = static_cast<char*>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

Name nameFromText(const char* text) {
  size_t length = std::strlen(text);
  return Name{copyText(text, std::min(length, kNameTextLimit)), static_cast<uint16_t>(length)};
}

Bytes copyBytes(const Bytes& source, const char* attributeName) {
  TAV_TRACE(TRACE1, "allocAndCopySaAnyT SaAnyT attribute %s, bufferSize: %llu", attributeName,
          static_cast<unsigned long long>(source.size));
  if (source.data == nullptr) {
    TAV_TRACE(INFO, "SaAnyT allocAndCopySaAnyT valueToCopy buffer is NULL, return zeroed SaAnyT");
    return Bytes{0, nullptr};
  }
  if (source.size == 0) return Bytes{0, nullptr};
  auto* bytes = static_cast<uint8_t*>(std::malloc(source.size));
  if (bytes == nullptr) {
    TAV_LOG(ERROR, "SaAnyT allocAndCopySaAnyT failed to malloc buffer for attribute %s", attributeName);
    return Bytes{0, nullptr};
  }
  std::memcpy(bytes, source.data, source.size);
  return Bytes{source.size, bytes};
}

// Why `text` is no value of the type: what is left after the number, as the
// C conversion sees it, or else the range or form.
template <typename T>
void reportUnreadable(const char* text) {
  char* tail = nullptr;
  if constexpr (kIsFloating<T>) {
    std::strtod(text, &tail);
  } else if constexpr (std::is_signed_v<StoredValue<T>>) {
    std::strtoll(text, &tail, 10);
  } else {
    std::strtoull(text, &tail, 10);
  }
  if (*tail != '\0') {
    TAV_LOG(ERROR, "Could not read value as %s (value: %s), tailPtr is not empty (tailPtr: %s)", TypeInfo<T>::kName,
            text, tail);
  } else {
    TAV_LOG(ERROR, "Could not read value as %s (value: %s), out of range or not a plain decimal number",
            TypeInfo<T>::kName, text);
  }
}

template <typename V>
V numberOf(const AttributeValue& value) {
  if constexpr (std::is_same_v<V, double>) return value.asDouble();
  else if constexpr (std::is_same_v<V, float>) return value.asFloat();
  else if constexpr (std::is_signed_v<V>) return static_cast<V>(value.asSigned());
  else return static_cast<V>(value.asUnsigned());
}

// Integer arithmetic is done in the unsigned type of the same width, so that
// it wraps around instead of overflowing.
template <typename T>
using Unsigned = std::make_unsigned_t<T>;

struct Add {
  template <typename T>
  T operator()(T a, T b) const {
    if constexpr (kIsInteger<T>) return static_cast<T>(static_cast<Unsigned<T>>(a) + static_cast<Unsigned<T>>(b));
    else return a + b;
  }
};

struct Subtract {
  template <typename T>
  T operator()(T a, T b) const {
    if constexpr (kIsInteger<T>) return static_cast<T>(static_cast<Unsigned<T>>(a) - static_cast<Unsigned<T>>(b));
    else return a - b;
  }
};

struct Multiply {
  template <typename T>
  T operator()(T a, T b) const {
    if constexpr (kIsInteger<T>) return static_cast<T>(static_cast<Unsigned<T>>(a) * static_cast<Unsigned<T>>(b));
    else return a * b;
  }
};

// A zero divisor gives 0; the smallest signed value divided by -1 gives
// itself (the wrapped-around quotient).
struct Divide {
  template <typename T>
  T operator()(T a, T b) const {
    if (b == 0) return 0;
    if constexpr (std::is_signed_v<T> && kIsInteger<T>) {
      if (a == std::numeric_limits<T>::min() && b == -1) return a;
    }
    return a / b;
  }
};

struct BitAnd {
  template <typename T>
  T operator()(T a, T b) const { return a & b; }
};
struct BitOr {
  template <typename T>
  T operator()(T a, T b) const { return a | b; }
};
struct BitXor {
  template <typename T>
  T operator()(T a, T b) const { return a ^ b; }
};

using attribute_storage::Relation;

template <typename T, typename V>
bool holds(const V& a, const V& b, Relation relation) {
  if constexpr (kIsNumber<T>) {
    switch (relation) {
      case Relation::kEqual:
        return a == b;
      case Relation::kLess:
        return a < b;
      case Relation::kGreater:
        return a > b;
    }
    return false;
  } else {
    int order;
    if constexpr (kIsName<T>) order = std::strcmp(a.text, b.text);
    else order = std::strcmp(a, b);
    switch (relation) {
      case Relation::kEqual:
        return order == 0;
      case Relation::kLess:
        return order < 0;
      case Relation::kGreater:
        return order > 0;
    }
    return false;
  }
}

// A floating-point number converted for the "%d" of a message, without
// overflowing.
int countForMessage(double value) {
  if (std::isnan(value)) return 0;
  if (value <= INT_MIN) return INT_MIN;
  if (value >= INT_MAX) return INT_MAX;
  return static_cast<int>(value);
}

}  // namespace

std::unique_ptr<AttributeBase> AttributeBase::create(const std::string& name, ValueType type) {
  return create(AttributeName::of(name), type);
}

std::unique_ptr<AttributeBase> AttributeBase::create(const std::string* n, ValueType type) {
  std::unique_ptr<AttributeBase> created;
  withAttributeType(type, [&](auto* tag) { created = std::make_unique<AttributeOf<decltype(tag)>>(n); });
  return created;
}

AttributeBase* AttributeBase::createAt(void* place, const std::string* n, ValueType type) {
  AttributeBase* created = nullptr;
  withAttributeType(type, [&](auto* tag) {
    static_assert(sizeof(*tag) <= kMaxSize && alignof(AttributeOf<decltype(tag)>) <= 8, "attributes fit kMaxSize");
    created = new (place) AttributeOf<decltype(tag)>(n);
  });
  return created;
}

AttributeBase::~AttributeBase() = default;

void AttributeBase::setName(const char* name) { name_ = AttributeName::of(name ? name : ""); }

template <typename T>
Attribute<T>::Attribute(const char* name) : AttributeBase(AttributeName::of(name ? name : "")) {}

template <typename T>
Attribute<T>::~Attribute() {
  for (Value& value : values_) release(value);
}

template <typename T>
ValueType Attribute<T>::getType() const {
  return TypeInfo<T>::kCode;
}

template <typename T>
bool Attribute<T>::readValue(const char* text, Value& value) {
  if (text == nullptr) text = "";
  if constexpr (kIsNumber<T>) {
    if (*text == '\0') {
      value = 0;
      return true;
    }
    AttributeValue parsed;
    if (!AttributeValue::fromText(TypeInfo<T>::kCode, text, &parsed)) {
      reportUnreadable<T>(text);
      return false;
    }
    value = numberOf<Value>(parsed);
  } else if constexpr (kIsName<T>) {
    value = nameFromText(text);
  } else if constexpr (kIsString<T>) {
    value = copyText(text, std::strlen(text));
  } else {
    TAV_TRACE(INFO, "readValue(char *) called on SaAnyT, returning null struct");
    value = Bytes{0, nullptr};
  }
  return true;
}

template <typename T>
bool Attribute<T>::addCopy(const char* value) {
  if (!kIsString<T> && (value == nullptr || *value == '\0')) {
    TAV_TRACE(INFO, "Attribute<T>::addCopy called with empty string for %s, no new value created", name());
    return true;
  }
  Value parsed;
  if (!readValue(value, parsed)) return false;
  values_.push_back(parsed);
  return true;
}

template <typename T>
bool Attribute<T>::addCopy(const std::vector<uint8_t>& value) {
  if constexpr (kIsBytes<T>) {
    TAV_TRACE(INFO, "addCopy triggered for SaAnyT");
    values_.push_back(copyBytes(Bytes{value.size(), const_cast<uint8_t*>(value.data())}, name()));
    return true;
  } else {
    TAV_LOG(ERROR, "Unsupported Imm type for addCopy(const std::vector<uint8_t> &v), only SaAnyT is allowed");
    return false;
  }
}

template <typename T>
bool Attribute<T>::insertValueAtIndex(const char* value, uint32_t index) {
  if (!hasValue(index)) return addCopy(value);
  Value parsed;
  if (!readValue(value, parsed)) return false;
  values_.insert(index, parsed);
  return true;
}

// Past the end the last value goes: callers rely on that.
template <typename T>
bool Attribute<T>::eraseValueAtIndex(uint32_t index) {
  if (values_.empty()) return false;
  uint32_t position = hasValue(index) ? index : values_.size() - 1;
  release(values_[position]);
  values_.erase(position);
  return true;
}

template <typename T>
bool Attribute<T>::setValueAtIndex(uint32_t index, const char* value) {
  Value parsed;
  if (!readValue(value, parsed)) return false;
  if (!hasValue(index)) {
    release(parsed);
    return false;
  }
  release(values_[index]);
  values_[index] = parsed;
  return true;
}

template <typename T>
bool Attribute<T>::setRawDataValueAtIndex(uint32_t index, const std::vector<uint8_t>& value) {
  if constexpr (kIsBytes<T>) {
    TAV_TRACE(INFO, "setValueAtIndex called for SaAnyT with index: %d", index);
    if (!hasValue(index)) return false;
    Bytes copy = copyBytes(Bytes{value.size(), const_cast<uint8_t*>(value.data())}, name());
    release(values_[index]);
    values_[index] = copy;
    return true;
  } else {
    TAV_LOG(ERROR, "Unsupported operation, only for SA_ANY_T allowed");
    return false;
  }
}

template <typename T>
bool Attribute<T>::valueEqualsAtIndex(uint32_t index, const char* value) {
  return compareAtIndex(index, value, "valueEqualsAtIndex", Relation::kEqual);
}

template <typename T>
bool Attribute<T>::lessThanAtIndex(uint32_t index, const char* value) {
  return compareAtIndex(index, value, "lessThanAtIndex", Relation::kLess);
}

template <typename T>
bool Attribute<T>::greaterThanAtIndex(uint32_t index, const char* value) {
  return compareAtIndex(index, value, "greaterThanAtIndex", Relation::kGreater);
}

template <typename T>
bool Attribute<T>::compareAtIndex(uint32_t index, const char* text, const char* operation, Relation relation) {
  if constexpr (kIsBytes<T>) {
    refuse(operation);
    return false;
  } else {
    Value parsed;
    if (!readValue(text, parsed)) return false;
    bool result = hasValue(index) && holds<T>(values_[index], parsed, relation);
    release(parsed);
    return result;
  }
}

template <typename T>
std::optional<std::string> Attribute<T>::readValueAtIndex(uint32_t index) {
  if (!hasValue(index)) return std::nullopt;
  if constexpr (kIsBytes<T>) {
    TAV_TRACE(INFO, "readValue called, SaAnyT bufferSize %llu",
            static_cast<unsigned long long>(values_[index].size));
  }
  return valueText(index);
}

template <typename T>
std::string Attribute<T>::valueText(uint32_t index) const {
  if (!hasValue(index)) return "(null)";
  if constexpr (kIsNumber<T>) {
    AttributeValue value;
    std::string text;
    if (!getValue(index, &value) || !value.toText(&text)) return "(null)";
    return text;
  } else if constexpr (kIsName<T>) {
    return values_[index].text;
  } else if constexpr (kIsString<T>) {
    return values_[index];
  } else {
    return kNoConversion;
  }
}

template <typename T>
bool Attribute<T>::getValue(uint32_t index, AttributeValue* value) const {
  if (!hasValue(index)) return false;
  const Value& stored = values_[index];
  if constexpr (std::is_same_v<Value, double>) {
    *value = AttributeValue::ofDouble(stored);
  } else if constexpr (std::is_same_v<Value, float>) {
    *value = AttributeValue::ofFloat(stored);
  } else if constexpr (kIsInteger<T> && std::is_signed_v<Value>) {
    *value = AttributeValue::ofSigned(TypeInfo<T>::kCode, stored);
  } else if constexpr (kIsInteger<T>) {
    *value = AttributeValue::ofUnsigned(TypeInfo<T>::kCode, stored);
  } else if constexpr (kIsName<T>) {
    *value = AttributeValue::ofName(stored.text, stored.length);
  } else if constexpr (kIsString<T>) {
    *value = AttributeValue::ofString(stored);
  } else {
    const char* bytes = reinterpret_cast<const char*>(stored.data);
    *value = AttributeValue::ofBytes(bytes != nullptr ? std::string(bytes, stored.size) : std::string());
  }
  return true;
}

template <typename T>
bool Attribute<T>::insertValue(uint32_t index, const AttributeValue& value) {
  AttributeValue own;
  if (!value.convertTo(TypeInfo<T>::kCode, &own)) return false;
  values_.insert(hasValue(index) ? index : values_.size(), storedFormOf(own));
  return true;
}

template <typename T>
typename Attribute<T>::Value Attribute<T>::storedFormOf(const AttributeValue& value) const {
  if constexpr (kIsNumber<T>) {
    return numberOf<Value>(value);
  } else if constexpr (kIsName<T>) {
    const std::string& text = value.data();
    return Name{copyText(text.data(), std::min(text.size(), kNameTextLimit)), value.nameLength()};
  } else if constexpr (kIsString<T>) {
    return copyText(value.data().data(), value.data().size());
  } else {
    const std::string& bytes = value.data();
    Bytes source{bytes.size(), reinterpret_cast<uint8_t*>(const_cast<char*>(bytes.data()))};
    return copyBytes(source, name());
  }
}

template <typename T>
std::vector<uint8_t> Attribute<T>::getRawDataValueAtIndex(uint32_t index) {
  if constexpr (kIsBytes<T>) {
    std::vector<uint8_t> bytes;
    Bytes value = hasValue(index) ? values_[index] : Bytes{0, nullptr};
    if (value.data != nullptr) bytes.assign(value.data, value.data + value.size);
    TAV_TRACE(INFO, "SaAnyT getRawDataValueAtIndex at index:%d, bufferSize: %llu, v.size: %llu, attribute: %s", index,
            static_cast<unsigned long long>(value.size), static_cast<unsigned long long>(bytes.size()), name());
    return bytes;
  } else {
    TAV_LOG(ERROR, "Unsupported Imm type, only SaAnyT is allowed for method getRawDataValueAtIndex");
    return {};
  }
}

template <typename T>
bool Attribute<T>::addIntegerAtIndex(uint32_t index, const char* value) {
  if constexpr (kIsString<T>) {
    if (!hasValue(index)) return false;
    const char* tail = value != nullptr ? value : "";
    size_t headLength = std::strlen(values_[index]);
    size_t tailLength = std::strlen(tail);
    char* joined = static_cast<char*>(std::realloc(values_[index], headLength + tailLength + 1));
    if (joined == nullptr) throw std::bad_alloc();
    std::memcpy(joined + headLength, tail, tailLength + 1);
    values_[index] = joined;
    return true;
  } else {
    return arithmeticAtIndex(index, value, kIsBytes<T> ? "addAtIndex" : "addIntegerAtIndex", Add());
  }
}

template <typename T>
bool Attribute<T>::substractIntegerAtIndex(uint32_t index, const char* value) {
  return arithmeticAtIndex(index, value, "substractIntegerAtIndex", Subtract());
}

template <typename T>
bool Attribute<T>::multiplyAtIndex(uint32_t index, const char* value) {
  return arithmeticAtIndex(index, value, "multiplyAtIndex", Multiply());
}

template <typename T>
bool Attribute<T>::divideAtIndex(uint32_t index, const char* value) {
  return arithmeticAtIndex(index, value, "divideAtIndex", Divide());
}

template <typename T>
bool Attribute<T>::bitwiseAndAtIndex(uint32_t index, const char* value) {
  return bitwiseAtIndex(index, value, "bitwiseAndAtIndex", BitAnd());
}

template <typename T>
bool Attribute<T>::bitwiseOrAtIndex(uint32_t index, const char* value) {
  return bitwiseAtIndex(index, value, "bitwiseOrAtIndex", BitOr());
}

template <typename T>
bool Attribute<T>::bitwiseXorAtIndex(uint32_t index, const char* value) {
  return bitwiseAtIndex(index, value, "bitwiseXorAtIndex", BitXor());
}

template <typename T>
bool Attribute<T>::bitwiseLeftShiftAtIndex(uint32_t index, const char* value) {
  return shiftAtIndex(index, value, "bitwiseLeftShiftAtIndex", true);
}

template <typename T>
bool Attribute<T>::bitwiseRightShiftAtIndex(uint32_t index, const char* value) {
  return shiftAtIndex(index, value, "bitwiseRightShiftAtIndex", false);
}

template <typename T>
template <typename Operation>
bool Attribute<T>::arithmeticAtIndex(uint32_t index, const char* text, const char* operation, Operation operate) {
  if constexpr (kIsNumber<T>) {
    Value operand;
    if (!readValue(text, operand)) return false;
    if (!hasValue(index)) return false;
    values_[index] = operate(values_[index], operand);
    return true;
  } else {
    refuse(operation);
    return false;
  }
}

// Doubles have no bits to work on: they are refused with the message of an
// improper shift and the width of a double.
template <typename T>
template <typename Operation>
bool Attribute<T>::bitwiseAtIndex(uint32_t index, const char* text, const char* operation, Operation operate) {
  if constexpr (kIsInteger<T>) {
    return arithmeticAtIndex(index, text, operation, operate);
  } else if constexpr (kIsNumber<T>) {
    Value count;
    if (!readValue(text, count)) return false;
    refuseImproperShift(operation, countForMessage(count));
    return false;
  } else {
    refuse(operation);
    return false;
  }
}

// The count is read as a signed number. A count above the width less one is
// refused but reported as success; any other count is taken modulo the width,
// so a negative count shifts by its low bits. Right shifts fill with zeros.
template <typename T>
bool Attribute<T>::shiftAtIndex(uint32_t index, const char* text, const char* operation, bool left) {
  if constexpr (kIsInteger<T>) {
    constexpr int kWidth = sizeof(Value) * CHAR_BIT;
    Value read;
    if (!readValue(text, read)) return false;
    long long count = static_cast<std::make_signed_t<Value>>(read);
    if (!hasValue(index)) return false;
    if (count > kWidth - 1) {
      refuseImproperShift(operation, static_cast<int>(count));
      return true;
    }
    unsigned int bits = static_cast<unsigned int>(static_cast<unsigned long long>(count) & (kWidth - 1));
    Unsigned<Value> v = static_cast<Unsigned<Value>>(values_[index]);
    values_[index] =
        static_cast<Value>(left ? static_cast<Unsigned<Value>>(v << bits) : static_cast<Unsigned<Value>>(v >> bits));
    return true;
  } else if constexpr (kIsNumber<T>) {
    Value count;
    if (!readValue(text, count)) return false;
    refuseImproperShift(operation, countForMessage(count));
    return false;
  } else {
    refuse(operation);
    return false;
  }
}

template <typename T>
void Attribute<T>::refuseImproperShift(const char* operation, int count) const {
  int width = kIsNumber<T> ? static_cast<int>(sizeof(Value) * CHAR_BIT) : 0;
  TAV_LOG(ERROR, "%s unsupported operation, improper bitwiseShiftIndex %d, or data type size %d", operation, count,
          width);
}

template <typename T>
void Attribute<T>::refuse(const char* operation) const {
  if constexpr (kIsBytes<T>) {
    TAV_LOG(ERROR, "%s not implemented for SaAnyT", operation);
  } else {
    TAV_LOG(ERROR, "%s called with type %s", operation, TypeInfo<T>::kName);
  }
}

template <typename T>
bool Attribute<T>::hasValueAtIndex(uint32_t index) {
  if constexpr (kIsBytes<T>) {
    refuse("hasValueAtIndex");
    return false;
  } else {
    return hasValue(index);
  }
}

template <typename T>
void Attribute<T>::appendRead(const Value& value, uint32_t position) {
  values_.push_back(copyOf(value));
  TAV_TRACE(TRACE1, "init::attr[%d] name: \"%s\", type: %d, value: %s", position, name(), codeOf(getType()),
          valueText(values_.size() - 1).c_str());
}

template <typename T>
typename Attribute<T>::Value Attribute<T>::copyOf(const Value& value) const {
  if constexpr (kIsNumber<T>) {
    return value;
  } else if constexpr (kIsName<T>) {
    return Name{copyText(value.text, std::strlen(value.text)), value.length};
  } else if constexpr (kIsString<T>) {
    const char* text = value != nullptr ? value : "";
    return copyText(text, std::strlen(text));
  } else {
    return copyBytes(value, name());
  }
}

template <typename T>
void Attribute<T>::release(Value& value) const {
  if constexpr (kIsName<T>) {
    std::free(value.text);
  } else if constexpr (kIsString<T>) {
    std::free(value);
  } else if constexpr (kIsBytes<T>) {
    std::free(value.data);
  }
}

template <typename T>
void Attribute<T>::traceWrite() const {
  TAV_TRACE(TRACE1, "ATTRIBUTE(name: \"%s\", type: %d, numOfValues: %d)", name(), codeOf(getType()),
          getNumberOfValues());
  for (uint32_t i = 0; i < getNumberOfValues(); ++i) {
    TAV_TRACE(TRACE1, "ATTRIBUTE(name: \"%s\", value: %s)", name(), valueText(i).c_str());
  }
}

template class Attribute<int>;
template class Attribute<unsigned int>;
template class Attribute<long long>;
template class Attribute<unsigned long long>;
template class Attribute<Time>;
template class Attribute<float>;
template class Attribute<double>;
template class Attribute<Name>;
template class Attribute<char*>;
template class Attribute<Bytes>;
