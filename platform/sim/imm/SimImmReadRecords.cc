#include "SimImmReadRecords.h"

#include <cstring>

#include "SimImmValueCodec.h"

bool SimImmReadRecords::build(const SimImmClass& cls, const std::vector<SimImmObject>& objects, std::string* why) {
  groups_ = arena_.allocateArray<SafcImmCtInstanceGroupT*>(2);
  SafcImmCtInstanceGroupT* group = arena_.allocateArray<SafcImmCtInstanceGroupT>(1);
  groups_[0] = group;
  group->className = arena_.copy(cls.name);
  group->instances = arena_.allocateArray<SafcImmCtInstanceT*>(objects.size() + 1);
  for (size_t i = 0; i < objects.size(); ++i) {
    group->instances[i] = arena_.allocateArray<SafcImmCtInstanceT>(1);
    if (!buildInstance(cls, objects[i], group->instances[i], why)) return false;
  }
  return true;
}

bool SimImmReadRecords::fits(const SimImmClass& cls, const SimImmObject& object, std::string* why) {
  SimImmReadRecords scratch;
  SafcImmCtInstanceT instance{};
  return scratch.buildInstance(cls, object, &instance, why);
}

bool SimImmReadRecords::buildInstance(const SimImmClass& cls, const SimImmObject& object,
                                      SafcImmCtInstanceT* instance, std::string* why) {
  if (fillInstance(cls, object, instance, why)) return true;
  *why = "object " + object.dn + " (line " + std::to_string(object.line) + "): " + *why;
  return false;
}

bool SimImmReadRecords::fillInstance(const SimImmClass& cls, const SimImmObject& object,
                                     SafcImmCtInstanceT* instance, std::string* why) {
  std::string namingValue, parent;
  if (!SimImmObject::namingValueOf(object.dn, cls.rdn.name, &namingValue, &parent)) {
    *why = "malformed dn";
    return false;
  }
  if (namingValue.find('=') != std::string::npos && cls.rdn.type != SA_IMM_ATTR_SASTRINGT &&
      cls.rdn.type != SA_IMM_ATTR_SANAMET) {
    *why = "the naming attribute " + cls.rdn.name + " of class " + cls.name + " is a " +
           SimImmValueCodec::nameOfType(cls.rdn.type) + ", which cannot hold the RDN " + namingValue;
    return false;
  }
  if (!parent.empty()) {
    instance->parentName = arena_.allocateArray<SaNameT>(1);
    if (!SimImmValueCodec::parse(SA_IMM_ATTR_SANAMET, parent, instance->parentName, arena_, why)) return false;
  }
  const size_t count = object.attrs.size() + 1;
  instance->attrValues = arena_.allocateArray<SaImmAttrValuesT_2*>(count + 1);
  for (size_t i = 0; i < count; ++i) instance->attrValues[i] = arena_.allocateArray<SaImmAttrValuesT_2>(1);
  if (!buildAttr(cls.rdn, {SimImmValue{namingValue, false}}, instance->attrValues[0], why)) return false;
  for (size_t i = 0; i < object.attrs.size(); ++i) {
    const SimImmAttrValues& values = object.attrs[i];
    const SimImmAttrDef* def = cls.find(values.name);
    if (def == nullptr || def == &cls.rdn) {
      *why = "attribute " + values.name + (def == nullptr ? " is not defined in class " + cls.name
                                                          : " is the naming attribute, carried by the dn only");
      return false;
    }
    if (!buildAttr(*def, values.values, instance->attrValues[i + 1], why)) return false;
  }
  return true;
}

bool SimImmReadRecords::buildAttr(const SimImmAttrDef& def, const std::vector<SimImmValue>& values,
                                  SaImmAttrValuesT_2* attr, std::string* why) {
  attr->attrName = arena_.copy(def.name);
  attr->attrValueType = static_cast<SaImmValueTypeT>(def.type);
  attr->attrValuesNumber = static_cast<SaUint32T>(values.size());
  attr->attrValues = arena_.allocateArray<SaImmAttrValueT>(values.size() + 1);
  const size_t size = SimImmValueCodec::valueSize(def.type);
  for (size_t i = 0; i < values.size(); ++i) {
    attr->attrValues[i] = arena_.allocate(size);
    if (!SimImmValueCodec::parse(def.type, values[i], attr->attrValues[i], arena_, why)) {
      *why = "attribute " + def.name + ": " + *why;
      return false;
    }
  }
  return true;
}
