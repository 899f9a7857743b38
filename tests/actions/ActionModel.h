// An in-memory model for the action tests: real instance groups served by an
// ICTI handler that records failure reports instead of rolling back.

#ifndef VOSK_TESTS_ACTIONS_ACTION_MODEL_H
#define VOSK_TESTS_ACTIONS_ACTION_MODEL_H

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <set>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "icti/IctiHandlerIf.h"
#include "icti/Instance.h"
#include "icti/InstanceGroup.h"
#include "runtime/ActionArguments.h"
#include "runtime/OperationArgument.h"
#include "runtime/UpgradeActionIf.h"

using Strings = std::vector<std::string>;
using Args = std::vector<std::pair<std::string, std::string>>;
// The attributes of one `Operation` element, by name.
using Op = std::map<std::string, std::string>;

// Arguments written "name=value ..."; a value holds no space.
inline Args argsOf(const std::string& text) {
  Args args;
  std::istringstream pairs(text);
  for (std::string pair; pairs >> pair;)
    args.emplace_back(pair.substr(0, pair.find('=')), pair.substr(pair.find('=') + 1));
  return args;
}

// An operation written as the attributes of its element: R"(operator="+" value="1")".
inline Op op(const std::string& attributes) {
  static const std::regex kAttribute(R"re((\w+)="([^"]*)")re");
  Op fields;
  for (std::sregex_iterator it(attributes.begin(), attributes.end(), kAttribute), end; it != end; ++it) {
    fields[(*it)[1]] = (*it)[2];
  }
  return fields;
}

struct Attr {
  std::string name;
  ValueType type;
  Strings values;
};

class ActionModel : public IctiHandlerIf {
 public:
  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                    bool usePrefix = false) override {
    lastPrefix = usePrefix ? prefix : "<own>";
    auto found = groups_.find(className);
    return found == groups_.end() ? nullptr : found->second.get();
  }
  InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) override {
    InstanceGroupIf* group = getInstanceGroup(className, prefix);
    return group != nullptr && group->getNumberOfInstances() == 1 ? group->getFirstInstance() : nullptr;
  }
  InstanceGroupIf* addInstanceGroup(const std::string& className) override {
    return has(className) ? nullptr : &group(className);
  }
  bool removeInstanceGroup(const std::string& className) override { return groups_.erase(className) != 0; }
  // The class is the first RDN's attribute without "Id", first letter upper-cased.
  InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) override {
    std::string className = ldn.substr(0, std::min(ldn.find(','), ldn.find("Id=")));
    if (!className.empty()) className[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(className[0])));
    return getInstanceGroup(className);
  }
  void failUpgrade(const char* message) override { failures.push_back(message); }
  bool isAlive() override { return true; }
  void setFailureContext(const std::string& /*context*/) override {}
  int failureCount() const override { return static_cast<int>(failures.size()); }
  // A class is defined when the model has its group or lists it in `defined`.
  bool classDefined(const std::string& className) override { return has(className) || defined.count(className); }

  // The group of the class, created empty on first use.
  InstanceGroup& group(const std::string& className) {
    auto& slot = groups_[className];
    return *(slot ? slot : slot = std::make_unique<InstanceGroup>("", className));
  }
  bool has(const std::string& className) const { return groups_.count(className) != 0; }

  // "<rdnAttribute>=<rdnId>" below `parent`; the RDN attribute defaults to the class's ("Foo" gives "fooId").
  InstanceIf& add(const std::string& className, const std::string& parent, const std::string& rdnId,
                  const std::vector<Attr>& attributes = {}, std::string rdnAttribute = "") {
    if (rdnAttribute.empty()) rdnAttribute = Instance::moClassRdnAttribute(className);
    auto* instance = new Instance(parent, rdnAttribute, rdnId, className);
    group(className).addInstance(instance);
    for (const Attr& attr : attributes) set(*instance, attr.name, attr.type, attr.values);
    return *instance;
  }
  // Sets (or adds) the attribute to exactly `values`.
  static void set(InstanceIf& instance, const std::string& name, ValueType type, const Strings& values) {
    instance.eraseAttribute(name);
    AttributeInternalIf* attribute = nullptr;
    instance.addAttribute(name, type, &attribute);
    for (const std::string& value : values) attribute->addCopy(value.c_str());
  }
  // The values as texts; {"<absent>"} without the attribute.
  static Strings values(const InstanceIf& instance, const std::string& name) {
    AttributeInternalIf* attribute = instance.getAttribute(name);
    if (attribute == nullptr) return {"<absent>"};
    Strings texts;
    for (uint32_t i = 0; i < attribute->getNumberOfValues(); ++i) texts.push_back(*attribute->readValueAtIndex(i));
    return texts;
  }
  // The distinguished names of the class's instances, in group order.
  Strings ldns(const std::string& className) {
    Strings result;
    for (InstanceIf* instance : group(className).getInstances()) result.push_back(instance->getLdn());
    return result;
  }

  // Runs the action on the class's group (null when the model lacks it).
  bool run(UpgradeActionIf& action, const std::string& className, const Args& args, const std::vector<Op>& ops = {}) {
    return runOn(action, has(className) ? &group(className) : nullptr, args, ops);
  }
  bool runOn(UpgradeActionIf& action, InstanceGroupIf* group, const Args& args, const std::vector<Op>& ops = {}) {
    return action.execute(this, group, *argumentsOf(args, ops));
  }
  bool validate(UpgradeActionIf& action, const Args& args, const std::vector<Op>& ops = {}) {
    return action.validateArgs(*argumentsOf(args, ops), this);
  }

  Strings failures;
  std::string lastPrefix;
  std::set<std::string> defined;

 private:
  static std::unique_ptr<ActionArguments> argumentsOf(const Args& args, const std::vector<Op>& ops) {
    auto arguments = std::make_unique<ActionArguments>();
    for (const auto& [name, value] : args) arguments->addArgument(name, value);
    for (const Op& fields : ops) {
      auto* operation = new OperationArgument();
      for (const auto& [field, text] : fields) {
        if (!operation->setByName(field.c_str(), text.c_str())) ADD_FAILURE() << "unknown operation field " << field;
      }
      arguments->addOperation(operation);
    }
    return arguments;
  }

  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

#endif
