// All instances of one IMM class held in memory while the upgrade actions
// run, in a stable order: first the order the old model gave them in, then
// the instances added later.
//
// Lookups by distinguished name and by parent do not walk the list: the
// group keeps a hash index by distinguished name and, per parent name, the
// children in list order. The indexes follow every change of an instance's
// RDN or parent name (the group is the instance's owner) and give the same
// answers as a walk from the front: the first match in list order wins.
// Instances of other InstanceIf implementations may be added; they are not
// indexed but searched, so renaming them is seen as well.
//
// Erased instances leave the list but stay alive until the group is
// destroyed, so that pointers actions still hold stay valid. Detached
// instances belong to the caller.
//
// The class name is the IMM class name without the namespace prefix: the
// prefix is removed when the IMM name starts with it. "KmovENodeBFunction"
// never carries a prefix.
//
// A group is used by one thread.

#ifndef VOSK_ICTI_INSTANCE_GROUP_H
#define VOSK_ICTI_INSTANCE_GROUP_H

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "icti/Instance.h"
#include "icti/InstanceGroupIf.h"

class InstanceGroup : public InstanceGroupIf, private Instance::Owner {
 public:
  // An empty group for a class the old model does not have.
  InstanceGroup(const std::string& namespacePrefix, const std::string& className);
  // A group of the old model being read, by its IMM class name, to which
  // the reader appends `expected` instances with appendRead. `rdnAttribute`
  // is the class's RDN attribute in the target model (may be empty).
  InstanceGroup(const std::string& immClassName, const std::string& rdnAttribute, const std::string& namespacePrefix,
                size_t expected);
  ~InstanceGroup() override;

  InstanceGroup(const InstanceGroup&) = delete;
  InstanceGroup& operator=(const InstanceGroup&) = delete;

  std::string getClassName() const override { return className_; }
  // Instances erased or detached during the walk are not visited; instances
  // added during it are.
  bool forEachInstance(const std::function<bool(InstanceIf&)>& step) override;
  std::vector<InstanceIf*> getInstances() const override;
  std::vector<InstanceIf*> getChildInstances(const std::string& parentLdn) const override;
  InstanceIf* getInstance(const std::string& ldn) const override;
  InstanceIf* getFirstInstance() const override;
  unsigned int getNumberOfInstances() const override { return count_; }
  bool eraseInstance(const std::string& ldn) override;
  // An instance already in the group is not added again. An instance is in
  // one group at a time: detach it from the other group first.
  unsigned int addInstance(InstanceIf* instance) override;
  void detachInstance(InstanceIf* instance) override;
  bool isStructGroup() const override;
  InstanceIf* createInstance(const std::string& parentLdn, const std::string& rdnId, bool isStruct,
                             const std::string& structType) override;

  // The IMM class name, namespace prefix included: the name the platform
  // knows the class by.
  const std::string& getImmClassName() const { return immClassName_; }

  // Appends an instance read from the old model.
  void appendRead(std::unique_ptr<Instance> instance);
  // The RDN attribute the group's instances are read and created with.
  const std::string& rdnAttribute() const { return rdnAttribute_; }

  // `namespacePrefix` + `className`, except for the one class that is never
  // prefixed.
  static std::string immClassNameOf(const std::string& namespacePrefix, const std::string& className);

 private:
  friend struct InstanceGroupMember;
  struct Siblings {
    InstanceGroupMember* first = nullptr;
    InstanceGroupMember* last = nullptr;
  };
  using ParentEntry = std::pair<const std::string, Siblings>;

  void append(std::unique_ptr<InstanceIf> instance);
  InstanceGroupMember* newMember();
  // The index bucket that chains the members whose distinguished name has
  // `hash`, among others.
  size_t bucketOf(uint64_t hash) const;
  // Makes room for `count` indexed members, rehashing when needed.
  void reserveIndex(size_t count);
  void unlink(InstanceGroupMember* member);
  void index(InstanceGroupMember* member);
  void unindex(InstanceGroupMember* member);
  void renamed(Instance& instance) override;
  InstanceGroupMember* findFirst(const std::string& ldn) const;
  InstanceGroupMember* memberOf(InstanceIf* instance) const;

  std::string immClassName_;
  std::string className_;
  std::string rdnAttribute_;
  InstanceGroupMember* first_ = nullptr;
  InstanceGroupMember* last_ = nullptr;
  unsigned int count_ = 0;
  uint64_t nextOrder_ = 0;
  // Members by distinguished-name hash: each bucket chains its members
  // through them, so the index costs a pointer a member. The bucket count
  // is a power of two, at least the number of members indexed.
  std::vector<InstanceGroupMember*> byLdn_;
  size_t indexedCount_ = 0;
  // Parent name -> its children in list order.
  std::unordered_map<std::string, Siblings> byParent_;
  // Members whose instance is not an Instance: searched, not indexed.
  std::vector<InstanceGroupMember*> unindexed_;
  // The member each forEachInstance walk in progress stands on.
  std::vector<InstanceGroupMember**> cursors_;
  // Every member ever appended, in blocks that never move, each twice the
  // size of the one before up to a limit. Unlinked members stay until the
  // group is destroyed: an erased instance stays alive with its member, a
  // detached one has been released to the caller.
  std::vector<std::unique_ptr<InstanceGroupMember[]>> members_;
  size_t lastBlockSize_ = 0;
  size_t lastBlockUsed_ = 0;
};

#endif
