// The versions file of the simulated node: one schema a line,
// "<schemaName> <from> <to>", versions written V_R_C (e.g. "RadioNode 1_0_0
// 2_0_0"); "#" starts a comment, blank lines are allowed.

#ifndef VOSK_SIM_SIM_IMM_VERSIONS_H
#define VOSK_SIM_SIM_IMM_VERSIONS_H

#include <string>

#include "safcImmCt.h"

class SimImmVersions {
 public:
  enum class Result { kFound, kNotListed, kUnreadable };

  // Looks `schemaName` up in the file at `path`. kUnreadable, with `why`
  // set, when the file is missing or a line is malformed (the whole file is
  // checked, so a typo shows whichever schema is asked for).
  static Result find(const std::string& path, const std::string& schemaName, SafcImmCtSchemaVersionT_2* from,
                     SafcImmCtSchemaVersionT_2* to, std::string* why);

  // Parses "V_R_C"; false when the text is not three unsigned numbers.
  static bool parseVersion(const std::string& text, SafcImmCtSchemaVersionT_2* version);

  SimImmVersions() = delete;
};

#endif
