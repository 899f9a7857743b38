// The attributes an instance was read with, kept compactly until they are
// asked for: their values lie in one block, as the attribute objects would
// hold them, and their names and types in a Layout that every instance read
// with the same attributes shares. There is no object per attribute, so a
// class of a million instances costs little more than its values. An
// attribute leaves the block when a caller needs it as an object (take) or
// erases it; a slot it left is no longer live.
//
// Slots are in name order (byte-wise comparison), like an instance's
// attributes. A block is used by one thread at a time.

#ifndef VOSK_ICTI_PACKED_ATTRIBUTES_H
#define VOSK_ICTI_PACKED_ATTRIBUTES_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "icti/Attribute.h"
#include "icti/ValueType.h"

class PackedAttributes {
 public:
  // The names and types of the attributes of one read order, and where each
  // one's values lie in a block.
  class Layout {
   public:
    // One attribute as read: its name (AttributeName's) and its type.
    using Read = std::pair<const std::string*, ValueType>;

    // The layout of attributes read in `order`, or null when two share a
    // name or one has no value type: such a read needs attribute objects.
    // One layout is kept for each distinct order, for the life of the
    // process; safe to call from every thread.
    static const Layout* of(const std::vector<Read>& order);

    size_t size() const { return slots_.size(); }
    const std::string* name(size_t slot) const { return slots_[slot].name; }
    ValueType type(size_t slot) const { return slots_[slot].type; }
    // The slot of the attribute read `position`th.
    size_t slotRead(size_t position) const { return slotRead_[position]; }
    const std::vector<Read>& order() const { return order_; }

   private:
    friend class PackedAttributes;
    struct Slot {
      const std::string* name;
      ValueType type;
      uint32_t offset;  // of its values in the block
    };

    explicit Layout(const std::vector<Read>& order);

    std::vector<Read> order_;
    std::vector<Slot> slots_;
    std::vector<uint32_t> slotRead_;
    size_t bytes_ = 0;  // of a whole block
  };

  struct Free {
    void operator()(PackedAttributes* packed) const;
  };
  using Ptr = std::unique_ptr<PackedAttributes, Free>;

  // A block for `layout` with every slot live and empty.
  static Ptr make(const Layout& layout);

  PackedAttributes(const PackedAttributes&) = delete;
  PackedAttributes& operator=(const PackedAttributes&) = delete;

  const Layout& layout() const { return layout_; }
  bool live(size_t slot) const;
  size_t liveCount() const { return live_; }
  // The live slot named `name`, or size() of the layout when there is none.
  size_t find(const char* name) const;

  // Calls `visit(AttributeBase&)` with an attribute of the slot's name and
  // type that holds the slot's values for the call; what it changes stays.
  template <typename Visit>
  void lend(size_t slot, Visit visit);
  // The values of a live slot, in the layout of `Attribute<T>::Value`.
  template <typename V>
  const attribute_storage::ValueList<V>& values(size_t slot) const {
    return *reinterpret_cast<const attribute_storage::ValueList<V>*>(area() + layout_.slots_[slot].offset);
  }
  template <typename V>
  attribute_storage::ValueList<V>& values(size_t slot) {
    return *reinterpret_cast<attribute_storage::ValueList<V>*>(area() + layout_.slots_[slot].offset);
  }
  // The slot's values as an attribute object; the slot is no longer live.
  std::unique_ptr<AttributeBase> take(size_t slot);
  // Drops the slot's values; the slot is no longer live.
  void erase(size_t slot);

 private:
  explicit PackedAttributes(const Layout& layout);
  ~PackedAttributes() = default;

  // The slots' value lists; a slot that is no longer live holds a retired
  // one.
  unsigned char* area() { return reinterpret_cast<unsigned char*>(this + 1); }
  const unsigned char* area() const { return reinterpret_cast<const unsigned char*>(this + 1); }
  // Exchanges the slot's values with those of `attribute`, of its type.
  void swap(size_t slot, AttributeBase& attribute);
  // Ends the slot's life as a live slot.
  void retire(size_t slot);

  const Layout& layout_;
  uint32_t live_;
};

template <typename Visit>
void PackedAttributes::lend(size_t slot, Visit visit) {
  alignas(8) unsigned char place[AttributeBase::kMaxSize];
  AttributeBase* borrower = AttributeBase::createAt(place, layout_.name(slot), layout_.type(slot));
  swap(slot, *borrower);
  visit(*borrower);
  swap(slot, *borrower);
  borrower->~AttributeBase();
}

#endif
