// The attribute classes of the instance model: Attribute<T> for the ten
// value types, each bound to one ValueType:
//
//   int (kInt32), unsigned int (kUint32), long long (kInt64),
//   unsigned long long (kUint64), attribute_storage::Time (kTime),
//   attribute_storage::Name (kName), float (kFloat), double (kDouble),
//   char* (kString), attribute_storage::Bytes (kAny).
//
// Numbers are read as ValueText reads them (an empty text is 0) and written
// in decimal, floating-point numbers in the shortest text that reads back to
// the same value. Integer arithmetic (time included) wraps around in the
// type's width; right shifts are logical also for the signed types; dividing
// by 0 stores 0. A text that is no value of the type is logged, and the
// operation fails without changing anything.
//
// Storage is compact: a name value keeps its text (at most 599 characters)
// and its length field; strings and byte buffers are heap copies owned by
// the attribute. The values are laid out so that the write records of the
// ICTI boundary (ImmRecords) can borrow them.
//
// An attribute belongs to one instance and is used by one thread at a time.

#ifndef VOSK_ICTI_ATTRIBUTE_H
#define VOSK_ICTI_ATTRIBUTE_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "icti/AttributeInternalIf.h"
#include "icti/AttributeValue.h"
#include "icti/ValueType.h"

// A class or parent name, shared by the instances read together.
using SharedName = std::shared_ptr<const std::string>;

// What every attribute type shares: its name (one copy in AttributeName)
// and the factory by IMM value type code. An instance keeps its attributes
// through this class so that it can order them by name without copying
// names.
class AttributeBase : public AttributeInternalIf {
 public:
  // An empty attribute of the type, or null for kNone or a code that is no
  // value type.
  static std::unique_ptr<AttributeBase> create(const std::string& name, ValueType type);
  // `name` is AttributeName's copy.
  static std::unique_ptr<AttributeBase> create(const std::string* name, ValueType type);
  // The most bytes an attribute of any type takes.
  static constexpr size_t kMaxSize = 48;
  // create() in place, at `place`: kMaxSize bytes aligned to 8. The caller
  // ends the attribute with its destructor.
  static AttributeBase* createAt(void* place, const std::string* name, ValueType type);

  ~AttributeBase() override;
  AttributeBase(const AttributeBase&) = delete;
  AttributeBase& operator=(const AttributeBase&) = delete;

  std::string getName() const override { return *name_; }
  // A null name is stored as an empty one.
  void setName(const char* name) override;

  // The name itself: valid for the life of the process.
  const char* name() const { return name_->c_str(); }

  // Traces the attribute and its values as they go to the node.
  virtual void traceWrite() const = 0;

 protected:
  explicit AttributeBase(const std::string* name) : name_(name) {}

 private:
  const std::string* name_;
};

namespace attribute_storage {

// A name value: the text the readers see (at most 599 characters, always
// terminated) and the length field, which keeps the full length of the text
// it was made from.
struct Name {
  char* text;
  uint16_t length;
};

// The tag of time attributes: time is a plain 64-bit count, so it needs a
// type of its own to be told from long long.
struct Time {};

// A byte buffer: `size` bytes at `data` (null when empty).
struct Bytes {
  uint64_t size;
  uint8_t* data;
};

enum class Relation { kEqual, kLess, kGreater };

// The values of one attribute in index order: one value is kept in place,
// more on the heap. For trivially copyable values only.
template <typename V>
class ValueList {
 public:
  ValueList() {}
  ~ValueList() {
    if (capacity_ > 1) std::free(held_.many);
  }
  ValueList(const ValueList&) = delete;
  ValueList& operator=(const ValueList&) = delete;

  uint32_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  V& operator[](uint32_t index) { return data()[index]; }
  const V& operator[](uint32_t index) const { return data()[index]; }
  V* begin() { return data(); }
  V* end() { return data() + size_; }

  void push_back(V value) { insert(size_, value); }
  void insert(uint32_t position, V value) {
    reserve(size_ + 1);
    V* values = data();
    std::memmove(values + position + 1, values + position, (size_ - position) * sizeof(V));
    values[position] = value;
    ++size_;
  }
  // A retired list stands for values that have gone elsewhere: it holds
  // none and takes none. Only an empty list retires.
  void retire() { capacity_ = 0; }
  bool retired() const { return capacity_ == 0; }
  // Exchanges the values of two lists of the same type.
  void swap(ValueList& other) {
    std::swap(held_, other.held_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }
  void erase(uint32_t position) {
    V* values = data();
    std::memmove(values + position, values + position + 1, (size_ - position - 1) * sizeof(V));
    --size_;
  }

 private:
  V* data() { return capacity_ > 1 ? held_.many : &held_.one; }
  const V* data() const { return capacity_ > 1 ? held_.many : &held_.one; }
  void reserve(uint32_t wanted) {
    if (wanted <= capacity_) return;
    uint32_t capacity = std::max(wanted, capacity_ * 2);
    auto* grown = static_cast<V*>(std::malloc(capacity * sizeof(V)));
    if (grown == nullptr) throw std::bad_alloc();
    std::memcpy(grown, data(), size_ * sizeof(V));
    if (capacity_ > 1) std::free(held_.many);
    held_.many = grown;
    capacity_ = capacity;
  }

  static_assert(std::is_trivially_copyable_v<V>, "values are moved with memmove");
  union Held {
    V one;
    V* many;
  };
  Held held_;
  uint32_t size_ = 0;
  uint32_t capacity_ = 1;
};

// The stored element of each type.
template <typename T>
struct Storage {
  using Value = T;
};

template <>
struct Storage<Time> {
  using Value = long long;
};

}  // namespace attribute_storage

template <typename T>
class Attribute : public AttributeBase {
 public:
  using Value = typename attribute_storage::Storage<T>::Value;

