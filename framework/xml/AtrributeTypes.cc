#include "xml/AtrributeTypes.h"

#include <cstdlib>

#include "common/Log.h"
#include "safcImmCt.h"

uint32_t AtrributeTypes::attributeTypeFromText(const std::string& typeName) {
  static const struct {
    const char* name;
    uint32_t code;
  } kTypes[] = {
      {"SA_INT32_T", SA_IMM_ATTR_SAINT32T},   {"SA_UINT32_T", SA_IMM_ATTR_SAUINT32T},
      {"SA_INT64_T", SA_IMM_ATTR_SAINT64T},   {"SA_UINT64_T", SA_IMM_ATTR_SAUINT64T},
      {"SA_NAME_T", SA_IMM_ATTR_SANAMET},     {"SA_DOUBLE_T", SA_IMM_ATTR_SADOUBLET},
      {"SA_STRING_T", SA_IMM_ATTR_SASTRINGT}, {"SA_ANY_T", SA_IMM_ATTR_SAANYT},
  };
  for (const auto& type : kTypes) {
    if (typeName == type.name) return type.code;
  }
  TAV_LOG(ERROR, "Unsupported type: %s", typeName.c_str());
  abort();
}
