// A compact form of objects of one class: their dn, line and values one
// after another in a string, with no per-object allocation. The simulated
// node keeps the objects it indexes from the old model and the objects a
// session writes in this form, a fraction of their size as SimImmObjects,
// and turns them back into objects one at a time when they are used.

#ifndef VOSK_SIM_SIM_IMM_OBJECT_CODEC_H
#define VOSK_SIM_SIM_IMM_OBJECT_CODEC_H

#include <cstddef>
#include <string>

#include "SimImmObject.h"

class SimImmObjectCodec {
 public:
  // Appends `object` (its class left out) to `out`.
  static void encode(const SimImmObject& object, std::string* out);

  // Decodes the object that starts at `*pos` of `in` into `object`, reusing
  // the storage it has, and moves `*pos` past it. The class is left as it is.
  static void decodeNext(const std::string& in, size_t* pos, SimImmObject* object);
};

#endif
