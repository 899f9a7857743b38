// One managed object of the model held in memory. It is made either from
// what the old model holds (read at the ICTI boundary, ImmRecords) or from
// scratch when an action creates an instance; it owns its attributes and keeps them in name order
// (byte-wise comparison).
//
// An instance may have an owner that indexes it by name (its instance
// group): the owner is told after every change of the RDN or of the parent
// name, so that lookups by distinguished name stay right.

#ifndef VOSK_ICTI_INSTANCE_H
#define VOSK_ICTI_INSTANCE_H

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "icti/Attribute.h"
#include "icti/InstanceIf.h"
#include "icti/PackedAttributes.h"
#include "icti/ValueType.h"

// The owner's own bookkeeping for one instance, opaque to the instance.
struct InstanceGroupMember;

class Instance : public InstanceIf {
 public:
  // The attributes kept as objects, in name order.
  using Attributes = std::vector<AttributeBase*>;

  class Owner {
   public:
    // The instance's distinguished name or parent name has changed.
    virtual void renamed(Instance& instance) = 0;

   protected:
    ~Owner() = default;
  };

  // An instance of the old model being read, below `parentName` (null when
  // it has none), still without attributes: the reader gives it its
  // attributes either packed (readPacked) or one by one (addReadAttribute)
  // and then names it with nameByAttributes. The names are shared with the
  // other instances read together; `className` is AttributeName's.
  Instance(const std::string* className, SharedName parentName);
  // A new instance "<rdnAttribute>=<rdnId>" below `parentName`, with its RDN
  // attribute of type `rdnType` holding the naming value of that RDN
  // (DistinguishedName::namingValueOf: `rdnId`, or the whole RDN when
  // `rdnId` holds "=").
  Instance(const std::string& parentName, const std::string& rdnAttribute, const std::string& rdnId,
           const std::string& className, ValueType rdnType = ValueType::kString);
  ~Instance() override;

  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  bool eraseAttribute(const std::string& name) override;
  std::string getParentName() const override { return parentName(); }
  // Attributes asked for leave the packed storage (PackedAttributes): this
  // changes no answer, only how the instance keeps them.
  std::vector<std::pair<std::string, AttributeInternalIf*>> getAttributes() const override;
  AttributeInternalIf* getAttribute(const std::string& name) const override;
  // An existing name is logged and left in place; the result is then true
  // with *created null.
  bool addAttribute(const std::string& name, ValueType type, AttributeInternalIf** created = nullptr) override;
  // addAttribute for the reader, with AttributeName's copy of the name: the
  // new attribute, or null when the name exists already or the type is none
  // (both logged).
  AttributeBase* addReadAttribute(const std::string* name, ValueType type);
  // Gives a new read instance the attributes of `layout`, empty, for the
  // reader to fill (PackedAttributes::lend). Only before any other
  // attribute is added.
  PackedAttributes& readPacked(const PackedAttributes::Layout& layout);
  // Takes the RDN from the attributes read: the packed ones in the order
  // they were read, or else `readOrder`. `rdnAttribute` is the class's RDN attribute in the target model,
  // when known: a string or name attribute of that name carries the RDN.
  // Otherwise the RDN is the attribute named after the class ("Foo" gives
  // "fooId"), or a string attribute "id" for a struct. The first match wins.
  // The RDN follows from the attribute's first value by the conventions of
  // DistinguishedName::rdnOf.
  void nameByAttributes(const std::vector<AttributeBase*>& readOrder, const std::string& rdnAttribute);
  std::string getRdn() const override { return std::string(rdn()); }
  // Renames the RDN attribute and stores the naming value of the new RDN
  // (DistinguishedName::namingValueOf: the part after "=", unescaped, or the
  // whole RDN) as its first value. An attribute already holding the new
  // name is replaced.
  bool setRdn(const std::string& rdn) override;
  std::string getLdn() const override;
  void setParentName(const std::string& parentName) override;

  // The RDN attribute of an MO class: "Foo" gives "fooId".
  static std::string moClassRdnAttribute(const std::string& className);

  std::string_view rdn() const { return rdn_ ? std::string_view(rdn_.get()) : std::string_view(); }
  const std::string& parentName() const { return parentName_ ? *parentName_ : none(); }
  const std::string& className() const { return *className_; }
  // Visits every attribute in name order without taking any out of the
  // packed storage: `object(AttributeBase&)` for one kept as an object,
  // `packed(PackedAttributes&, slot)` for one still packed.
  template <typename Object, typename Packed>
  void forEachAttribute(Object object, Packed packed) const;
  // True when getLdn() would equal `ldn`, without building it.
  bool hasLdn(const std::string& ldn) const;

  // Set by the owner when it takes the instance, cleared when it lets go.
  void setOwner(Owner* owner, InstanceGroupMember* membership);
  Owner* owner() const { return owner_; }
  InstanceGroupMember* membership() const { return membership_; }

 private:
  // Position of the attribute named `name`, or where it would go.
  Attributes::const_iterator position(const char* name) const;
  AttributeBase* find(const std::string& name) const;
  // addAttribute's work; `added` is null when nothing was added.
  bool add(const std::string* name, ValueType type, AttributeBase** added);
  void insert(AttributeBase* attribute) const;
  // Takes every packed attribute out as an object.
  void unpackAll() const;
  // Drops the packed storage once no attribute is left in it.
  void dropEmptyPacked() const;
  void setRdnText(const std::string& rdn);
  void tellOwner();
  static const std::string& none();

  // The attributes kept as objects, owned, and those still packed; a name
  // is in one of them at most. Both change when an attribute is asked for.
  mutable Attributes attributes_;
  mutable PackedAttributes::Ptr packed_;
  SharedName parentName_;         // null: no parent
  std::unique_ptr<char[]> rdn_;   // terminated; null: empty
  const std::string* className_;  // AttributeName's
  Owner* owner_ = nullptr;
  InstanceGroupMember* membership_ = nullptr;
};

template <typename Object, typename Packed>
void Instance::forEachAttribute(Object object, Packed packed) const {
  const size_t slots = packed_ ? packed_->layout().size() : 0;
  size_t slot = 0;
  auto objectAt = attributes_.begin();
  for (;;) {
    while (slot < slots && !packed_->live(slot)) ++slot;
    const bool packedLeft = slot < slots;
    if (objectAt != attributes_.end() &&
        (!packedLeft || std::strcmp((*objectAt)->name(), packed_->layout().name(slot)->c_str()) < 0)) {
      object(static_cast<AttributeBase&>(**objectAt++));
    } else if (packedLeft) {
      packed(*packed_, slot++);
    } else {
      return;
    }
  }
}

#endif
