#include "runtime/AttributeTypes.h"

#include "common/Log.h"
#include "icti/ValueText.h"

ValueType AttributeTypes::attributeTypeFromText(const std::string& typeName) {
  ValueType type = ValueText::typeOfName(typeName);
  if (type == ValueType::kNone) TAV_LOG(ERROR, "Unsupported type: %s", typeName.c_str());
  return type;
}
