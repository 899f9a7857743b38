// A GoogleMock ICTI handler over a small in-memory model of real instance
// groups: getInstanceGroup serves the groups added with `group`, null for any
// other class, and every failure report is kept in `failures`.

#ifndef VOSK_TESTS_ACTIONS_MODEL_HANDLER_H
#define VOSK_TESTS_ACTIONS_MODEL_HANDLER_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "MockIctiHandler.h"
#include "icti/Instance.h"
#include "icti/InstanceGroup.h"
#include "xml/ActionArguments.h"

class ModelHandler : public testing::NiceMock<MockIctiHandler> {
 public:
  ModelHandler() {
    ON_CALL(*this, getInstanceGroup).WillByDefault([this](const std::string& className, const std::string&, bool) {
      auto found = groups_.find(className);
      return found != groups_.end() ? static_cast<InstanceGroupIf*>(found->second.get()) : nullptr;
    });
    ON_CALL(*this, failUpgrade).WillByDefault([this](const char* message) { failures.push_back(message); });
  }

  // The group of the class, created empty on first use.
  InstanceGroup& group(const std::string& className) {
    std::unique_ptr<InstanceGroup>& group = groups_[className];
    if (!group) group = std::make_unique<InstanceGroup>("", className);
    return *group;
  }

  // Adds "<rdnAttribute>=<value>" below `parent` to the class's group.
  Instance& add(const std::string& className, const std::string& parent, const std::string& rdnAttribute,
                const std::string& value) {
    auto* instance = new Instance(parent, rdnAttribute, value, className);
    group(className).addInstance(instance);
    return *instance;
  }

  // The distinguished names of the class's instances, in group order.
  std::vector<std::string> ldns(const std::string& className) {
    std::vector<std::string> result;
    for (InstanceIf* instance : group(className).getInstances()) result.push_back(instance->getLdn());
    return result;
  }

  std::vector<std::string> failures;

 private:
  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

// Arguments from name/value pairs.
inline std::unique_ptr<ActionArguments> argumentsOf(const std::map<std::string, std::string>& values) {
  auto args = std::make_unique<ActionArguments>();
  for (const auto& [name, value] : values) args->addArgument(name, value);
  return args;
}

// The values of an attribute as text.
inline std::vector<std::string> valuesOf(InstanceIf& instance, const std::string& attribute) {
  std::vector<std::string> values;
  AttributeInternalIf* found = instance.getAttribute(attribute);
  for (uint32_t i = 0; found != nullptr && i < found->getNumberOfValues(); ++i) {
    values.push_back(found->readValueAtIndex(i));
  }
  return values;
}

#endif
