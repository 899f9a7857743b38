// Builds a platform instance-group record of string-valued instances, as the
// conversion tool would return it, and frees it with itself.

#ifndef VOSK_TESTS_SUPPORT_GROUP_RECORD_BUILDER_H
#define VOSK_TESTS_SUPPORT_GROUP_RECORD_BUILDER_H

#include <cstring>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "safcImmCt.h"

class GroupRecordBuilder {
 public:
  explicit GroupRecordBuilder(const std::string& className) : className_(className) {}

  // One instance below `parent` (empty: a root) with string attributes.
  GroupRecordBuilder& instance(const std::string& parent,
                               const std::vector<std::pair<std::string, std::string>>& attributes) {
    instances_.push_back({parent, attributes});
    return *this;
  }

  // The null-terminated array of one group, as readInstances returns it.
  SafcImmCtInstanceGroupT** build() {
    group_.className = const_cast<char*>(className_.c_str());
    for (auto& wanted : instances_) {
      SafcImmCtInstanceT& instance = instanceStore_.emplace_back();
      instance.parentName = nullptr;
      if (!wanted.first.empty()) {
        SaNameT& name = names_.emplace_back();
        name.length = static_cast<SaUint16T>(wanted.first.size());
        std::strncpy(reinterpret_cast<char*>(name.value), wanted.first.c_str(), SA_MAX_NAME_LENGTH - 1);
        instance.parentName = &name;
      }
      std::vector<SaImmAttrValuesT_2*>& attributes = attributeArrays_.emplace_back();
      for (auto& attribute : wanted.second) {
        SaImmAttrValuesT_2& record = attributeStore_.emplace_back();
        char*& value = strings_.emplace_back(const_cast<char*>(texts_.emplace_back(attribute.second).c_str()));
        std::vector<void*>& values = valueArrays_.emplace_back();
        values = {&value, nullptr};
        record.attrName = const_cast<char*>(texts_.emplace_back(attribute.first).c_str());
        record.attrValueType = SA_IMM_ATTR_SASTRINGT;
        record.attrValuesNumber = 1;
        record.attrValues = values.data();
        attributes.push_back(&record);
      }
      attributes.push_back(nullptr);
      instance.attrValues = attributes.data();
      instancePointers_.push_back(&instance);
    }
    instancePointers_.push_back(nullptr);
    group_.instances = instancePointers_.data();
    groups_ = {&group_, nullptr};
    return groups_.data();
  }

 private:
  std::string className_;
  std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>> instances_;
  // deques keep element addresses stable while growing.
  std::deque<std::string> texts_;
  std::deque<char*> strings_;
  std::deque<SaNameT> names_;
  std::deque<SaImmAttrValuesT_2> attributeStore_;
  std::deque<std::vector<void*>> valueArrays_;
  std::deque<std::vector<SaImmAttrValuesT_2*>> attributeArrays_;
  std::deque<SafcImmCtInstanceT> instanceStore_;
  std::vector<SafcImmCtInstanceT*> instancePointers_;
  SafcImmCtInstanceGroupT group_;
  std::vector<SafcImmCtInstanceGroupT*> groups_;
};

#endif
