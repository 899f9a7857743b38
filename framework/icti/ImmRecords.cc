#include "icti/ImmRecords.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "common/Log.h"
#include "icti/Attribute.h"
#include "icti/AttributeName.h"
#include "icti/InstanceGroup.h"
#include "icti/PackedAttributes.h"
#include "icti/ValueType.h"

namespace {

using attribute_storage::Bytes;
using attribute_storage::Name;
using attribute_storage::Time;

// The record's value area keeps a name's text and a closing NUL.
static_assert(SA_MAX_NAME_LENGTH - 1 == kNameTextLimit, "name values fit a name record");
// The write records lend the model's values to the node as they are.
static_assert(sizeof(long long) == sizeof(SaTimeT), "time values are 64-bit counts");
static_assert(sizeof(Bytes) == sizeof(SaAnyT) && offsetof(Bytes, size) == offsetof(SaAnyT, bufferSize) &&
                  offsetof(Bytes, data) == offsetof(SaAnyT, bufferAddr),
              "byte buffers are laid out as the node's");
static_assert(std::is_same_v<char*, SaStringT>, "strings are C strings");
static_assert(static_cast<SaImmValueTypeT>(ValueType::kAny) == SA_IMM_ATTR_SAANYT &&
                  static_cast<SaImmValueTypeT>(ValueType::kInt32) == SA_IMM_ATTR_SAINT32T,
              "value types keep the node's codes");

// The text of a name record as readers see it: up to its first NUL, at most
// 599 characters and no more than its length field says.
size_t nameTextLength(const SaNameT& record) {
  size_t length = strnlen(reinterpret_cast<const char*>(record.value), kNameTextLimit);
  return record.length < length ? record.length : length;
}

std::string nameText(const SaNameT& record) {
  return std::string(reinterpret_cast<const char*>(record.value), nameTextLength(record));
}

// Fills a name record: the length field takes the value's, the value area
// its text and a closing NUL.
void fillNameRecord(const char* text, uint16_t length, SaNameT& record) {
  std::memset(&record, 0, sizeof record);
  record.length = length;
  std::memcpy(record.value, text, std::strlen(text));
}

// The shared name record of `text` with the length field `length`, made on
// first use.
const SaNameT* nameRecord(const char* text, uint16_t length, NameRecords* names) {
  std::string key(text);
  key.append(reinterpret_cast<const char*>(&length), sizeof length);
  std::unique_ptr<SaNameT>& record = (*names)[key];
  if (!record) {
    record = std::make_unique<SaNameT>();
    fillNameRecord(text, length, *record);
  }
  return record.get();
}

// One value of the record in the model's form, borrowing what it points to;
// `text` holds a name's terminated text.
template <typename T>
typename Attribute<T>::Value borrowedValue(const void* value, char (&text)[kNameTextLimit + 1]) {
  using Value = typename Attribute<T>::Value;
  if constexpr (std::is_same_v<T, Name>) {
    const auto& record = *static_cast<const SaNameT*>(value);
    size_t length = nameTextLength(record);
    std::memcpy(text, record.value, length);
    text[length] = '\0';
    return Name{text, record.length};
  } else if constexpr (std::is_same_v<T, Bytes>) {
    const auto& record = *static_cast<const SaAnyT*>(value);
    return Bytes{record.bufferSize, record.bufferAddr};
  } else {
    Value copy;
    std::memcpy(&copy, value, sizeof copy);
    return copy;
  }
}

template <typename T>
void readValues(Attribute<T>& attribute, const SaImmAttrValuesT_2& record) {
  if (record.attrValues == nullptr) return;
  char text[kNameTextLimit + 1];
  for (uint32_t i = 0; i < record.attrValuesNumber; ++i) {
    if (record.attrValues[i] != nullptr) attribute.appendRead(borrowedValue<T>(record.attrValues[i], text), i);
  }
}

// Calls `visit` with the attribute as the Attribute<T> of its type, const
// when `Base` is.
template <typename Base, typename Visit>
void visitTyped(Base& attribute, Visit visit) {
  withAttributeType(attribute.getType(), [&](auto* tag) {
    using Typed =
        std::conditional_t<std::is_const_v<Base>, const AttributeOf<decltype(tag)>, AttributeOf<decltype(tag)>>;
    visit(static_cast<Typed&>(attribute));
  });
}

// The names of one read: parent names, each made once and shared by the
// instances below it, and attribute names (AttributeName's). A node's
// records may share one copy of a name too: a name is looked up by its
// address first, and its text is only hashed the first time an address is
// seen. The layout of the last instance's attributes is kept too: the
// instances of a class are mostly read with the same attributes.
class ReadNames {
 public:
  // The layout of the record's attributes, or null when they cannot be
  // packed.
  const PackedAttributes::Layout* layoutOf(const SafcImmCtInstanceT& record) {
    order_.clear();
    for (size_t i = 0; record.attrValues != nullptr && record.attrValues[i] != nullptr; ++i) {
      const SaImmAttrValuesT_2& attribute = *record.attrValues[i];
      order_.emplace_back(attributeName(attribute.attrName), static_cast<ValueType>(attribute.attrValueType));
    }
    if (layout_ == nullptr || layout_->order() != order_) layout_ = PackedAttributes::Layout::of(order_);
    return layout_;
  }
  const std::string* attributeName(const char* text) {
    const std::string*& name = attributeNames_[text];
    if (name == nullptr) name = AttributeName::of(text != nullptr ? text : "");
    return name;
  }
  SharedName parentName(const SaNameT& record) {
    SharedName& name = parentNames_[&record];
    if (!name) name = byText(nameText(record));
    return name;
  }

