// The dry run's report as one self-contained HTML page: no network, no
// files beside it. Per schema a table of its classes, sortable by a click on
// a column's heading, with a bar in each count cell scaled to the column's
// largest count, and the attribute changes, examples and data losses.

#ifndef VOSK_TOOLS_MODTOOL_HTML_PAGE_H
#define VOSK_TOOLS_MODTOOL_HTML_PAGE_H

#include <string>

#include "ImpactReport.h"

namespace modtool {

class HtmlPage {
 public:
  static std::string build(const ImpactReport& report);
  // False, with `why` set, when the file cannot be written.
  static bool write(const ImpactReport& report, const std::string& path, std::string* why);

  static std::string escape(const std::string& text);

 private:
  static std::string schemaSection(const SchemaImpact& schema, size_t index);
  static std::string classRow(const ClassImpact& impact, const std::vector<long>& largest);
};

}  // namespace modtool

#endif
