#include "icti/Instance.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <new>

#include "common/Log.h"
#include "icti/AttributeName.h"
#include "icti/DistinguishedName.h"

namespace {

constexpr ValueType kStringType = ValueType::kString;

}  // namespace

PackedAttributes& Instance::readPacked(const PackedAttributes::Layout& layout) {
  packed_ = PackedAttributes::make(layout);
  return *packed_;
}

std::string Instance::moClassRdnAttribute(const std::string& className) {
  std::string name = className;
  if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  return name + "Id";
}

Instance::Instance(const std::string* className, SharedName parentName)
    : parentName_(std::move(parentName)), className_(className) {
  TAV_TRACE(TRACE1, "Instance::instance(SafcImmCtInstanceT *, string) _className: %s", className_->c_str());
  if (parentName_) {
    TAV_TRACE(TRACE1, "Parent name %s", parentName_->c_str());
  } else {
    TAV_TRACE(TRACE1, "No parent to %s", className_->c_str());
  }
}

const std::string& Instance::none() {
  static const std::string empty;
  return empty;
}

AttributeBase* Instance::addReadAttribute(const std::string* name, ValueType type) {
  AttributeBase* added = nullptr;
  add(name, type, &added);
  return added;
}

void Instance::nameByAttributes(const std::vector<AttributeBase*>& readOrder, const std::string& rdnAttribute) {
  const std::string moClassRdn = moClassRdnAttribute(*className_);
  bool moClassRdnFound = false;
  bool structClassRdnFound = false;
  bool rdnFoundInToState = false;
  const size_t count = packed_ ? packed_->layout().order().size() : readOrder.size();
  for (size_t i = 0; i < count; ++i) {
    const size_t slot = packed_ ? packed_->layout().slotRead(i) : 0;
    const std::string name = packed_ ? *packed_->layout().name(slot) : std::string(readOrder[i]->name());
    const ValueType type = packed_ ? packed_->layout().type(slot) : readOrder[i]->getType();
    const bool isString = type == kStringType;
    const bool isText = isString || type == ValueType::kName;
    rdnFoundInToState = !rdnAttribute.empty() && name == rdnAttribute && isText;
    moClassRdnFound = !rdnFoundInToState && name == moClassRdn;
    structClassRdnFound = !rdnFoundInToState && !moClassRdnFound && name == "id" && isString;
    if (rdnFoundInToState || moClassRdnFound || structClassRdnFound) {
      std::string value;
      auto firstValue = [&value](AttributeBase& attribute) { value = attribute.readValueAtIndex(0).value_or(""); };
      if (packed_) {
        packed_->lend(slot, firstValue);
      } else {
        firstValue(*readOrder[i]);
      }
      setRdnText(DistinguishedName::rdnOf(name, value));
      if (rdn_) break;
    }
  }
  TAV_TRACE(TRACE1,
            "RDN calculated from ICTI = %s, className: %s, MOclassRdn: %d, structClassRdn: %d, rdnFoundInToState: %d",
            rdn_ ? rdn_.get() : "", className_->c_str(), moClassRdnFound, structClassRdnFound, rdnFoundInToState);
  if (!rdn_) TAV_LOG(INFO_ABN, "Could not find rdn in SafcImmCtInstanceT input for %s", className_->c_str());
}

Instance::Instance(const std::string& parentName, const std::string& rdnAttribute, const std::string& rdnId,
                   const std::string& className, ValueType rdnType)
    : parentName_(std::make_shared<const std::string>(parentName)),
      className_(AttributeName::of(className)) {
  setRdnText(rdnAttribute + "=" + DistinguishedName::escapeValue(rdnId));
  TAV_TRACE(TRACE1, "Instance::Instance(_parentName: %s, _rdnAttribute: %s, _rdnId: %s, _className: %s)",
            parentName.c_str(), rdnAttribute.c_str(), rdnId.c_str(), className.c_str());
  AttributeInternalIf* attribute = nullptr;
  if (addAttribute(rdnAttribute, rdnType, &attribute) && attribute != nullptr) {
    attribute->addCopy(DistinguishedName::namingValueOf(getRdn(), rdnAttribute).c_str());
  } else {
    TAV_LOG(ERROR, "Unable to create RDN attribute for new instance of %s", className.c_str());
  }
}

