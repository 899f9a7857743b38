#include "icti/Instance.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "common/Log.h"
#include "icti/DistinguishedName.h"

namespace {

constexpr uint32_t kStringType = SA_IMM_ATTR_SASTRINGT;

}  // namespace

std::string Instance::moClassRdnAttribute(const std::string& className) {
  std::string name = className;
  if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  return name + "Id";
}

Instance::Instance(const SafcImmCtInstanceT* record, const std::string& className, const std::string& rdnAttribute)
    : className_(className) {
  TAV_TRACE(TRACE1, "Instance::instance(SafcImmCtInstanceT *, string) _className: %s", className_.c_str());
  const std::string moClassRdn = moClassRdnAttribute(className_);
  if (record != nullptr && record->parentName != nullptr) {
    parentName_ = attribute_storage::nameText(*record->parentName);
    TAV_TRACE(TRACE1, "Parent name %s", parentName_.c_str());
  } else {
    TAV_TRACE(TRACE1, "No parent to %s", className_.c_str());
  }

  bool moClassRdnFound = false;
  bool structClassRdnFound = false;
  bool rdnFoundInToState = false;
  SaImmAttrValuesT_2** records = record != nullptr ? record->attrValues : nullptr;
  for (size_t i = 0; records != nullptr && records[i] != nullptr; ++i) {
    const SaImmAttrValuesT_2& attributeRecord = *records[i];
    const std::string name = attributeRecord.attrName != nullptr ? attributeRecord.attrName : "";
    AttributeInternalIf* attribute = nullptr;
    if (!addAttribute(name, attributeRecord.attrValueType, &attribute) || attribute == nullptr) continue;
    attribute->init(&attributeRecord);
    if (!rdn_.empty()) continue;
    const bool isString = attributeRecord.attrValueType == kStringType;
    const bool isText = isString || attributeRecord.attrValueType == SA_IMM_ATTR_SANAMET;
    rdnFoundInToState = !rdnAttribute.empty() && name == rdnAttribute && isText;
    moClassRdnFound = !rdnFoundInToState && name == moClassRdn;
    structClassRdnFound = !rdnFoundInToState && !moClassRdnFound && name == "id" && isString;
    if (rdnFoundInToState || moClassRdnFound || structClassRdnFound) {
      const char* value = attribute->getNumberOfValues() > 0 ? attribute->readValueAtIndex(0) : "";
      rdn_ = DistinguishedName::rdnOf(name, value);
    }
  }
  TAV_TRACE(TRACE1, "RDN calculated from ICTI = %s, className: %s, MOclassRdn: %d, structClassRdn: %d, rdnFoundInToState: %d",
          rdn_.c_str(), className_.c_str(), moClassRdnFound, structClassRdnFound, rdnFoundInToState);
  if (rdn_.empty()) TAV_LOG(INFO_ABN, "Could not find rdn in SafcImmCtInstanceT input for %s", className_.c_str());
}

Instance::Instance(const std::string& parentName, const std::string& rdnAttribute, const std::string& rdnId,
                   const std::string& className, uint32_t rdnType)
    : parentName_(parentName), rdn_(rdnAttribute + "=" + DistinguishedName::escapeValue(rdnId)), className_(className) {
  TAV_TRACE(TRACE1, "Instance::Instance(_parentName: %s, _rdnAttribute: %s, _rdnId: %s, _className: %s)",
          parentName.c_str(), rdnAttribute.c_str(), rdnId.c_str(), className.c_str());
  AttributeInternalIf* attribute = nullptr;
  if (addAttribute(rdnAttribute, rdnType, &attribute) && attribute != nullptr) {
    attribute->addCopy(DistinguishedName::namingValueOf(rdn_, rdnAttribute).c_str());
  } else {
    TAV_LOG(ERROR, "Unable to create RDN attribute for new instance of %s", className.c_str());
  }
}

Instance::~Instance() {
  for (AttributeBase* attribute : attributes_) delete attribute;
}

