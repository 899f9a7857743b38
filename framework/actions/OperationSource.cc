#include "actions/OperationSource.h"

#include <cctype>
#include <cstdarg>

#include "common/Log.h"
#include "common/MessageFormatter.h"
#include "icti/DistinguishedName.h"
#include "icti/ValueType.h"

namespace {

// A field of an operation, as the getters hand it out.
struct Field {
  bool isSet = false;
  std::string text;
};

template <typename Getter>
Field field(const OperationArgumentIf& operation, Getter getter) {
  Field result;
  (operation.*getter)(result.isSet, result.text);
  return result;
}

bool looksLikeClassName(const std::string& text) {
  if (text.empty() || !std::isupper(static_cast<unsigned char>(text[0]))) return false;
  for (char c : text) {
    if (!std::isalnum(static_cast<unsigned char>(c))) return false;
  }
  return true;
}

// "Class.attribute" or "Class": the class and the attribute (empty for any).
bool splitReference(const std::string& reference, std::string& className, std::string& attribute) {
  size_t dot = reference.find('.');
  className = reference.substr(0, dot);
  attribute = dot == std::string::npos ? std::string() : reference.substr(dot + 1);
  return looksLikeClassName(className) && (dot == std::string::npos || !attribute.empty());
}

bool holdsText(AttributeInternalIf& attribute, const std::string& text) {
  ValueType type = attribute.getType();
  if (type != ValueType::kName && type != ValueType::kString) return false;
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    if (attribute.readValueAtIndex(i) == text) return true;
  }
  return false;
}

// A bitmap as an unsigned number: bytes (first most significant, at most
// 8) or a text of 0 and 1 (first most significant, at most 64).
bool bitmapNumber(AttributeInternalIf& attribute, unsigned long long& number) {
  unsigned long long bits = 0;
  if (attribute.getType() == ValueType::kAny) {
    std::vector<uint8_t> bytes = attribute.getRawDataValueAtIndex(0);
    if (bytes.size() > sizeof bits) return false;
    for (uint8_t byte : bytes) bits = (bits << 8) | byte;
  } else if (attribute.getType() == ValueType::kString) {
    const std::string digits = attribute.readValueAtIndex(0).value_or("");
    if (digits.empty() || digits.size() > 64) return false;
    for (char digit : digits) {
      if (digit != '0' && digit != '1') return false;
      bits = (bits << 1) | static_cast<unsigned long long>(digit - '0');
    }
  } else {
    return false;
  }
  number = bits;
  return true;
}

}  // namespace

void OperationSource::report(IctiHandlerIf& ictiHandler, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  std::string reason = MessageFormatter::plainV(fmt, args);
  va_end(args);
  ictiHandler.failUpgrade(reason.c_str());
}

bool OperationSource::check(const OperationArgumentIf& operation, IctiHandlerIf& ictiHandler, const char* actionName) {
  const std::string text = operation.toString();
  if (!operation.isValid()) {
    report(ictiHandler, "%s: invalid combination of arguments in operation %s", actionName, text.c_str());
    return false;
  }
  int instanceFields = field(operation, &OperationArgumentIf::getValueFromInstance).isSet +
                       field(operation, &OperationArgumentIf::getValueFromParentInstance).isSet +
                       field(operation, &OperationArgumentIf::getValueFromMoTypeAnyInstance).isSet +
                       field(operation, &OperationArgumentIf::getValueFromMoTypeAnyChildInstance).isSet +
                       field(operation, &OperationArgumentIf::getValueFromInstanceReferencedBy).isSet;
  if (instanceFields > 1) {
    report(ictiHandler, "%s: the instance sources of operation %s exclude each other", actionName, text.c_str());
    return false;
  }
  Field parent = field(operation, &OperationArgumentIf::getValueFromParentInstance);
  if (parent.isSet && parent.text != "true" && !looksLikeClassName(parent.text)) {
    report(ictiHandler, "%s: valueFromParentInstance %s is neither true nor an MO class name", actionName,
           parent.text.c_str());
    return false;
  }
  Field referencedBy = field(operation, &OperationArgumentIf::getValueFromInstanceReferencedBy);
  std::string className, attribute;
  if (referencedBy.isSet && !splitReference(referencedBy.text, className, attribute)) {
    report(ictiHandler, "%s: valueFromInstanceReferencedBy %s is not Class or Class.attribute", actionName,
           referencedBy.text.c_str());
    return false;
  }
  return true;
}