 private:
  SharedName byText(const std::string& text) {
    SharedName& name = byText_[text];
    if (!name) name = std::make_shared<const std::string>(text);
    return name;
  }

  std::unordered_map<const char*, const std::string*> attributeNames_;
  std::unordered_map<const SaNameT*, SharedName> parentNames_;
  std::unordered_map<std::string, SharedName> byText_;
  std::vector<PackedAttributes::Layout::Read> order_;
  const PackedAttributes::Layout* layout_ = nullptr;
};

std::unique_ptr<Instance> readInstance(const SafcImmCtInstanceT& record, const std::string* className,
                                       const std::string& rdnAttribute, std::vector<AttributeBase*>& readOrder,
                                       ReadNames* names) {
  SharedName parentName;
  if (record.parentName != nullptr) parentName = names->parentName(*record.parentName);
  auto instance = std::make_unique<Instance>(className, std::move(parentName));
  readOrder.clear();
  if (const PackedAttributes::Layout* layout = names->layoutOf(record)) {
    PackedAttributes& packed = instance->readPacked(*layout);
    for (size_t i = 0; i < layout->order().size(); ++i) {
      const SaImmAttrValuesT_2& attributeRecord = *record.attrValues[i];
      packed.lend(layout->slotRead(i), [&attributeRecord](AttributeBase& attribute) {
        visitTyped(attribute, [&attributeRecord](auto& typed) { readValues(typed, attributeRecord); });
      });
    }
  } else {
    // Attributes that cannot be packed are read one by one, and the
    // instance reports what it refuses.
    for (size_t i = 0; record.attrValues != nullptr && record.attrValues[i] != nullptr; ++i) {
      const SaImmAttrValuesT_2& attributeRecord = *record.attrValues[i];
      AttributeBase* attribute = instance->addReadAttribute(names->attributeName(attributeRecord.attrName),
                                                            static_cast<ValueType>(attributeRecord.attrValueType));
      if (attribute == nullptr) continue;
      visitTyped(*attribute, [&attributeRecord](auto& typed) { readValues(typed, attributeRecord); });
      readOrder.push_back(attribute);
    }
  }
  instance->nameByAttributes(readOrder, rdnAttribute);
  return instance;
}

// The bytes an attribute's record takes with its `count` value pointers and
// the null after them.
size_t attributeRecordSize(uint32_t count) {
  static_assert(sizeof(SaImmAttrValuesT_2) % alignof(SaImmAttrValueT) == 0, "pointers follow the record aligned");
  return sizeof(SaImmAttrValuesT_2) + (count + 1) * sizeof(SaImmAttrValueT);
}

// One attribute on its way to the node: an attribute object, or a slot of
// an instance's packed attributes. Neither is one of another implementation
// than the model's.
struct Outgoing {
  const AttributeBase* object;
  PackedAttributes* packed;
  size_t slot;

