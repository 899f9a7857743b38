#include "actions/AddAttributeAction.h"

#include <string>
#include <vector>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "runtime/AttributeTypes.h"

namespace {

bool readArguments(ActionArgumentsIf& args, std::string& name, std::string& type, std::string& defaultValue) {
  return args.getArgument("name", name) && args.getArgument("type", type) &&
         args.getArgument("defaultValue", defaultValue);
}

// The pieces of a default value list, "a|b|c"; empty pieces are kept.
std::vector<std::string> pieces(const std::string& defaultValue) {
  std::vector<std::string> result;
  for (size_t start = 0;;) {
    size_t end = defaultValue.find('|', start);
    result.push_back(defaultValue.substr(start, end == std::string::npos ? std::string::npos : end - start));
    if (end == std::string::npos) return result;
    start = end + 1;
  }
}

// The type and the default values must be the attribute's: checked before
// any instance is touched. An empty piece gives no value at all.
bool checkTypeAndValues(IctiHandlerIf* ictiHandler, const std::string& type, const std::string& defaultValue) {
  const ValueType code = AttributeTypes::attributeTypeFromText(type);
  if (code == ValueType::kNone) {
    UpgradeAction::fail(ictiHandler, "AddAttributeAction: type %s is no attribute type (SA_INT32_T ... SA_ANY_T)",
                        type.c_str());
    return false;
  }
  for (const std::string& piece : pieces(defaultValue)) {
    if (piece.empty() || AttributeValue::fits(code, piece)) continue;
    UpgradeAction::fail(ictiHandler, "AddAttributeAction: default value %s is no %s value", piece.c_str(),
                        type.c_str());
    return false;
  }
  return true;
}

}  // namespace

AddAttributeAction::AddAttributeAction() : UpgradeAction("AddAttributeAction", addAttribute, withFilter({"name", "type", "defaultValue"})) {}

bool AddAttributeAction::addAttribute(InstanceIf& instance, ActionContext& context) {
  IctiHandlerIf* handler = &context.handler;
  std::string name;
  std::string type;
  std::string defaultValue;
  if (!readArguments(context.args, name, type, defaultValue)) {
    handler->failUpgrade(
        "addAttribute: Failed to read one of the required options: name, type, attributeDefaultValue.");
    return false;
  }
  if (!context.filter.applies(instance, 0)) return true;

  AttributeInternalIf* attribute = nullptr;
  if (!instance.addAttribute(name, AttributeTypes::attributeTypeFromText(type), &attribute)) {
    fail(handler, "addAttribute: CreateAttribute failed for attribute name: %s", name.c_str());
    return false;
  }
  if (attribute == nullptr) return true;

  const std::string ldn = instance.getLdn();
  bool added = false;
  size_t start = 0;
  for (;;) {
    size_t end = defaultValue.find('|', start);
    std::string piece = defaultValue.substr(start, end == std::string::npos ? std::string::npos : end - start);
    TAV_TRACE(INFO,
            "Adding attribute %s to ldn %s with values, string to parse: %s, substring start: %d, substring end: %d, "
            "substring: %s",
            name.c_str(), ldn.c_str(), defaultValue.c_str(), static_cast<int>(start), static_cast<int>(end),
            piece.c_str());
    added = attribute->addCopy(piece.c_str());
    if (!added) {
      TAV_TRACE(INFO, "Could not add attribute %s to %s with default value %s", name.c_str(), ldn.c_str(), piece.c_str());
    }
    if (end == std::string::npos) return added;
    start = end + 1;
  }
}

bool AddAttributeAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string name;
  std::string type;
  std::string defaultValue;
  if (!readArguments(args, name, type, defaultValue)) {
    ictiHandler->failUpgrade("AddAttributeAction requires args: name, type and defaultValue.");
    return false;
  }
  return checkTypeAndValues(ictiHandler, type, defaultValue);
}

void AddAttributeAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  fail(ictiHandler,
       "Action Failed: addAttribute: No instance group to operate on. Adding attribute to non-existing MO class is "
       "not permitted. Action arguments: name = %s, value = %s ",
       argumentValue(args, "name").c_str(), argumentValue(args, "defaultValue").c_str());
}
