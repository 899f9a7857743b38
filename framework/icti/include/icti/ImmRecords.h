// The ICTI boundary: the one place where the node's instance records meet
// the instance model.
//
// Reading turns the record of one class into an InstanceGroup that owns
// deep copies of everything, so the node's memory can be freed at once.
// Writing builds the records of groups just before the write call; they
// borrow the model's storage wherever the record layout allows it (class,
// attribute and string values, numbers, byte buffers), so only the pointer
// arrays and the name records are built. A name record, fixed-size in the
// node's layout, is made once for each distinct name (parent names and
// name values alike) and shared by every record that holds it. The groups must
// stay unchanged until the records are gone, which is when this object is
// destroyed.

#ifndef VOSK_ICTI_IMM_RECORDS_H
#define VOSK_ICTI_IMM_RECORDS_H

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "safcImmCt.h"

class InstanceGroup;

// The shared name records, by text and length field.
using NameRecords = std::unordered_map<std::string, std::unique_ptr<SaNameT>>;

class ImmRecords {
 public:
  ImmRecords() = default;
  ~ImmRecords();

  ImmRecords(const ImmRecords&) = delete;
  ImmRecords& operator=(const ImmRecords&) = delete;

  // The group the record holds, read in record order; the record is only
  // read. `rdnAttribute` is the class's RDN attribute in the target model
  // (may be empty), `namespacePrefix` the prefix the class name loses in
  // the model.
  static std::unique_ptr<InstanceGroup> readGroup(const SafcImmCtInstanceGroupT& record,
                                                  const std::string& rdnAttribute,
                                                  const std::string& namespacePrefix);

  // Builds the write record of `group`. False when memory ran out; the
  // record is then left out.
  [[nodiscard]] bool add(const InstanceGroup& group);
  int size() const { return static_cast<int>(records_.size()); }
  // The records added, null-terminated as the write calls take them; valid
  // until the next add.
  SafcImmCtInstanceGroupT** terminated();

 private:
  std::vector<SafcImmCtInstanceGroupT*> records_;
  NameRecords names_;
  std::vector<SafcImmCtInstanceGroupT*> terminated_;
};

#endif