  bool known() const { return object != nullptr || packed != nullptr; }
  const char* name() const { return object != nullptr ? object->name() : packed->layout().name(slot)->c_str(); }
  ValueType type() const { return object != nullptr ? object->getType() : packed->layout().type(slot); }
  // Calls `visit(name, type, values)` with the values as they are kept.
  template <typename Visit>
  void withValues(Visit visit) const {
    if (object != nullptr) {
      visitTyped(*object, [&visit](const auto& typed) { visit(typed.name(), typed.getType(), typed.values()); });
      return;
    }
    withAttributeType(type(), [&](auto* tag) {
      using Value = typename AttributeOf<decltype(tag)>::Value;
      visit(name(), type(), packed->values<Value>(slot));
    });
  }
  uint32_t count() const {
    uint32_t count = 0;
    withValues([&count](const char*, ValueType, const auto& values) { count = values.size(); });
    return count;
  }
  void traceWrite() const {
    if (object != nullptr) {
      object->traceWrite();
    } else {
      packed->lend(slot, [](AttributeBase& attribute) { attribute.traceWrite(); });
    }
  }
};

// Fills the record at `record`, which has room for the value pointers after
// it: the record lends the attribute's name and values; name values, which
// the model keeps in another layout, point to shared name records.
void fillAttributeRecord(const Outgoing& attribute, SaImmAttrValuesT_2* record, NameRecords* names) {
  attribute.traceWrite();
  attribute.withValues([record, names](const char* name, ValueType type, const auto& values) {
    using Value = std::remove_const_t<std::remove_reference_t<decltype(values[0])>>;
    const uint32_t count = values.size();
    auto* pointers = reinterpret_cast<SaImmAttrValueT*>(record + 1);
    record->attrName = const_cast<char*>(name);
    record->attrValueType = static_cast<SaImmValueTypeT>(type);
    record->attrValuesNumber = count;
    for (uint32_t i = 0; i < count; ++i) {
      if constexpr (std::is_same_v<Value, Name>) {
        pointers[i] = const_cast<SaNameT*>(nameRecord(values[i].text, values[i].length, names));
      } else {
        pointers[i] = const_cast<void*>(static_cast<const void*>(&values[i]));
      }
    }
    pointers[count] = nullptr;
    record->attrValues = pointers;
  });
}

// The attributes of `instance` in name order, into `attributes`; one of
// another implementation than the model's is not known().
void modelAttributes(const InstanceIf& instance, std::vector<Outgoing>* attributes) {
  attributes->clear();
  if (const auto* model = dynamic_cast<const Instance*>(&instance)) {
    model->forEachAttribute(
        [attributes](const AttributeBase& object) {
          attributes->push_back({&object, nullptr, 0});
        },
        [attributes](PackedAttributes& packed, size_t slot) {
          attributes->push_back({nullptr, &packed, slot});
        });
    return;
  }
  for (const auto& named : instance.getAttributes()) {
    attributes->push_back({dynamic_cast<const AttributeBase*>(named.second), nullptr, 0});
  }
}

void logNoRoom(const Outgoing& attribute) {
  TAV_LOG(ERROR,
          attribute.type() == ValueType::kAny ? "Failed to malloc values pointer field for SA_ANY_T attribute %s"
                                              : "Failed to malloc values pointer field for attribute %s",
          attribute.name());
}

// The record of an instance, in one block: the instance's record, its
// attribute pointers, then each attribute's record with its value pointers.
// Null when an attribute is none of the model's or memory ran out.
// `attributes` is scratch space.
SafcImmCtInstanceT* instanceRecord(const InstanceIf& instance, NameRecords* names, std::vector<Outgoing>* attributes) {
  static_assert(sizeof(SafcImmCtInstanceT) % alignof(SaImmAttrValuesT_2*) == 0, "pointers follow the record aligned");
  modelAttributes(instance, attributes);
  size_t size = sizeof(SafcImmCtInstanceT) + (attributes->size() + 1) * sizeof(SaImmAttrValuesT_2*);
  for (const Outgoing& attribute : *attributes) {
    if (!attribute.known()) return nullptr;
    size += attributeRecordSize(attribute.count());
  }
  auto* record = static_cast<SafcImmCtInstanceT*>(std::calloc(1, size));
  if (record == nullptr) {
    if (!attributes->empty()) logNoRoom(attributes->front());
    return nullptr;
  }
  record->attrValues = reinterpret_cast<SaImmAttrValuesT_2**>(record + 1);
  const std::string& parentName = instance.getParentName();
  if (!parentName.empty()) {
    const std::string kept = parentName.substr(0, kNameTextLimit);
    record->parentName =
        const_cast<SaNameT*>(nameRecord(kept.c_str(), static_cast<uint16_t>(parentName.size()), names));
  }
  auto* next = reinterpret_cast<unsigned char*>(record->attrValues + attributes->size() + 1);
  for (size_t i = 0; i < attributes->size(); ++i) {
    auto* attributeRecord = reinterpret_cast<SaImmAttrValuesT_2*>(next);
    fillAttributeRecord((*attributes)[i], attributeRecord, names);
    record->attrValues[i] = attributeRecord;
    next += attributeRecordSize(attributeRecord->attrValuesNumber);
  }
  return record;
}

void freeGroupRecord(SafcImmCtInstanceGroupT* record) {
  for (size_t i = 0; record->instances != nullptr && record->instances[i] != nullptr; ++i) {
    std::free(record->instances[i]);
  }
  std::free(record->instances);
  std::free(record);
}

SafcImmCtInstanceGroupT* groupRecord(const InstanceGroup& group, NameRecords* names) {
  auto* record = static_cast<SafcImmCtInstanceGroupT*>(std::calloc(1, sizeof(SafcImmCtInstanceGroupT)));
  if (record == nullptr) return nullptr;
  record->className = const_cast<char*>(group.getImmClassName().c_str());
  const std::vector<InstanceIf*> instances = group.getInstances();
  record->instances = static_cast<SafcImmCtInstanceT**>(std::calloc(instances.size() + 1, sizeof(SafcImmCtInstanceT*)));
  if (record->instances == nullptr) {
    std::free(record);
    return nullptr;
  }
  std::vector<Outgoing> attributes;
  for (size_t i = 0; i < instances.size(); ++i) {
    record->instances[i] = instanceRecord(*instances[i], names, &attributes);
    if (record->instances[i] == nullptr) {
      freeGroupRecord(record);
      return nullptr;
    }
  }
  return record;
}

}  // namespace

