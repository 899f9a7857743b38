#include "runtime/Filter.h"

#include "icti/AttributeValue.h"
#include "icti/DistinguishedName.h"
#include "icti/ValueText.h"

bool Filter::applies(InstanceIf& instance, unsigned int index) {
  std::string expected;
  if (args_->getArgument("ldnValue", expected) && instance.getLdn() != expected) return false;
  if (args_->getArgument("rdnValue", expected) && DistinguishedName::rdnValue(instance.getRdn()) != expected) {
    return false;
  }
  if (args_->getArgument("parentName", expected) && instance.getParentName() != expected) return false;
  if (args_->getArgument("oldAttributeValue", expected)) {
    std::string attributeName;
    args_->getArgument("name", attributeName);
    AttributeInternalIf* attribute = instance.getAttribute(attributeName);
    // A missing attribute is no reason to skip the instance.
    if (attribute == nullptr) return true;
    const ValueType type = attribute->getType();
    if (ValueText::isNumber(type) && !AttributeValue::fits(type, expected)) {
      failure_ = "oldAttributeValue " + expected + " is no " + ValueText::typeName(type) + " value of attribute " +
                 attributeName + " of " + instance.getLdn();
      return false;
    }
    if (!attribute->valueEqualsAtIndex(index, expected.c_str())) return false;
  }
  return true;
}
