// The operations of an attribute that the instance model itself needs:
// filling it from a platform record, building the record for writing,
// and renaming it.

#ifndef VOSK_ICTI_ATTRIBUTE_INTERNAL_IF_H
#define VOSK_ICTI_ATTRIBUTE_INTERNAL_IF_H

#include "icti/AttributeIf.h"
#include "safcImmCt.h"

class AttributeInternalIf : public AttributeIf {
 public:
  // Appends every value of the record, deep-copying strings and buffers.
  virtual void init(const SaImmAttrValuesT_2* record) = 0;
  // A record for writing that borrows this attribute's name and values: the
  // attribute must outlive the write. The caller frees the record and its
  // pointer array (not the values) with free(). Values that need a layout
  // other than the attribute's own (name records) live in the pointer
  // array's block and go with it. Null when out of memory.
  virtual SaImmAttrValuesT_2* createAttrValues() = 0;
  virtual bool hasValueAtIndex(uint32_t index) = 0;
  virtual void setName(const char* name) = 0;
};

#endif
