// One managed object of the model held in memory. It is made either from a
// platform instance record of the old model or from scratch when an action
// creates an instance; it owns its attributes and keeps them in name order
// (byte-wise comparison).
//
// An instance may have an owner that indexes it by name (its instance
// group): the owner is told after every change of the RDN or of the parent
// name, so that lookups by distinguished name stay right.

#ifndef VOSK_ICTI_INSTANCE_H
#define VOSK_ICTI_INSTANCE_H

#include <string>
#include <utility>
#include <vector>

#include "icti/Attribute.h"
#include "icti/InstanceIf.h"
#include "safcImmCt.h"

// The owner's own bookkeeping for one instance, opaque to the instance.
struct InstanceGroupMember;

class Instance : public InstanceIf {
 public:
  class Owner {
   public:
    // The instance's distinguished name or parent name has changed.
    virtual void renamed(Instance& instance) = 0;

   protected:
    ~Owner() = default;
  };

  // From a platform instance record; the record is only read. `rdnAttribute`
  // is the class's RDN attribute in the target model, when known: a string
  // or name attribute of that name carries the RDN. Otherwise the RDN is the
  // attribute named after the class ("Foo" gives "fooId"), or a string
  // attribute "id" for a struct. The first match in record order wins. The
  // RDN follows from the attribute's first value by the conventions of
  // DistinguishedName::rdnOf.
  Instance(const SafcImmCtInstanceT* record, const std::string& className, const std::string& rdnAttribute = "");
  // A new instance "<rdnAttribute>=<rdnId>" below `parentName`, with its RDN
  // attribute of type `rdnType` holding the naming value of that RDN
  // (DistinguishedName::namingValueOf: `rdnId`, or the whole RDN when
  // `rdnId` holds "=").
  Instance(const std::string& parentName, const std::string& rdnAttribute, const std::string& rdnId,
           const std::string& className, uint32_t rdnType = SA_IMM_ATTR_SASTRINGT);
  ~Instance() override;

  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  bool eraseAttribute(const std::string& name) override;
  std::string getParentName() const override { return parentName_; }
  std::vector<std::pair<std::string, AttributeInternalIf*>> getAttributes() const override;
  AttributeInternalIf* getAttribute(const std::string& name) const override;
  // An existing name is logged and left in place; the result is then true
  // with *created null.
  bool addAttribute(const std::string& name, uint32_t type, AttributeInternalIf** created = nullptr) override;
  std::string getRdn() const override { return rdn_; }
  // Renames the RDN attribute and stores the naming value of the new RDN
  // (DistinguishedName::namingValueOf: the part after "=", unescaped, or the
  // whole RDN) as its first value. An attribute already holding the new
  // name is replaced.
  bool setRdn(const std::string& rdn) override;
  std::string getLdn() const override;
  void setParentName(const std::string& parentName) override;

  // The RDN attribute of an MO class: "Foo" gives "fooId".
  static std::string moClassRdnAttribute(const std::string& className);

  const std::string& rdn() const { return rdn_; }
  const std::string& parentName() const { return parentName_; }
  const std::string& className() const { return className_; }
  // True when getLdn() would equal `ldn`, without building it.
  bool hasLdn(const std::string& ldn) const;

  // Set by the owner when it takes the instance, cleared when it lets go.
  void setOwner(Owner* owner, InstanceGroupMember* membership);
  Owner* owner() const { return owner_; }
  InstanceGroupMember* membership() const { return membership_; }

 private:
  // Position of the attribute named `name`, or where it would go.
  std::vector<AttributeBase*>::const_iterator position(const char* name) const;
  AttributeBase* find(const std::string& name) const;
  void insert(AttributeBase* attribute);
  void tellOwner();

  std::vector<AttributeBase*> attributes_;
  std::string parentName_;
  std::string rdn_;
  std::string className_;
  Owner* owner_ = nullptr;
  InstanceGroupMember* membership_ = nullptr;
};

#endif
