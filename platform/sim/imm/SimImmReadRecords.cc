#include "SimImmReadRecords.h"

#include <algorithm>
#include <cstring>

#include "SimImmValueCodec.h"

bool SimImmReadRecords::add(const SimImmObject& object, std::string* why) {
  instances_.push_back(arena_.allocateArray<SafcImmCtInstanceT>(1));
  return buildInstance(object, instances_.back(), why);
}

SafcImmCtInstanceGroupT** SimImmReadRecords::finish() {
  SafcImmCtInstanceGroupT** groups = arena_.allocateArray<SafcImmCtInstanceGroupT*>(2);
  groups[0] = arena_.allocateArray<SafcImmCtInstanceGroupT>(1);
  groups[0]->className = arena_.copy(cls_.name);
  groups[0]->instances = arena_.allocateArray<SafcImmCtInstanceT*>(instances_.size() + 1);
  std::copy(instances_.begin(), instances_.end(), groups[0]->instances);
  instances_ = std::vector<SafcImmCtInstanceT*>();
  return groups;
}

bool SimImmReadRecords::fits(const SimImmClass& cls, const SimImmObject& object, std::string* why) {
  SimImmReadRecords scratch(cls);
  SafcImmCtInstanceT instance{};
  return scratch.buildInstance(object, &instance, why);
}

bool SimImmReadRecords::buildInstance(const SimImmObject& object, SafcImmCtInstanceT* instance, std::string* why) {
  if (fillInstance(object, instance, why)) return true;
  *why = "object " + object.dn + " (line " + std::to_string(object.line) + "): " + *why;
  return false;
}

bool SimImmReadRecords::fillInstance(const SimImmObject& object, SafcImmCtInstanceT* instance, std::string* why) {
  std::string namingValue, parent;
  if (!SimImmObject::namingValueOf(object.dn, cls_.rdn.name, &namingValue, &parent)) {
    *why = "malformed dn";
    return false;
  }
  if (namingValue.find('=') != std::string::npos && cls_.rdn.type != SA_IMM_ATTR_SASTRINGT &&
      cls_.rdn.type != SA_IMM_ATTR_SANAMET) {
    *why = "the naming attribute " + cls_.rdn.name + " of class " + cls_.name + " is a " +
           SimImmValueCodec::nameOfType(cls_.rdn.type) + ", which cannot hold the RDN " + namingValue;
    return false;
  }
  if (!parent.empty()) {
    instance->parentName = static_cast<SaNameT*>(nameRecord(SimImmValue{parent, false}, why));
    if (instance->parentName == nullptr) return false;
  }
  const size_t count = object.attrs.size() + 1;
  instance->attrValues = arena_.allocateArray<SaImmAttrValuesT_2*>(count + 1);
  naming_.assign(1, SimImmValue{namingValue, false});
  attrs_.assign(1, {&cls_.rdn, &naming_});
  for (const SimImmAttrValues& values : object.attrs) attrs_.emplace_back(cls_.find(values.name), &values.values);
  // The records and pointer arrays first, then the values: small values
  // then lie side by side instead of each padded to the next pointer. The
  // attributes are still checked in order, so the first fault is reported.
  size_t shaped = 0;
  while (shaped < count && attrs_[shaped].first != nullptr && (shaped == 0 || attrs_[shaped].first != &cls_.rdn)) {
    instance->attrValues[shaped] = shapeAttr(*attrs_[shaped].first, attrs_[shaped].second->size());
    ++shaped;
  }
  for (size_t i = 0; i < shaped; ++i) {
    if (!fillValues(*attrs_[i].first, *attrs_[i].second, instance->attrValues[i], why)) return false;
  }
  if (shaped == count) return true;
  const std::string& name = object.attrs[shaped - 1].name;
  *why = "attribute " + name +
         (attrs_[shaped].first == nullptr ? " is not defined in class " + cls_.name
                                          : " is the naming attribute, carried by the dn only");
  return false;
}

SaImmAttrValuesT_2* SimImmReadRecords::shapeAttr(const SimImmAttrDef& def, size_t count) {
  auto* attr = arena_.allocateArray<SaImmAttrValuesT_2>(1);
  char*& name = attrNames_[&def];
  if (name == nullptr) name = arena_.copy(def.name);
  attr->attrName = name;
  attr->attrValueType = static_cast<SaImmValueTypeT>(def.type);
  attr->attrValuesNumber = static_cast<SaUint32T>(count);
  attr->attrValues = arena_.allocateArray<SaImmAttrValueT>(count + 1);
  return attr;
}

bool SimImmReadRecords::fillValues(const SimImmAttrDef& def, const std::vector<SimImmValue>& values,
                                   SaImmAttrValuesT_2* attr, std::string* why) {
  const size_t size = SimImmValueCodec::valueSize(def.type);
  for (size_t i = 0; i < values.size(); ++i) {
    if (def.type == SA_IMM_ATTR_SANAMET) {
      attr->attrValues[i] = nameRecord(values[i], why);
    } else {
      attr->attrValues[i] = arena_.allocate(size);
      if (!SimImmValueCodec::parse(def.type, values[i], attr->attrValues[i], arena_, why))
        attr->attrValues[i] = nullptr;
    }
    if (attr->attrValues[i] == nullptr) {
      *why = "attribute " + def.name + ": " + *why;
      return false;
    }
  }
  return true;
}

void* SimImmReadRecords::nameRecord(const SimImmValue& value, std::string* why) {
  void*& record = names_[std::string(1, value.base64 ? 'b' : 't') + value.text];
  if (record != nullptr) return record;
  void* parsed = arena_.allocate(sizeof(SaNameT));
  if (!SimImmValueCodec::parse(SA_IMM_ATTR_SANAMET, value, parsed, arena_, why)) return nullptr;
  return record = parsed;
}
