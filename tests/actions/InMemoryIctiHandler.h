// An ICTI handler over real instance groups held in memory, for action
// tests that need several classes at once. Failure reports are recorded.

#ifndef VOSK_TESTS_ACTIONS_IN_MEMORY_ICTI_HANDLER_H
#define VOSK_TESTS_ACTIONS_IN_MEMORY_ICTI_HANDLER_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "icti/IctiHandlerIf.h"
#include "icti/InstanceGroup.h"

class InMemoryIctiHandler : public IctiHandlerIf {
 public:
  // A group of the class, created empty when it does not exist yet.
  InstanceGroup& group(const std::string& className) {
    std::unique_ptr<InstanceGroup>& group = groups_[className];
    if (group == nullptr) group = std::make_unique<InstanceGroup>("", className);
    return *group;
  }
  bool has(const std::string& className) const { return groups_.count(className) != 0; }

  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& /*prefix*/,
                                    bool /*usePrefix*/) override {
    auto found = groups_.find(className);
    return found != groups_.end() ? found->second.get() : nullptr;
  }
  InstanceIf* getTheOnlyInstance(const std::string& /*className*/, const std::string& /*prefix*/) override {
    return nullptr;
  }
  InstanceGroupIf* addInstanceGroup(const std::string& className) override {
    if (has(className)) return nullptr;
    return &group(className);
  }
  bool removeInstanceGroup(const std::string& className) override { return groups_.erase(className) != 0; }
  InstanceGroupIf* getInstanceGroupForLdn(const std::string& /*ldn*/) override { return nullptr; }
  void failUpgrade(const char* message) override { failures.push_back(message); }
  bool isAlive() override { return true; }

  std::vector<std::string> failures;

 private:
  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

#endif
