// The attribute type names that modification files use, and their value
// types' codes:
//
//   SA_INT32_T 1, SA_UINT32_T 2, SA_INT64_T 3, SA_UINT64_T 4, SA_TIME_T 5,
//   SA_NAME_T 6, SA_FLOAT_T 7, SA_DOUBLE_T 8, SA_STRING_T 9, SA_ANY_T 10
//
// Names are case-sensitive.

#ifndef VOSK_RUNTIME_ATTRIBUTE_TYPES_H
#define VOSK_RUNTIME_ATTRIBUTE_TYPES_H

#include <string>

#include "icti/ValueType.h"

class AttributeTypes {
 public:
  // The type `typeName` names; kNone, logged as an error, for any other
  // text. The action that was given the name fails.
  static ValueType attributeTypeFromText(const std::string& typeName);

  AttributeTypes() = delete;
};

#endif
