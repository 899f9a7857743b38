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

// `size` bytes of attributes follow the head, `used` of them taken.
struct Instance::AttributeBlock {
  uint32_t size;
  uint32_t used;

  unsigned char* attributes() { return reinterpret_cast<unsigned char*>(this + 1); }
  bool holds(const AttributeBase* attribute) {
    const auto* at = reinterpret_cast<const unsigned char*>(attribute);
    return at >= attributes() && at < attributes() + size;
  }
};

void Instance::FreeBlock::operator()(AttributeBlock* block) const { ::operator delete(block); }

void Instance::reserveAttributes(size_t count, size_t bytes) {
  static_assert(sizeof(AttributeBlock) % 8 == 0, "attributes in the block are 8-byte aligned");
  attributes_.reserve(count);
  if (block_ || bytes == 0 || bytes > UINT32_MAX) return;
  block_.reset(static_cast<AttributeBlock*>(::operator new(sizeof(AttributeBlock) + bytes)));
  block_->size = static_cast<uint32_t>(bytes);
  block_->used = 0;
}

std::string Instance::moClassRdnAttribute(const std::string& className) {
  std::string name = className;
  if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  return name + "Id";
}

Instance::Instance(SharedName className, SharedName parentName)
    : parentName_(std::move(parentName)), className_(std::move(className)) {
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
  for (AttributeBase* attribute : readOrder) {
    const std::string name = attribute->name();
    const bool isString = attribute->getType() == kStringType;
    const bool isText = isString || attribute->getType() == ValueType::kName;
    rdnFoundInToState = !rdnAttribute.empty() && name == rdnAttribute && isText;
    moClassRdnFound = !rdnFoundInToState && name == moClassRdn;
    structClassRdnFound = !rdnFoundInToState && !moClassRdnFound && name == "id" && isString;
    if (rdnFoundInToState || moClassRdnFound || structClassRdnFound) {
      rdn_ = DistinguishedName::rdnOf(name, attribute->readValueAtIndex(0).value_or(""));
      if (!rdn_.empty()) break;
    }
  }
  TAV_TRACE(TRACE1,
            "RDN calculated from ICTI = %s, className: %s, MOclassRdn: %d, structClassRdn: %d, rdnFoundInToState: %d",
            rdn_.c_str(), className_->c_str(), moClassRdnFound, structClassRdnFound, rdnFoundInToState);
  if (rdn_.empty()) TAV_LOG(INFO_ABN, "Could not find rdn in SafcImmCtInstanceT input for %s", className_->c_str());
}

Instance::Instance(const std::string& parentName, const std::string& rdnAttribute, const std::string& rdnId,
                   const std::string& className, ValueType rdnType)
    : parentName_(std::make_shared<const std::string>(parentName)),
      rdn_(rdnAttribute + "=" + DistinguishedName::escapeValue(rdnId)),
      className_(std::make_shared<const std::string>(className)) {
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
  for (AttributeBase* attribute : attributes_) destroy(attribute);
}

bool Instance::eraseAttribute(const std::string& name) {
  auto it = position(name.c_str());
  if (it == attributes_.end() || name != (*it)->name()) {
    TAV_LOG(INFO_ABN, "Tried to remove non-existing Attribute %s", name.c_str());
    return false;
  }
  TAV_TRACE(INFO, "Erase attribute %s", name.c_str());
  destroy(*it);
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
  AttributeBase* attribute = make(name, type);
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
  const std::string oldName = rdn_.substr(0, rdn_.find('='));

  if (AttributeBase* attribute = find(oldName)) {
    // The value first: a value the attribute's type does not take leaves
    // the instance as it was.
    const bool valueSet = attribute->getNumberOfValues() > 0 ? attribute->setValueAtIndex(0, newValue.c_str())
                                                             : attribute->addCopy(newValue.c_str());
    if (!valueSet) return false;
    attributes_.erase(position(oldName.c_str()));
    if (AttributeBase* displaced = find(newName)) {
      attributes_.erase(position(displaced->name()));
      destroy(displaced);
    }
    attribute->setName(newName.c_str());
    insert(attribute);
  }
  rdn_ = rdn;
  tellOwner();
  return true;
}

std::string Instance::getLdn() const { return parentName().empty() ? rdn_ : rdn_ + "," + parentName(); }

bool Instance::hasLdn(const std::string& ldn) const {
  const std::string& parent = parentName();
  if (parent.empty()) return ldn == rdn_;
  return ldn.size() == rdn_.size() + 1 + parent.size() && ldn.compare(0, rdn_.size(), rdn_) == 0 &&
         ldn[rdn_.size()] == ',' && ldn.compare(rdn_.size() + 1, std::string::npos, parent) == 0;
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
  return it != attributes_.end() && name == (*it)->name() ? *it : nullptr;
}

AttributeBase* Instance::make(const std::string* name, ValueType type) {
  const size_t size = AttributeBase::sizeOf(type);
  if (block_ && size != 0 && block_->size - block_->used >= size) {
    AttributeBase* attribute = AttributeBase::createAt(block_->attributes() + block_->used, name, type);
    block_->used += static_cast<uint32_t>(size);
    return attribute;
  }
  return AttributeBase::create(name, type).release();
}

void Instance::insert(AttributeBase* attribute) {
  auto at = position(attribute->name());
  attributes_.insert(at, attribute);
}

void Instance::destroy(AttributeBase* attribute) {
  if (block_ && block_->holds(attribute)) {
    attribute->~AttributeBase();
  } else {
    delete attribute;
  }
}

void Instance::tellOwner() {
  if (owner_ != nullptr) owner_->renamed(*this);
}
