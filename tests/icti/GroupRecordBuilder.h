// Builds what the conversion tool's readInstances hands out for one class:
// a null-terminated array holding one group of string-valued instances.

#ifndef VOSK_TESTS_ICTI_GROUP_RECORD_BUILDER_H
#define VOSK_TESTS_ICTI_GROUP_RECORD_BUILDER_H

#include <string>
#include <utility>
#include <vector>

#include "PlatformRecords.h"

class GroupRecordBuilder {
 public:
  explicit GroupRecordBuilder(const std::string& className) : className_(className) {}

  // One instance below `parent` (empty: a root) with string attributes.
  GroupRecordBuilder& instance(const std::string& parent,
                               const std::vector<std::pair<std::string, std::string>>& attributes) {
    InstanceData data;
    if (!parent.empty()) data.parent = parent;
    for (const auto& attribute : attributes) {
      data.attributes.push_back({attribute.first, SA_IMM_ATTR_SASTRINGT, {attribute.second}});
    }
    instances_.push_back(data);
    return *this;
  }

  SafcImmCtInstanceGroupT** build() {
    groups_[0] = records_.group(className_, instances_);
    return groups_;
  }

 private:
  std::string className_;
  std::vector<InstanceData> instances_;
  PlatformRecords records_;
  SafcImmCtInstanceGroupT* groups_[2] = {nullptr, nullptr};
};

#endif
