#include "Diagnostic.h"

#include "JsonText.h"

namespace modtool {

namespace {

const char* severityName(Diagnostic::Severity severity) {
  return severity == Diagnostic::Severity::kError ? "error" : "warning";
}

}  // namespace

std::string Diagnostic::toText() const {
  std::string place = file;
  if (line > 0) place += ":" + std::to_string(line);
  if (line > 0 && column > 0) place += ":" + std::to_string(column);
  return place + ": " + severityName(severity) + ": " + text;
}

std::string Diagnostic::toJson() const {
  return "{\"file\":" + JsonText::quote(file) + ",\"line\":" + std::to_string(line) +
         ",\"column\":" + std::to_string(column) + ",\"severity\":\"" + severityName(severity) +
         "\",\"text\":" + JsonText::quote(text) + "}";
}

std::string diagnosticsToJson(const Diagnostics& diagnostics) {
  std::vector<std::string> items;
  for (const Diagnostic& diagnostic : diagnostics) items.push_back(diagnostic.toJson());
  return JsonText::array(items);
}

bool hasErrors(const Diagnostics& diagnostics) {
  for (const Diagnostic& diagnostic : diagnostics) {
    if (diagnostic.severity == Diagnostic::Severity::kError) return true;
  }
  return false;
}

}  // namespace modtool