std::string OperationSource::ancestorLdn(const std::string& ldn, const std::string& className) {
  if (className.empty()) return std::string();
  std::string rdnStart = className;
  rdnStart[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(rdnStart[0])));
  rdnStart += "Id=";
  for (size_t start = 0; start < ldn.size();) {
    if (ldn.compare(start, rdnStart.size(), rdnStart) == 0) return ldn.substr(start);
    size_t separator = DistinguishedName::nextSeparator(ldn, start);
    if (separator == std::string::npos) break;
    start = separator + 1;
  }
  return std::string();
}

bool OperationSource::resolve(const OperationArgumentIf& operation, InstanceIf& instance, Values& values) {
  values = Values();
  Field literal = field(operation, &OperationArgumentIf::getValue);
  if (literal.isSet) {
    values.values.push_back(AttributeValue::ofString(literal.text));
    return true;
  }
  Field onlyInstance = field(operation, &OperationArgumentIf::getValueFromTypeRefOnlyInstance);
  if (onlyInstance.isSet) {
    Field ns = field(operation, &OperationArgumentIf::getValueFromImmNamespace);
    InstanceIf* only = ictiHandler_.getTheOnlyInstance(onlyInstance.text, ns.text);
    if (only == nullptr) {
      report(ictiHandler_, "%s: no single instance of class %s", actionName_, onlyInstance.text.c_str());
      return false;
    }
    const std::string ldn = only->getLdn();
    values.values.push_back(AttributeValue::ofName(ldn, static_cast<uint16_t>(ldn.size())));
    values.type = ValueType::kName;
    return true;
  }
  InstanceIf* source = sourceInstance(operation, instance);
  return source != nullptr && attributeValues(operation, *source, values);
}

bool OperationSource::attributeValues(const OperationArgumentIf& operation, InstanceIf& source, Values& values) {
  Field all = field(operation, &OperationArgumentIf::getValueFromAttr);
  Field single = field(operation, &OperationArgumentIf::getValueFromSingleAttr);
  Field bitmap = field(operation, &OperationArgumentIf::getValueFromBitmapStringAttr);
  const std::string& name = all.isSet ? all.text : single.isSet ? single.text : bitmap.text;
  const std::string ldn = source.getLdn();
  AttributeInternalIf* attribute = source.getAttribute(name);
  if (attribute == nullptr || attribute->getNumberOfValues() == 0) {
    report(ictiHandler_, "%s: source instance %s has no value in attribute %s", actionName_, ldn.c_str(), name.c_str());
    return false;
  }
  if (bitmap.isSet) {
    unsigned long long number = 0;
    if (!bitmapNumber(*attribute, number)) {
      report(ictiHandler_, "%s: attribute %s of %s is no bitmap", actionName_, name.c_str(), ldn.c_str());
      return false;
    }
    values.values.push_back(AttributeValue::ofUnsigned(ValueType::kUint64, number));
    values.type = ValueType::kUint64;
    return true;
  }
  uint32_t count = single.isSet ? 1 : attribute->getNumberOfValues();
  values.values.resize(count);
  for (uint32_t i = 0; i < count; ++i) attribute->getValue(i, &values.values[i]);
  values.type = attribute->getType();
  return true;
}

InstanceIf* OperationSource::sourceInstance(const OperationArgumentIf& operation, InstanceIf& instance) {
  Field byLdn = field(operation, &OperationArgumentIf::getValueFromInstance);
  if (byLdn.isSet) return instanceByLdn(byLdn.text, operation);
  Field parent = field(operation, &OperationArgumentIf::getValueFromParentInstance);
  if (parent.isSet) return parentInstance(parent.text, instance);
  Field any = field(operation, &OperationArgumentIf::getValueFromMoTypeAnyInstance);
  if (any.isSet) return anyInstance(any.text);
  Field anyChild = field(operation, &OperationArgumentIf::getValueFromMoTypeAnyChildInstance);
  if (anyChild.isSet) return anyChildInstance(anyChild.text, instance);
  Field referencedBy = field(operation, &OperationArgumentIf::getValueFromInstanceReferencedBy);
  if (referencedBy.isSet) return referencingInstance(operation, referencedBy.text, instance);
  return &instance;
}