ImmRecords::~ImmRecords() {
  for (SafcImmCtInstanceGroupT* record : records_) freeGroupRecord(record);
}

std::unique_ptr<InstanceGroup> ImmRecords::readGroup(const SafcImmCtInstanceGroupT& record,
                                                     const std::string& rdnAttribute,
                                                     const std::string& namespacePrefix) {
  size_t size = 0;
  while (record.instances != nullptr && record.instances[size] != nullptr) ++size;
  auto group = std::make_unique<InstanceGroup>(record.className != nullptr ? record.className : "", rdnAttribute,
                                               namespacePrefix, size);
  std::vector<AttributeBase*> readOrder;
  ReadNames names;
  const std::string* className = AttributeName::of(group->getClassName());
  for (size_t i = 0; i < size; ++i) {
    group->appendRead(readInstance(*record.instances[i], className, rdnAttribute, readOrder, &names));
  }
  return group;
}

bool ImmRecords::add(const InstanceGroup& group) {
  SafcImmCtInstanceGroupT* record = groupRecord(group, &names_);
  if (record == nullptr) return false;
  records_.push_back(record);
  return true;
}

SafcImmCtInstanceGroupT** ImmRecords::terminated() {
  terminated_ = records_;
  terminated_.push_back(nullptr);
  return terminated_.data();
}
