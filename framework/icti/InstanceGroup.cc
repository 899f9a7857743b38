#include "icti/InstanceGroup.h"

#include <algorithm>
#include <string_view>

#include "common/Log.h"
#include "icti/DistinguishedName.h"

// The group's bookkeeping for one instance: its place in the list, and for
// an Instance its place in the indexes.
struct InstanceGroupMember {
  // Null once the instance is detached.
  std::unique_ptr<InstanceIf> instance;
  // The same object when it is an Instance (indexed); null otherwise.
  Instance* indexed;
  // Grows with every append, so it orders members as the list does.
  uint64_t order;
  InstanceGroupMember* previous = nullptr;
  InstanceGroupMember* next = nullptr;
  InstanceGroupMember* previousSibling = nullptr;
  InstanceGroupMember* nextSibling = nullptr;
  InstanceGroup::ParentEntry* parent = nullptr;
  uint64_t ldnHash = 0;
  InstanceGroupMember* sameBucket = nullptr;  // next in its index bucket
};

namespace {

constexpr const char* kNeverPrefixed = "KmovENodeBFunction";

// 64-bit FNV-1a over the distinguished name, fed in pieces so that an
// instance's name need not be built.
constexpr uint64_t kHashBasis = 14695981039346656037ull;
constexpr uint64_t kHashPrime = 1099511628211ull;

uint64_t hashMore(uint64_t hash, std::string_view text) {
  for (unsigned char c : text) hash = (hash ^ c) * kHashPrime;
  return hash;
}

uint64_t ldnHash(const std::string& ldn) { return hashMore(kHashBasis, ldn); }

uint64_t ldnHash(const Instance& instance) {
  uint64_t hash = hashMore(kHashBasis, instance.rdn());
  if (instance.parentName().empty()) return hash;
  hash = (hash ^ static_cast<unsigned char>(',')) * kHashPrime;
  return hashMore(hash, instance.parentName());
}

std::string withoutPrefix(const std::string& immClassName, const std::string& prefix) {
  if (prefix.empty() || immClassName.compare(0, prefix.size(), prefix) != 0) return immClassName;
  return immClassName.substr(prefix.size());
}

std::vector<InstanceIf*> instancesOf(const std::vector<InstanceGroupMember*>& members) {
  std::vector<InstanceIf*> instances;
  instances.reserve(members.size());
  for (InstanceGroupMember* member : members) instances.push_back(member->instance.get());
  return instances;
}

// Pops the walk's cursor however the walk ends.
class CursorGuard {
 public:
  CursorGuard(std::vector<InstanceGroupMember**>& cursors, InstanceGroupMember** cursor) : cursors_(cursors) {
    cursors_.push_back(cursor);
  }
  ~CursorGuard() { cursors_.pop_back(); }

 private:
  std::vector<InstanceGroupMember**>& cursors_;
};

}  // namespace

std::string InstanceGroup::immClassNameOf(const std::string& namespacePrefix, const std::string& className) {
  return className == kNeverPrefixed ? className : namespacePrefix + className;
}

InstanceGroup::InstanceGroup(const std::string& namespacePrefix, const std::string& className)
    : immClassName_(immClassNameOf(namespacePrefix, className)), className_(className) {
  TAV_LOG(TRACE1, "InstanceGroup::InstanceGroup(string, string)");
}

InstanceGroup::InstanceGroup(const std::string& immClassName, const std::string& rdnAttribute,
                             const std::string& namespacePrefix, size_t expected)
    : immClassName_(immClassName),
      className_(withoutPrefix(immClassName_, namespacePrefix)),
      rdnAttribute_(rdnAttribute) {
  TAV_LOG(TRACE1, "InstanceGroup::InstanceGroup(SafcImmCtInstanceGroupT *, string)");
  TAV_LOG(INFO, "Creating instance group %s", className_.c_str());
  reserveIndex(expected);
}

void InstanceGroup::appendRead(std::unique_ptr<Instance> instance) {
  append(std::move(instance));
  TAV_TRACE(TRACE1, "Created instance %d, %s, className %s", static_cast<int>(count_ - 1), className_.c_str(),
            immClassName_.c_str());
}

InstanceGroup::~InstanceGroup() = default;

bool InstanceGroup::forEachInstance(const std::function<bool(InstanceIf&)>& step) {
  bool result = true;
  // The member last visited; unlinking it moves this back to its
  // predecessor, so the walk goes on with whatever follows.
  InstanceGroupMember* current = nullptr;
  CursorGuard guard(cursors_, &current);
  for (;;) {
    InstanceGroupMember* next = current != nullptr ? current->next : first_;
    if (next == nullptr) break;
    current = next;
    result = step(*next->instance) && result;
  }
  return result;
}