InstanceIf* OperationSource::instanceByLdn(const std::string& ldn, const OperationArgumentIf& operation) {
  // A struct instance's RDN ("id=...") names no class: structType does.
  Field structType = field(operation, &OperationArgumentIf::getStructType);
  InstanceGroupIf* group = structType.isSet ? ictiHandler_.getInstanceGroup(structType.text, "", false)
                                            : ictiHandler_.getInstanceGroupForLdn(ldn);
  InstanceIf* found = group == nullptr ? nullptr : group->getInstance(ldn);
  if (found == nullptr) report(ictiHandler_, "%s: source instance %s not found", actionName_, ldn.c_str());
  return found;
}

InstanceIf* OperationSource::parentInstance(const std::string& which, InstanceIf& instance) {
  const std::string ldn = instance.getLdn();
  const std::string parentName = instance.getParentName();
  if (parentName.empty()) {
    report(ictiHandler_, "%s: %s has no parent", actionName_, ldn.c_str());
    return nullptr;
  }
  std::string wanted = which == "true" ? parentName : ancestorLdn(parentName, which);
  if (wanted.empty()) {
    report(ictiHandler_, "%s: no instance of %s above %s", actionName_, which.c_str(), ldn.c_str());
    return nullptr;
  }
  InstanceGroupIf* group = ictiHandler_.getInstanceGroupForLdn(wanted);
  InstanceIf* found = group == nullptr ? nullptr : group->getInstance(wanted);
  if (found == nullptr) {
    report(ictiHandler_, "%s: parent instance %s of %s not found", actionName_, wanted.c_str(), ldn.c_str());
  }
  return found;
}

InstanceIf* OperationSource::anyInstance(const std::string& className) {
  InstanceGroupIf* group = ictiHandler_.getInstanceGroup(className, "", false);
  InstanceIf* first = group == nullptr ? nullptr : group->getFirstInstance();
  if (first == nullptr) report(ictiHandler_, "%s: no instance of class %s", actionName_, className.c_str());
  return first;
}

InstanceIf* OperationSource::anyChildInstance(const std::string& className, InstanceIf& instance) {
  const std::string ldn = instance.getLdn();
  InstanceGroupIf* group = ictiHandler_.getInstanceGroup(className, "", false);
  std::vector<InstanceIf*> children;
  if (group != nullptr) children = group->getChildInstances(ldn);
  if (children.empty()) {
    report(ictiHandler_, "%s: no child of class %s below %s", actionName_, className.c_str(), ldn.c_str());
    return nullptr;
  }
  return children.front();
}

InstanceIf* OperationSource::referencingInstance(const OperationArgumentIf& operation, const std::string& reference,
                                                 InstanceIf& instance) {
  std::string className, attributeName;
  splitReference(reference, className, attributeName);
  Field ns = field(operation, &OperationArgumentIf::getValueFromImmNamespace);
  InstanceGroupIf* group = ictiHandler_.getInstanceGroup(className, ns.text, true);
  if (group == nullptr || group->getNumberOfInstances() == 0) {
    report(ictiHandler_, "%s: no instance of class %s", actionName_, className.c_str());
    return nullptr;
  }
  const std::string ldn = instance.getLdn();
  for (InstanceIf* candidate : group->getInstances()) {
    for (const auto& named : candidate->getAttributes()) {
      if ((attributeName.empty() || named.first == attributeName) && holdsText(*named.second, ldn)) {
        return candidate;
      }
    }
  }
  report(ictiHandler_, "%s: no instance of %s references %s", actionName_, className.c_str(), ldn.c_str());
  return nullptr;
}