Instance::~Instance() {
  for (AttributeBase* attribute : attributes_) delete attribute;
}

bool Instance::eraseAttribute(const std::string& name) {
  const size_t slot = packed_ ? packed_->find(name.c_str()) : 0;
  if (packed_ && slot < packed_->layout().size()) {
    TAV_TRACE(INFO, "Erase attribute %s", name.c_str());
    packed_->erase(slot);
    dropEmptyPacked();
    return true;
  }
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
  unpackAll();
  std::vector<std::pair<std::string, AttributeInternalIf*>> result;
  result.reserve(attributes_.size());
  for (AttributeBase* attribute : attributes_) result.emplace_back(attribute->name(), attribute);
  return result;
}

AttributeInternalIf* Instance::getAttribute(const std::string& name) const { return find(name); }

bool Instance::addAttribute(const std::string& name, ValueType type, AttributeInternalIf** created) {
  AttributeBase* added = nullptr;
  const bool ok = add(AttributeName::of(name), type, &added);
  if (created != nullptr) *created = added;
  return ok;
}

bool Instance::add(const std::string* name, ValueType type, AttributeBase** added) {
  *added = nullptr;
  if (find(*name) != nullptr) {
    TAV_LOG(INFO_ABN, "Instance: %s already has attribute with name: %s", getLdn().c_str(), name->c_str());
    return true;
  }
  AttributeBase* attribute = AttributeBase::create(name, type).release();
  if (attribute == nullptr) {
    TAV_LOG(ERROR, "Unable to create attribute %s", name->c_str());
    return false;
  }
  *added = attribute;
  insert(attribute);
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
  const std::string_view current = this->rdn();
  const std::string oldName(current.substr(0, current.find('=')));

  if (AttributeBase* attribute = find(oldName)) {
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
  setRdnText(rdn);
  tellOwner();
  return true;
}

std::string Instance::getLdn() const { return parentName().empty() ? getRdn() : getRdn() + "," + parentName(); }

bool Instance::hasLdn(const std::string& ldn) const {
  const std::string& parent = parentName();
  const std::string_view rdn = this->rdn();
  if (parent.empty()) return ldn == rdn;
  return ldn.size() == rdn.size() + 1 + parent.size() && ldn.compare(0, rdn.size(), rdn) == 0 &&
         ldn[rdn.size()] == ',' && ldn.compare(rdn.size() + 1, std::string::npos, parent) == 0;
}

void Instance::setRdnText(const std::string& rdn) {
  if (rdn.empty()) {
    rdn_.reset();
    return;
  }
  rdn_.reset(new char[rdn.size() + 1]);
  std::memcpy(rdn_.get(), rdn.c_str(), rdn.size() + 1);
}

void Instance::setParentName(const std::string& parentName) {
  parentName_ = std::make_shared<const std::string>(parentName);
  tellOwner();
}

void Instance::setOwner(Owner* owner, InstanceGroupMember* membership) {
  owner_ = owner;
  membership_ = membership;
}

Instance::Attributes::const_iterator Instance::position(const char* name) const {
  return std::lower_bound(attributes_.begin(), attributes_.end(), name,
                          [](const AttributeBase* a, const char* n) { return std::strcmp(a->name(), n) < 0; });
}

AttributeBase* Instance::find(const std::string& name) const {
  auto it = position(name.c_str());
  if (it != attributes_.end() && name == (*it)->name()) return *it;
  const size_t slot = packed_ ? packed_->find(name.c_str()) : 0;
  if (!packed_ || slot == packed_->layout().size()) return nullptr;
  AttributeBase* taken = packed_->take(slot).release();
  insert(taken);
  dropEmptyPacked();
  return taken;
}

void Instance::insert(AttributeBase* attribute) const {
  auto at = position(attribute->name());
  attributes_.insert(at, attribute);
}

void Instance::unpackAll() const {
  if (!packed_) return;
  attributes_.reserve(attributes_.size() + packed_->liveCount());
  for (size_t slot = 0; slot < packed_->layout().size(); ++slot) {
    if (packed_->live(slot)) insert(packed_->take(slot).release());
  }
  packed_.reset();
}

void Instance::dropEmptyPacked() const {
  if (packed_->liveCount() == 0) packed_.reset();
}

void Instance::tellOwner() {
  if (owner_ != nullptr) owner_->renamed(*this);
}