std::vector<InstanceIf*> InstanceGroup::getInstances() const {
  std::vector<InstanceIf*> instances;
  instances.reserve(count_);
  for (InstanceGroupMember* member = first_; member != nullptr; member = member->next) {
    instances.push_back(member->instance.get());
  }
  return instances;
}

std::vector<InstanceIf*> InstanceGroup::getChildInstances(const std::string& parentLdn) const {
  std::vector<InstanceGroupMember*> children;
  auto entry = byParent_.find(parentLdn);
  if (entry != byParent_.end()) {
    for (InstanceGroupMember* child = entry->second.first; child != nullptr; child = child->nextSibling) {
      children.push_back(child);
    }
  }
  bool unindexedFound = false;
  for (InstanceGroupMember* member : unindexed_) {
    if (member->instance->getParentName() != parentLdn) continue;
    children.push_back(member);
    unindexedFound = true;
  }
  if (unindexedFound) {
    std::sort(children.begin(), children.end(),
              [](const InstanceGroupMember* a, const InstanceGroupMember* b) { return a->order < b->order; });
  }
  return instancesOf(children);
}

InstanceIf* InstanceGroup::getInstance(const std::string& ldn) const {
  InstanceGroupMember* member = findFirst(ldn);
  return member != nullptr ? member->instance.get() : nullptr;
}

InstanceIf* InstanceGroup::getFirstInstance() const { return first_ != nullptr ? first_->instance.get() : nullptr; }

bool InstanceGroup::eraseInstance(const std::string& ldn) {
  TAV_TRACE(TRACE1, "InstanceGroup::eraseInstance()");
  if (ldn.empty()) {
    TAV_LOG(INFO_ABN, "Tried to remove instance with empty ldn");
    return false;
  }
  InstanceGroupMember* member = findFirst(ldn);
  if (member == nullptr) {
    TAV_LOG(INFO_ABN, "Could not find %s for removal", ldn.c_str());
    return false;
  }
  TAV_TRACE(INFO, "Erase instance %s", ldn.c_str());
  unlink(member);
  return true;
}

// An instance is in one group at a time: adding a member again changes nothing.
unsigned int InstanceGroup::addInstance(InstanceIf* instance) {
  if (instance != nullptr && memberOf(instance) == nullptr) append(std::unique_ptr<InstanceIf>(instance));
  return count_;
}

void InstanceGroup::detachInstance(InstanceIf* instance) {
  InstanceGroupMember* member = memberOf(instance);
  if (member == nullptr) return;
  unlink(member);
  static_cast<void>(member->instance.release());  // The caller owns it now.
}

bool InstanceGroup::isStructGroup() const {
  return first_ != nullptr && first_->instance->getRdn().compare(0, 3, "id=") == 0;
}

// The struct type is not needed: the group's class is the struct's class.
InstanceIf* InstanceGroup::createInstance(const std::string& parentLdn, const std::string& rdnId, bool isStruct,
                                          const std::string& /*structType*/) {
  TAV_TRACE(TRACE1, "InstanceGroup::createInstance()");
  if (rdnAttribute_.empty()) rdnAttribute_ = isStruct ? "id" : Instance::moClassRdnAttribute(className_);
  const std::string rdn = rdnAttribute_ + "=" + DistinguishedName::escapeValue(rdnId);
  const std::string ldn = parentLdn.empty() ? rdn : rdn + "," + parentLdn;
  if (findFirst(ldn) != nullptr) {
    TAV_LOG(INFO_ABN, "The instance %s could not be created because it already exists", ldn.c_str());
    return nullptr;
  }
  // A new instance names itself as the read ones do: a class named by a
  // name attribute gets one.
  const AttributeInternalIf* model = first_ != nullptr ? first_->instance->getAttribute(rdnAttribute_) : nullptr;
  auto instance = std::make_unique<Instance>(parentLdn, rdnAttribute_, rdnId, className_,
                                             model != nullptr ? model->getType() : ValueType::kString);
  Instance* created = instance.get();
  append(std::move(instance));
  TAV_TRACE(INFO, "The instance %s has been created", ldn.c_str());
  return created;
}

void InstanceGroup::append(std::unique_ptr<InstanceIf> instance) {
  auto* indexed = dynamic_cast<Instance*>(instance.get());
  InstanceGroupMember* member = newMember();
  *member = InstanceGroupMember{std::move(instance), indexed, nextOrder_++};
  member->previous = last_;
  (last_ != nullptr ? last_->next : first_) = member;
  last_ = member;
  ++count_;
  if (member->indexed != nullptr) {
    member->indexed->setOwner(this, member);
    index(member);
  } else {
    unindexed_.push_back(member);
  }
}

