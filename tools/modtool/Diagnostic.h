// One finding of vosk-modtool about a file: where it is, how serious it is,
// and what to change. Printed in the style of a compiler
// ("file:line:col: error: text") so that editors and CI jump to the place.

#ifndef VOSK_TOOLS_MODTOOL_DIAGNOSTIC_H
#define VOSK_TOOLS_MODTOOL_DIAGNOSTIC_H

#include <string>
#include <vector>

namespace modtool {

struct Diagnostic {
  enum class Severity { kError, kWarning };

  std::string file;
  long line = 0;    // 0: the file as a whole
  long column = 0;  // 0: unknown
  Severity severity = Severity::kError;
  std::string text;

  // "file:line:col: error: text"; the place is cut short where it is unknown.
  std::string toText() const;
  // One JSON object with the fields file, line, column, severity, text.
  std::string toJson() const;
};

using Diagnostics = std::vector<Diagnostic>;

// A JSON array of the diagnostics.
std::string diagnosticsToJson(const Diagnostics& diagnostics);
bool hasErrors(const Diagnostics& diagnostics);

}  // namespace modtool

#endif
