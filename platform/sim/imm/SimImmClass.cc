#include "SimImmClass.h"

const SimImmAttrDef* SimImmClass::find(const std::string& attrName) const {
  if (rdn.name == attrName) return &rdn;
  for (const SimImmAttrDef& attr : attrs) {
    if (attr.name == attrName) return &attr;
  }
  return nullptr;
}
