// A small in-memory model for the value actions' tests: real instance
// groups served by a handler that records failure reports instead of
// rolling back, and helpers to build instances and run an action.

#ifndef VOSK_TESTS_ACTIONS_VALUE_MODEL_H
#define VOSK_TESTS_ACTIONS_VALUE_MODEL_H

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "icti/IctiHandlerIf.h"
#include "icti/InstanceGroup.h"
#include "xml/ActionArguments.h"
#include "xml/OperationArgument.h"
#include "xml/UpgradeActionIf.h"

class ValueModel : public IctiHandlerIf {
 public:
  struct Attr {
    std::string name;
    uint32_t type;
    std::vector<std::string> values;
  };

  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                    bool usePrefix = false) override {
    lastPrefix = usePrefix ? prefix : "<own>";
    auto found = groups_.find(className);
    return found == groups_.end() ? nullptr : found->second.get();
  }
  InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) override {
    InstanceGroupIf* group = getInstanceGroup(className, prefix);
    return group == nullptr || group->getNumberOfInstances() != 1 ? nullptr : group->getFirstInstance();
  }
  InstanceGroupIf* addInstanceGroup(const std::string&) override { return nullptr; }
  bool removeInstanceGroup(const std::string&) override { return false; }
  InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) override {
    std::string rdn = ldn.substr(0, ldn.find(','));
    std::string className = rdn.substr(0, rdn.find("Id="));
    if (!className.empty()) className[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(className[0])));
    return getInstanceGroup(className);
  }
  void failUpgrade(const char* message) override { failures.push_back(message); }
  bool isAlive() override { return true; }

  InstanceGroup& group(const std::string& className) {
    std::unique_ptr<InstanceGroup>& slot = groups_[className];
    if (!slot) slot.reset(new InstanceGroup("", className));
    return *slot;
  }
  // An instance of the class below `parent` with the attributes given.
  InstanceIf& add(const std::string& className, const std::string& parent, const std::string& rdnId,
                  const std::vector<Attr>& attributes = {}, bool isStruct = false) {
    InstanceIf* instance = group(className).createInstance(parent, rdnId, isStruct, isStruct ? className : "");
    for (const Attr& attr : attributes) {
      AttributeInternalIf* created = nullptr;
      instance->addAttribute(attr.name, attr.type, &created);
      for (const std::string& value : attr.values) created->addCopy(value.c_str());
    }
    return *instance;
  }

  // The values of an attribute as texts; {"<absent>"} when there is none.
  static std::vector<std::string> values(InstanceIf& instance, const std::string& name) {
    AttributeInternalIf* attribute = instance.getAttribute(name);
    if (attribute == nullptr) return {"<absent>"};
    std::vector<std::string> texts;
    for (uint32_t i = 0; i < attribute->getNumberOfValues(); ++i) texts.push_back(attribute->readValueAtIndex(i));
    return texts;
  }

  // Runs the action on the class's group with `Arg`s and operations, each
  // operation given as attribute/value pairs as in an `Operation` element.
  using Operation = std::map<std::string, std::string>;
  bool run(UpgradeActionIf& action, const std::string& className, const std::map<std::string, std::string>& args,
           const std::vector<Operation>& operations) {
    ActionArguments arguments;
    fill(arguments, args, operations);
    auto found = groups_.find(className);
    return action.execute(this, found == groups_.end() ? nullptr : found->second.get(), arguments);
  }
  bool validate(UpgradeActionIf& action, const std::map<std::string, std::string>& args,
                const std::vector<Operation>& operations) {
    ActionArguments arguments;
    fill(arguments, args, operations);
    return action.validateArgs(arguments, this);
  }

  std::vector<std::string> failures;
  std::string lastPrefix;

 private:
  static void fill(ActionArguments& arguments, const std::map<std::string, std::string>& args,
                   const std::vector<Operation>& operations) {
    for (const auto& arg : args) arguments.addArgument(arg.first, arg.second);
    for (const Operation& fields : operations) {
      OperationArgument* operation = new OperationArgument();
      for (const auto& f : fields) set(*operation, f.first, f.second.c_str());
      arguments.addOperation(operation);
    }
  }
  static void set(OperationArgument& op, const std::string& field, const char* text) {
    if (field == "rangeStart")
      op.setRangeStart(text);
    else if (field == "rangeEnd")
      op.setRangeEnd(text);
    else if (field == "operator")
      op.setOperator(text);
    else if (field == "value")
      op.setValue(text);
    else if (field == "valueFromAttr")
      op.setValueFromAttr(text);
    else if (field == "valueFromInstance")
      op.setValueFromInstance(text);
    else if (field == "structType")
      op.setStructType(text);
    else if (field == "valueFromMoTypeAnyInstance")
      op.setValueFromMoTypeAnyInstance(text);
    else if (field == "valueFromTypeRefOnlyInstance")
      op.setValueFromTypeRefOnlyInstance(text);
    else if (field == "valueFromParentInstance")
      op.setValueFromParentInstance(text);
    else if (field == "valueFromBitmapStringAttr")
      op.setValueFromBitmapStringAttr(text);
    else if (field == "valueFromInstanceReferencedBy")
      op.setValueFromInstanceReferencedBy(text);
    else if (field == "valueFromImmNamespace")
      op.setValueFromImmNamespace(text);
    else if (field == "valueFromSingleAttr")
      op.setValueFromSingleAttr(text);
    else if (field == "valueFromMoTypeAnyChildInstance")
      op.setValueFromMoTypeAnyChildInstance(text);
    else
      ADD_FAILURE() << "unknown operation field " << field;
  }

  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

#endif