  explicit Attribute(const char* name);
  explicit Attribute(const std::string* name) : AttributeBase(name) {}
  ~Attribute() override;

  ValueType getType() const override;
  uint32_t getNumberOfValues() const override { return values_.size(); }

  bool addCopy(const char* value) override;
  bool addCopy(const std::vector<uint8_t>& value) override;
  bool insertValueAtIndex(const char* value, uint32_t index) override;
  bool eraseValueAtIndex(uint32_t index) override;
  bool setValueAtIndex(uint32_t index, const char* value) override;
  bool setRawDataValueAtIndex(uint32_t index, const std::vector<uint8_t>& value) override;
  bool valueEqualsAtIndex(uint32_t index, const char* value) override;
  std::optional<std::string> readValueAtIndex(uint32_t index) override;
  std::vector<uint8_t> getRawDataValueAtIndex(uint32_t index) override;

  bool addIntegerAtIndex(uint32_t index, const char* value) override;
  bool substractIntegerAtIndex(uint32_t index, const char* value) override;
  bool multiplyAtIndex(uint32_t index, const char* value) override;
  bool divideAtIndex(uint32_t index, const char* value) override;
  bool bitwiseLeftShiftAtIndex(uint32_t index, const char* value) override;
  bool bitwiseRightShiftAtIndex(uint32_t index, const char* value) override;
  bool bitwiseAndAtIndex(uint32_t index, const char* value) override;
  bool bitwiseOrAtIndex(uint32_t index, const char* value) override;
  bool bitwiseXorAtIndex(uint32_t index, const char* value) override;
  bool lessThanAtIndex(uint32_t index, const char* value) override;
  bool greaterThanAtIndex(uint32_t index, const char* value) override;

  bool getValue(uint32_t index, AttributeValue* value) const override;
  bool insertValue(uint32_t index, const AttributeValue& value) override;

  bool hasValueAtIndex(uint32_t index) override;
  void traceWrite() const override;

  // The values in index order, for the write records that borrow them.
  const attribute_storage::ValueList<Value>& values() const { return values_; }
  // Exchanges the values with a list kept elsewhere: PackedAttributes keeps
  // read values without an attribute object and lends them to one.
  void swapValues(attribute_storage::ValueList<Value>& other) { values_.swap(other); }
  // Appends a copy of a value read from the node, the `position`th of what
  // was read. A name's text must be terminated; a null string reads as "".
  void appendRead(const Value& value, uint32_t position);

  // One value from text; the caller owns what it points to. False (logged)
  // when the text is no value of the type.
  bool readValue(const char* text, Value& value);

 private:
  template <typename Operation>
  bool arithmeticAtIndex(uint32_t index, const char* text, const char* operation, Operation operate);
  template <typename Operation>
  bool bitwiseAtIndex(uint32_t index, const char* text, const char* operation, Operation operate);
  bool shiftAtIndex(uint32_t index, const char* text, const char* operation, bool left);
  bool compareAtIndex(uint32_t index, const char* text, const char* operation, attribute_storage::Relation relation);
  void refuse(const char* operation) const;
  void refuseImproperShift(const char* operation, int count) const;
  bool hasValue(uint32_t index) const { return index < values_.size(); }
  // A value's text for messages: "(null)" past the end.
  std::string valueText(uint32_t index) const;
  Value copyOf(const Value& value) const;
  // The stored form of a value of this attribute's own type.
  Value storedFormOf(const AttributeValue& value) const;
  void release(Value& value) const;

  attribute_storage::ValueList<Value> values_;
};

extern template class Attribute<int>;
extern template class Attribute<unsigned int>;
extern template class Attribute<long long>;
extern template class Attribute<unsigned long long>;
extern template class Attribute<attribute_storage::Time>;
extern template class Attribute<float>;
extern template class Attribute<double>;
extern template class Attribute<attribute_storage::Name>;
extern template class Attribute<char*>;
extern template class Attribute<attribute_storage::Bytes>;

// Calls `visit` with a null Attribute<T>* of the type's T and gives true;
// false, without calling it, for kNone or a code that is no value type.
template <typename Visit>
bool withAttributeType(ValueType type, Visit visit) {
  using attribute_storage::Bytes;
  using attribute_storage::Name;
  using attribute_storage::Time;
  switch (type) {
    case ValueType::kInt32:
      return visit(static_cast<Attribute<int>*>(nullptr)), true;
    case ValueType::kUint32:
      return visit(static_cast<Attribute<unsigned int>*>(nullptr)), true;
    case ValueType::kInt64:
      return visit(static_cast<Attribute<long long>*>(nullptr)), true;
    case ValueType::kUint64:
      return visit(static_cast<Attribute<unsigned long long>*>(nullptr)), true;
    case ValueType::kTime:
      return visit(static_cast<Attribute<Time>*>(nullptr)), true;
    case ValueType::kFloat:
      return visit(static_cast<Attribute<float>*>(nullptr)), true;
    case ValueType::kName:
      return visit(static_cast<Attribute<Name>*>(nullptr)), true;
    case ValueType::kDouble:
      return visit(static_cast<Attribute<double>*>(nullptr)), true;
    case ValueType::kString:
      return visit(static_cast<Attribute<char*>*>(nullptr)), true;
    case ValueType::kAny:
      return visit(static_cast<Attribute<Bytes>*>(nullptr)), true;
    default:
      return false;
  }
}

// The attribute class a withAttributeType tag points to.
template <typename Tag>
using AttributeOf = std::remove_pointer_t<Tag>;

#endif
