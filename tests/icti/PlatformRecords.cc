#include "PlatformRecords.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

template <typename T>
T* PlatformRecords::make(size_t count) {
  blocks_.emplace_back(new char[sizeof(T) * count]());
  return reinterpret_cast<T*>(blocks_.back().get());
}

char* PlatformRecords::text(const std::string& text) {
  return static_cast<char*>(std::memcpy(make<char>(text.size() + 1), text.c_str(), text.size() + 1));
}

SaNameT* PlatformRecords::name(const std::string& text, SaUint16T length) {
  auto* record = make<SaNameT>();
  record->length = length;
  std::memcpy(record->value, text.data(), std::min(text.size(), sizeof record->value));
  return record;
}

void* PlatformRecords::value(SaImmValueTypeT type, const std::string& text) {
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      return new (make<SaInt32T>()) SaInt32T(static_cast<SaInt32T>(std::strtol(text.c_str(), nullptr, 10)));
    case SA_IMM_ATTR_SAUINT32T:
      return new (make<SaUint32T>()) SaUint32T(static_cast<SaUint32T>(std::strtoul(text.c_str(), nullptr, 10)));
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      return new (make<SaInt64T>()) SaInt64T(std::strtoll(text.c_str(), nullptr, 10));
    case SA_IMM_ATTR_SAFLOATT:
      return new (make<SaFloatT>()) SaFloatT(std::strtof(text.c_str(), nullptr));
    case SA_IMM_ATTR_SAUINT64T:
      return new (make<SaUint64T>()) SaUint64T(std::strtoull(text.c_str(), nullptr, 10));
    case SA_IMM_ATTR_SADOUBLET:
      return new (make<SaDoubleT>()) SaDoubleT(std::strtod(text.c_str(), nullptr));
    case SA_IMM_ATTR_SANAMET:
      return name(text, static_cast<SaUint16T>(text.size()));
    case SA_IMM_ATTR_SASTRINGT:
      return new (make<SaStringT>()) SaStringT(this->text(text));
    case SA_IMM_ATTR_SAANYT: {
      auto* any = make<SaAnyT>();
      any->bufferSize = text.size() / 2;
      any->bufferAddr = make<SaUint8T>(any->bufferSize + 1);
      for (size_t i = 0; i < any->bufferSize; ++i) {
        any->bufferAddr[i] = static_cast<SaUint8T>(std::strtoul(text.substr(2 * i, 2).c_str(), nullptr, 16));
      }
      return any;
    }
    default:
      return nullptr;
  }
}

SaImmAttrValuesT_2* PlatformRecords::attribute(const AttributeData& data) {
  auto* record = make<SaImmAttrValuesT_2>();
  record->attrName = text(data.name);
  record->attrValueType = data.type;
  record->attrValuesNumber = static_cast<SaUint32T>(data.values.size());
  record->attrValues = make<SaImmAttrValueT>(data.values.size() + 1);
  for (size_t i = 0; i < data.values.size(); ++i) record->attrValues[i] = value(data.type, data.values[i]);
  return record;
}

SafcImmCtInstanceT* PlatformRecords::instance(const InstanceData& data) {
  auto* record = make<SafcImmCtInstanceT>();
  if (data.parent) record->parentName = name(*data.parent, static_cast<SaUint16T>(data.parent->size()));
  record->attrValues = make<SaImmAttrValuesT_2*>(data.attributes.size() + 1);
  for (size_t i = 0; i < data.attributes.size(); ++i) record->attrValues[i] = attribute(data.attributes[i]);
  return record;
}

SafcImmCtInstanceGroupT* PlatformRecords::group(const std::string& className,
                                                const std::vector<InstanceData>& instances) {
  auto* record = make<SafcImmCtInstanceGroupT>();
  record->className = text(className);
  record->instances = make<SafcImmCtInstanceT*>(instances.size() + 1);
  for (size_t i = 0; i < instances.size(); ++i) record->instances[i] = instance(instances[i]);
  return record;
}

namespace {

std::string nameText(const SaNameT& name) {
  return std::string(reinterpret_cast<const char*>(name.value), strnlen(reinterpret_cast<const char*>(name.value),
                                                                        sizeof name.value)) +
         "#" + std::to_string(name.length);
}

std::string valueText(SaImmValueTypeT type, const void* value) {
  char text[64];
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      return std::to_string(*static_cast<const SaInt32T*>(value));
    case SA_IMM_ATTR_SAUINT32T:
      return std::to_string(*static_cast<const SaUint32T*>(value));
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      return std::to_string(*static_cast<const SaInt64T*>(value));
    case SA_IMM_ATTR_SAFLOATT:
      std::snprintf(text, sizeof text, "%.9g", *static_cast<const SaFloatT*>(value));
      return text;
    case SA_IMM_ATTR_SAUINT64T:
      return std::to_string(*static_cast<const SaUint64T*>(value));
    case SA_IMM_ATTR_SADOUBLET:
      std::snprintf(text, sizeof text, "%.17g", *static_cast<const SaDoubleT*>(value));
      return text;
    case SA_IMM_ATTR_SANAMET:
      return nameText(*static_cast<const SaNameT*>(value));
    case SA_IMM_ATTR_SASTRINGT:
      return std::string("'") + *static_cast<const SaStringT*>(value) + "'";
    case SA_IMM_ATTR_SAANYT: {
      const auto* any = static_cast<const SaAnyT*>(value);
      std::string hex;
      for (SaSizeT i = 0; i < any->bufferSize; ++i) {
        std::snprintf(text, sizeof text, "%02x", any->bufferAddr[i]);
        hex += text;
      }
      return "0x" + hex;
    }
    default:
      return "?";
  }
}

}  // namespace

std::string describe(const SaImmAttrValuesT_2* attribute) {
  std::ostringstream out;
  out << attribute->attrName << ":" << attribute->attrValueType << "[" << attribute->attrValuesNumber << "]";
  for (SaUint32T i = 0; i < attribute->attrValuesNumber; ++i) {
    out << " " << valueText(attribute->attrValueType, attribute->attrValues[i]);
  }
  out << (attribute->attrValues[attribute->attrValuesNumber] == nullptr ? "" : " UNTERMINATED");
  return out.str();
}

std::string describe(const SafcImmCtInstanceGroupT* group) {
  std::ostringstream out;
  out << "class " << group->className << "\n";
  for (size_t i = 0; group->instances[i] != nullptr; ++i) {
    const SafcImmCtInstanceT* instance = group->instances[i];
    out << "instance parent=" << (instance->parentName != nullptr ? nameText(*instance->parentName) : "null") << "\n";
    for (size_t j = 0; instance->attrValues[j] != nullptr; ++j) out << "  " << describe(instance->attrValues[j]) << "\n";
  }
  return out.str();
}
