#include "SimImmWrittenGroup.h"

#include <cctype>
#include <cstring>
#include <functional>
#include <unordered_map>

#include "SimImmValueCodec.h"

bool SimImmWrittenGroup::toObjects(const SafcImmCtInstanceGroupT& group,
                                   const std::function<void(const SimImmObject&)>& each, std::string* why) const {
  if (group.className == nullptr || group.className[0] == '\0') {
    *why = "instance group without class name";
    return false;
  }
  const std::string className = group.className;
  if (strict_ && definition_ == nullptr) {
    *why = "class " + className + " is not defined in the new model";
    return false;
  }
  // The instances by the hash of their dn: a million dns are not kept
  // twice. An instance whose hash was seen is compared with the earlier
  // ones, rebuilt from their records.
  std::unordered_multimap<size_t, size_t> seen;
  size_t count = 0;
  while (group.instances != nullptr && group.instances[count] != nullptr) ++count;
  seen.reserve(count);
  for (size_t i = 0; group.instances != nullptr && group.instances[i] != nullptr; ++i) {
    SimImmObject object;
    if (!toObject(className, *group.instances[i], &object, why)) {
      *why = "class " + className + ", instance " + std::to_string(i) + ": " + *why;
      return false;
    }
    const size_t hash = std::hash<std::string>()(object.dn);
    auto [first, last] = seen.equal_range(hash);
    for (auto it = first; it != last; ++it) {
      SimImmObject earlier;
      if (toObject(className, *group.instances[it->second], &earlier, why) && earlier.dn == object.dn) {
        *why = "class " + className + ": object " + object.dn + " is written twice";
        return false;
      }
    }
    seen.emplace(hash, i);
    each(object);
  }
  return true;
}

bool SimImmWrittenGroup::toObject(const std::string& className, const SafcImmCtInstanceT& instance,
                                  SimImmObject* object, std::string* why) const {
  object->className = className;
  std::string parent;
  if (instance.parentName != nullptr &&
      !SimImmValueCodec::format(SA_IMM_ATTR_SANAMET, instance.parentName, &parent, why)) {
    return false;
  }
  std::string rdnAttr, rdnValue;
  for (size_t i = 0; instance.attrValues != nullptr && instance.attrValues[i] != nullptr; ++i) {
    SimImmAttrValues values;
    if (!toValues(className, *instance.attrValues[i], &values, why)) return false;
    if (rdnAttr.empty() && isNamingAttribute(className, values.name)) {
      if (values.values.empty()) {
        *why = "naming attribute " + values.name + " has no value";
        return false;
      }
      rdnAttr = values.name;
      rdnValue = values.values.front().text;
    } else if (!values.values.empty()) {
      object->attrs.push_back(std::move(values));
    }
  }
  if (rdnAttr.empty()) {
    *why = "no naming attribute" + (definition_ != nullptr ? " " + definition_->rdn.name : std::string());
    return false;
  }
  if (!SimImmObject::dnOfNamingValue(rdnAttr, rdnValue, parent, &object->dn)) {
    *why = "naming attribute " + rdnAttr + " holds \"" + rdnValue + "\", which is no RDN";
    return false;
  }
  return true;
}

bool SimImmWrittenGroup::toValues(const std::string& className, const SaImmAttrValuesT_2& attr,
                                  SimImmAttrValues* values, std::string* why) const {
  if (attr.attrName == nullptr) {
    *why = "attribute without name";
    return false;
  }
  values->name = attr.attrName;
  // A caller's record may hold any number in the type field: read it as one.
  SaUint32T typeCode;
  std::memcpy(&typeCode, &attr.attrValueType, sizeof typeCode);
  const int type = static_cast<int>(typeCode);
  const char* typeName = SimImmValueCodec::nameOfType(type);
  if (typeName == nullptr) {
    *why = "attribute " + values->name + " has unknown value type " + std::to_string(typeCode);
    return false;
  }
  if (strict_) {
    const SimImmAttrDef* def = definition_->find(values->name);
    if (def == nullptr) {
      *why = "attribute " + values->name + " is not defined in class " + className + " of the new model";
      return false;
    }
    if (def->type != type) {
      *why = "attribute " + values->name + " has type " + typeName + ", the new model says " +
             SimImmValueCodec::nameOfType(def->type);
      return false;
    }
  }
  if (attr.attrValuesNumber > 0 && attr.attrValues == nullptr) {
    *why = "attribute " + values->name + " has no value array";
    return false;
  }
  values->values.resize(attr.attrValuesNumber);
  for (SaUint32T i = 0; i < attr.attrValuesNumber; ++i) {
    if (attr.attrValues[i] == nullptr) {
      *why = "attribute " + values->name + ": value " + std::to_string(i) + " is missing";
      return false;
    }
    if (!SimImmValueCodec::format(type, attr.attrValues[i], &values->values[i].text, why)) {
      *why = "attribute " + values->name + ": " + *why;
      return false;
    }
  }
  return true;
}

bool SimImmWrittenGroup::isNamingAttribute(const std::string& className, const std::string& attrName) const {
  if (definition_ != nullptr) return attrName == definition_->rdn.name;
  std::string derived = className + "Id";
  derived[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(derived[0])));
  return attrName == derived || attrName == "id";
}
