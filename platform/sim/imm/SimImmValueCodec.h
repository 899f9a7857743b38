// The value types of IMM attributes as the simulated conversion tool knows
// them: their names in IMM XML ("SA_INT32_T" ...), and the conversion of one
// value between its text in IMM XML and its layout in the tool's records
// (SaInt32T ... SaDoubleT, SaNameT, SaStringT, SaAnyT as lower-case hex).
// Integers are read in base 0 ("0x1f", "017", "15"), written in decimal.

#ifndef VOSK_SIM_SIM_IMM_VALUE_CODEC_H
#define VOSK_SIM_SIM_IMM_VALUE_CODEC_H

#include <cstddef>
#include <string>

#include "SimImmArena.h"
#include "SimImmObject.h"

class SimImmValueCodec {
 public:
  // The SA_IMM_ATTR_* code of a type name, or 0 for a name that is no type.
  static int typeOfName(const std::string& name);
  // The type name of a code, or null for a code that is no type.
  static const char* nameOfType(int type);

  // Bytes one value of a known type takes in a record.
  static size_t valueSize(int type);

  // Converts `text` into the value at `out` (valueSize(type) bytes); strings
  // and byte buffers get their storage from `arena`. False, with `why` set,
  // when the text is not a value of the type.
  static bool parse(int type, const std::string& text, void* out, SimImmArena& arena, std::string* why);
  // The same for a value as a file gives it: one in base64 is decoded first,
  // which only SA_ANY_T, SA_STRING_T and SA_NAME_T values may be.
  static bool parse(int type, const SimImmValue& value, void* out, SimImmArena& arena, std::string* why);

  // The text of the value at `value`, which parses back to the same value.
  // False, with `why` set, when the record holds no valid value.
  static bool format(int type, const void* value, std::string* text, std::string* why);

  SimImmValueCodec() = delete;
};

#endif