bool Instance::eraseAttribute(const std::string& name) {
  auto it = position(name.c_str());
  if (it == attributes_.end() || name != (*it)->name()) {
    TAV_LOG(INFO_ABN, "Tried to remove non-existing Attribute %s", name.c_str());
    return false;
  }
  TAV_TRACE(INFO, "Erase attribute %s", name.c_str());
  delete *it;
  attributes_.erase(it);
  return true;
}

std::vector<std::pair<std::string, AttributeInternalIf*>> Instance::getAttributes() const {
  std::vector<std::pair<std::string, AttributeInternalIf*>> result;
  result.reserve(attributes_.size());
  for (AttributeBase* attribute : attributes_) result.emplace_back(attribute->name(), attribute);
  return result;
}

AttributeInternalIf* Instance::getAttribute(const std::string& name) const { return find(name); }

bool Instance::addAttribute(const std::string& name, uint32_t type, AttributeInternalIf** created) {
  if (created != nullptr) *created = nullptr;
  if (find(name) != nullptr) {
    TAV_LOG(INFO_ABN, "Instance: %s already has attribute with name: %s", getLdn().c_str(), name.c_str());
    return true;
  }
  AttributeBase* attribute = AttributeBase::create(name, type);
  if (attribute == nullptr) {
    TAV_LOG(ERROR, "Unable to create attribute %s", name.c_str());
    return false;
  }
  insert(attribute);
  if (created != nullptr) *created = attribute;
  return true;
}

bool Instance::setRdn(const std::string& rdn) {
  size_t equals = rdn.find('=');
  if (equals == std::string::npos || DistinguishedName::nextSeparator(rdn) != std::string::npos) {
    TAV_LOG(ERROR, "Instance %s: %s is no RDN of the form <attribute>=<value>", getLdn().c_str(), rdn.c_str());
    return false;
  }
  const std::string newName = rdn.substr(0, equals);
  const std::string newValue = DistinguishedName::namingValueOf(rdn, newName);
  const std::string oldName = rdn_.substr(0, rdn_.find('='));

  auto it = position(oldName.c_str());
  if (it != attributes_.end() && oldName == (*it)->name()) {
    AttributeBase* attribute = *it;
    // The value first: a value the attribute's type does not take leaves
    // the instance as it was.
    const bool valueSet = attribute->getNumberOfValues() > 0 ? attribute->setValueAtIndex(0, newValue.c_str())
                                                             : attribute->addCopy(newValue.c_str());
    if (!valueSet) return false;
    attributes_.erase(position(oldName.c_str()));
    if (AttributeBase* displaced = find(newName)) {
      attributes_.erase(position(displaced->name()));
      delete displaced;
    }
    attribute->setName(newName.c_str());
    insert(attribute);
  }
  rdn_ = rdn;
  tellOwner();
  return true;
}

std::string Instance::getLdn() const { return parentName_.empty() ? rdn_ : rdn_ + "," + parentName_; }

bool Instance::hasLdn(const std::string& ldn) const {
  if (parentName_.empty()) return ldn == rdn_;
  return ldn.size() == rdn_.size() + 1 + parentName_.size() && ldn.compare(0, rdn_.size(), rdn_) == 0 &&
         ldn[rdn_.size()] == ',' && ldn.compare(rdn_.size() + 1, std::string::npos, parentName_) == 0;
}

void Instance::setParentName(const std::string& parentName) {
  parentName_ = parentName;
  tellOwner();
}

void Instance::setOwner(Owner* owner, InstanceGroupMember* membership) {
  owner_ = owner;
  membership_ = membership;
}

std::vector<AttributeBase*>::const_iterator Instance::position(const char* name) const {
  return std::lower_bound(attributes_.begin(), attributes_.end(), name,
                          [](const AttributeBase* a, const char* n) { return std::strcmp(a->name(), n) < 0; });
}

AttributeBase* Instance::find(const std::string& name) const {
  auto it = position(name.c_str());
  return it != attributes_.end() && name == (*it)->name() ? *it : nullptr;
}

void Instance::insert(AttributeBase* attribute) { attributes_.insert(position(attribute->name()), attribute); }

void Instance::tellOwner() {
  if (owner_ != nullptr) owner_->renamed(*this);
}
