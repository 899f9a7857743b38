#include "icti/PackedAttributes.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <new>

namespace {

bool nameBefore(const std::string* a, const std::string* b) { return std::strcmp(a->c_str(), b->c_str()) < 0; }

// The bytes the value list of an attribute of the type takes, 0 for no
// value type.
size_t listSize(ValueType type) {
  size_t size = 0;
  withAttributeType(type, [&size](auto* tag) {
    using List = attribute_storage::ValueList<typename AttributeOf<decltype(tag)>::Value>;
    static_assert(sizeof(List) % 8 == 0 && alignof(List) <= 8, "value lists pack in 8-byte steps");
    size = sizeof(List);
  });
  return size;
}

}  // namespace

PackedAttributes::Layout::Layout(const std::vector<Read>& order) : order_(order) {
  std::vector<uint32_t> byName(order.size());
  for (uint32_t i = 0; i < byName.size(); ++i) byName[i] = i;
  std::sort(byName.begin(), byName.end(),
            [&order](uint32_t a, uint32_t b) { return nameBefore(order[a].first, order[b].first); });
  slotRead_.resize(order.size());
  size_t offset = 0;
  for (uint32_t read : byName) {
    slotRead_[read] = static_cast<uint32_t>(slots_.size());
    slots_.push_back({order[read].first, order[read].second, static_cast<uint32_t>(offset)});
    offset += listSize(order[read].second);
  }
  bytes_ = sizeof(PackedAttributes) + offset;
}

const PackedAttributes::Layout* PackedAttributes::Layout::of(const std::vector<Read>& order) {
  if (order.size() > UINT32_MAX / 64) return nullptr;
  std::vector<const std::string*> names;
  for (const Read& read : order) {
    if (listSize(read.second) == 0) return nullptr;
    names.push_back(read.first);
  }
  std::sort(names.begin(), names.end());
  if (std::adjacent_find(names.begin(), names.end()) != names.end()) return nullptr;

  static std::mutex mutex;
  static std::map<std::vector<Read>, std::unique_ptr<const Layout>>* layouts =
      new std::map<std::vector<Read>, std::unique_ptr<const Layout>>();
  std::lock_guard<std::mutex> lock(mutex);
  std::unique_ptr<const Layout>& layout = (*layouts)[order];
  if (!layout) layout.reset(new Layout(order));
  return layout.get();
}

PackedAttributes::PackedAttributes(const Layout& layout)
    : layout_(layout), live_(static_cast<uint32_t>(layout.size())) {
  for (size_t slot = 0; slot < layout.size(); ++slot) {
    withAttributeType(layout.type(slot), [&](auto* tag) {
      new (area() + layout.slots_[slot].offset)
          attribute_storage::ValueList<typename AttributeOf<decltype(tag)>::Value>();
    });
  }
}

PackedAttributes::Ptr PackedAttributes::make(const Layout& layout) {
  void* place = ::operator new(layout.bytes_);
  return Ptr(new (place) PackedAttributes(layout));
}

void PackedAttributes::Free::operator()(PackedAttributes* packed) const {
  for (size_t slot = 0; slot < packed->layout_.size(); ++slot) {
    if (packed->live(slot)) packed->erase(slot);
  }
  packed->~PackedAttributes();
  ::operator delete(packed);
}

size_t PackedAttributes::find(const char* name) const {
  const auto& slots = layout_.slots_;
  auto at = std::lower_bound(slots.begin(), slots.end(), name, [](const Layout::Slot& slot, const char* n) {
    return std::strcmp(slot.name->c_str(), n) < 0;
  });
  const size_t slot = static_cast<size_t>(at - slots.begin());
  return at != slots.end() && *at->name == name && live(slot) ? slot : slots.size();
}

std::unique_ptr<AttributeBase> PackedAttributes::take(size_t slot) {
  std::unique_ptr<AttributeBase> taken = AttributeBase::create(layout_.name(slot), layout_.type(slot));
  swap(slot, *taken);
  retire(slot);
  return taken;
}

void PackedAttributes::erase(size_t slot) {
  alignas(8) unsigned char place[AttributeBase::kMaxSize];
  AttributeBase* dropped = AttributeBase::createAt(place, layout_.name(slot), layout_.type(slot));
  swap(slot, *dropped);
  dropped->~AttributeBase();
  retire(slot);
}

void PackedAttributes::swap(size_t slot, AttributeBase& attribute) {
  withAttributeType(layout_.type(slot), [&](auto* tag) {
    using Typed = AttributeOf<decltype(tag)>;
    static_cast<Typed&>(attribute).swapValues(values<typename Typed::Value>(slot));
  });
}

bool PackedAttributes::live(size_t slot) const {
  bool live = false;
  withAttributeType(layout_.type(slot),
                    [&](auto* tag) { live = !values<typename AttributeOf<decltype(tag)>::Value>(slot).retired(); });
  return live;
}

void PackedAttributes::retire(size_t slot) {
  withAttributeType(layout_.type(slot),
                    [&](auto* tag) { values<typename AttributeOf<decltype(tag)>::Value>(slot).retire(); });
  --live_;
}
