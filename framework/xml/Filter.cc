#include "xml/Filter.h"

#include "xml/UpgradeAction.h"

bool Filter::applies(InstanceIf& instance, unsigned int index) {
  std::string expected;
  if (args_->getArgument("ldnValue", expected) && instance.getLdn() != expected) return false;
  if (args_->getArgument("rdnValue", expected) && UpgradeAction::rdnValue(instance.getRdn()) != expected) {
    return false;
  }
  if (args_->getArgument("parentName", expected) && instance.getParentName() != expected) return false;
  if (args_->getArgument("oldAttributeValue", expected)) {
    std::string attributeName;
    args_->getArgument("name", attributeName);
    AttributeInternalIf* attribute = instance.getAttribute(attributeName);
    // A missing attribute is no reason to skip the instance.
    if (attribute != nullptr && !attribute->valueEqualsAtIndex(index, expected.c_str())) return false;
  }
  return true;
}
