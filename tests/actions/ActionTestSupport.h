// Small builders shared by the action tests: arguments from a list of pairs,
// instances with typed attributes, and attribute values read back as text.

#ifndef VOSK_TESTS_ACTIONS_ACTION_TEST_SUPPORT_H
#define VOSK_TESTS_ACTIONS_ACTION_TEST_SUPPORT_H

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "icti/InstanceGroupIf.h"
#include "xml/ActionArguments.h"

using ArgumentList = std::vector<std::pair<std::string, std::string>>;

inline std::unique_ptr<ActionArguments> makeArguments(const ArgumentList& list) {
  auto args = std::make_unique<ActionArguments>();
  for (const auto& [name, value] : list) args->addArgument(name, value);
  return args;
}

// Sets (or adds) `name` of type `type` on the instance to exactly `values`.
inline void setValues(InstanceIf& instance, const std::string& name, uint32_t type,
                      const std::vector<std::string>& values) {
  instance.eraseAttribute(name);
  AttributeInternalIf* attribute = nullptr;
  instance.addAttribute(name, type, &attribute);
  for (const std::string& value : values) attribute->addCopy(value.c_str());
}

// The values of the attribute as text; a single "<absent>" without it.
inline std::vector<std::string> valuesOf(const InstanceIf& instance, const std::string& name) {
  AttributeInternalIf* attribute = instance.getAttribute(name);
  if (attribute == nullptr) return {"<absent>"};
  std::vector<std::string> values;
  for (uint32_t i = 0; i < attribute->getNumberOfValues(); ++i) values.push_back(attribute->readValueAtIndex(i));
  return values;
}

// The distinguished names of the group's instances, in group order.
inline std::vector<std::string> ldnsOf(const InstanceGroupIf& group) {
  std::vector<std::string> ldns;
  for (InstanceIf* instance : group.getInstances()) ldns.push_back(instance->getLdn());
  return ldns;
}

#endif