InstanceGroupMember* InstanceGroup::newMember() {
  constexpr size_t kFirstBlock = 16;
  constexpr size_t kLargestBlock = 4096;
  if (lastBlockUsed_ == lastBlockSize_) {
    lastBlockSize_ = lastBlockSize_ == 0 ? kFirstBlock : std::min(2 * lastBlockSize_, kLargestBlock);
    members_.push_back(std::make_unique<InstanceGroupMember[]>(lastBlockSize_));
    lastBlockUsed_ = 0;
  }
  return &members_.back()[lastBlockUsed_++];
}

size_t InstanceGroup::bucketOf(uint64_t hash) const { return (hash ^ (hash >> 32)) & (byLdn_.size() - 1); }

void InstanceGroup::reserveIndex(size_t count) {
  if (count <= byLdn_.size()) return;
  size_t size = 16;
  while (size < count) size *= 2;
  std::vector<InstanceGroupMember*> indexed(size, nullptr);
  indexed.swap(byLdn_);
  for (InstanceGroupMember* chain : indexed) {
    while (chain != nullptr) {
      InstanceGroupMember* member = chain;
      chain = member->sameBucket;
      InstanceGroupMember*& head = byLdn_[bucketOf(member->ldnHash)];
      member->sameBucket = head;
      head = member;
    }
  }
}

void InstanceGroup::unlink(InstanceGroupMember* member) {
  for (InstanceGroupMember** cursor : cursors_) {
    if (*cursor == member) *cursor = member->previous;
  }
  (member->previous != nullptr ? member->previous->next : first_) = member->next;
  (member->next != nullptr ? member->next->previous : last_) = member->previous;
  --count_;
  if (member->indexed != nullptr) {
    unindex(member);
    member->indexed->setOwner(nullptr, nullptr);
  } else {
    unindexed_.erase(std::find(unindexed_.begin(), unindexed_.end(), member));
  }
}

void InstanceGroup::index(InstanceGroupMember* member) {
  const Instance& instance = *member->indexed;
  member->ldnHash = ldnHash(instance);
  reserveIndex(indexedCount_ + 1);
  InstanceGroupMember*& head = byLdn_[bucketOf(member->ldnHash)];
  member->sameBucket = head;
  head = member;
  ++indexedCount_;

  ParentEntry& entry = *byParent_.try_emplace(instance.parentName()).first;
  Siblings& siblings = entry.second;
  // Usually the newest member: then it goes straight to the end.
  InstanceGroupMember* before = siblings.last;
  while (before != nullptr && before->order > member->order) before = before->previousSibling;
  member->previousSibling = before;
  member->nextSibling = before != nullptr ? before->nextSibling : siblings.first;
  (before != nullptr ? before->nextSibling : siblings.first) = member;
  (member->nextSibling != nullptr ? member->nextSibling->previousSibling : siblings.last) = member;
  member->parent = &entry;
}

void InstanceGroup::unindex(InstanceGroupMember* member) {
  InstanceGroupMember** link = &byLdn_[bucketOf(member->ldnHash)];
  while (*link != member) link = &(*link)->sameBucket;
  *link = member->sameBucket;
  member->sameBucket = nullptr;
  --indexedCount_;
  Siblings& siblings = member->parent->second;
  (member->previousSibling != nullptr ? member->previousSibling->nextSibling : siblings.first) = member->nextSibling;
  (member->nextSibling != nullptr ? member->nextSibling->previousSibling : siblings.last) = member->previousSibling;
  member->previousSibling = member->nextSibling = nullptr;
  if (siblings.first == nullptr) byParent_.erase(byParent_.find(member->parent->first));
  member->parent = nullptr;
}

void InstanceGroup::renamed(Instance& instance) {
  InstanceGroupMember* member = instance.membership();
  unindex(member);
  index(member);
}

InstanceGroupMember* InstanceGroup::findFirst(const std::string& ldn) const {
  InstanceGroupMember* first = nullptr;
  const uint64_t hash = ldnHash(ldn);
  for (InstanceGroupMember* member = byLdn_.empty() ? nullptr : byLdn_[bucketOf(hash)]; member != nullptr;
       member = member->sameBucket) {
    if (member->ldnHash == hash && member->indexed->hasLdn(ldn) && (first == nullptr || member->order < first->order)) {
      first = member;
    }
  }
  for (InstanceGroupMember* member : unindexed_) {
    if ((first == nullptr || member->order < first->order) && member->instance->getLdn() == ldn) first = member;
  }
  return first;
}

InstanceGroupMember* InstanceGroup::memberOf(InstanceIf* instance) const {
  if (instance == nullptr) return nullptr;
  if (auto* indexed = dynamic_cast<Instance*>(instance)) {
    return indexed->owner() == this ? indexed->membership() : nullptr;
  }
  auto it = std::find_if(unindexed_.begin(), unindexed_.end(),
                         [instance](const InstanceGroupMember* member) { return member->instance.get() == instance; });
  return it != unindexed_.end() ? *it : nullptr;
}
