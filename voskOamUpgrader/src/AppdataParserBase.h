// Reads the names of the schemas to upgrade from appdata files. The base
// exists so that the run sequence can be given another implementation; it
// holds the names collected so far (ordered, without duplicates), which
// accumulate over calls.

#ifndef VOSK_FRONT_APPDATA_PARSER_BASE_H
#define VOSK_FRONT_APPDATA_PARSER_BASE_H

#include <set>
#include <string>
#include <vector>

#include "AppResult.h"

namespace voskoamupgrader {

class AppdataParserBase {
 public:
  AppdataParserBase() = default;
  AppdataParserBase(const AppdataParserBase&) = delete;
  AppdataParserBase& operator=(const AppdataParserBase&) = delete;
  virtual ~AppdataParserBase() = default;

  // Reads the files in list order and adds their schema names to
  // schemaNames(); stops at the first file that cannot be read.
  virtual AppResult getSchemasNamesFromXml(const std::vector<std::string>& appdataFiles) = 0;

  const std::set<std::string>& schemaNames() const { return schemaNames_; }

 protected:
  // False when the name was already there.
  bool addSchemaName(const std::string& name) { return schemaNames_.insert(name).second; }

 private:
  std::set<std::string> schemaNames_;
};

}  // namespace voskoamupgrader

#endif
