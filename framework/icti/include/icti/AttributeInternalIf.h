// The operations of an attribute that the instance model itself needs
// beyond those of the actions.

#ifndef VOSK_ICTI_ATTRIBUTE_INTERNAL_IF_H
#define VOSK_ICTI_ATTRIBUTE_INTERNAL_IF_H

#include "icti/AttributeIf.h"

class AttributeInternalIf : public AttributeIf {
 public:
  virtual bool hasValueAtIndex(uint32_t index) = 0;
  virtual void setName(const char* name) = 0;
};

#endif
