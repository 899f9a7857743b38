// Decides whether an action applies to one instance and, where the action
// works on an attribute's values, to one value position of it.

#ifndef VOSK_RUNTIME_FILTER_IF_H
#define VOSK_RUNTIME_FILTER_IF_H

#include "icti/InstanceIf.h"

class FilterIf {
 public:
  virtual ~FilterIf() = default;

  virtual bool applies(InstanceIf& instance, unsigned int index) = 0;
};

#endif
