#include "runtime/AttributeTypes.h"

#include "common/Log.h"
#include "icti/ValueText.h"

uint32_t AttributeTypes::attributeTypeFromText(const std::string& typeName) {
  uint32_t type = ValueText::typeOfName(typeName);
  if (type == 0) TAV_LOG(ERROR, "Unsupported type: %s", typeName.c_str());
  return type;
}
