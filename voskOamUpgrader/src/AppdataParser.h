// Reads the schema names from appdata files. An appdata file is XML of any
// element structure; every element named "lmlist", at any depth, names one
// schema in its "boardType" attribute. Elements inside an "lmlist" are not
// searched. A name listed twice is kept once and is not an error.

#ifndef VOSK_FRONT_APPDATA_PARSER_H
#define VOSK_FRONT_APPDATA_PARSER_H

#include <libxml/tree.h>

#include <string>
#include <vector>

#include "AppdataParserBase.h"

namespace voskoamupgrader {

class AppdataParser : public AppdataParserBase {
 public:
  // Reads and parses a file into a document, null when that fails.
  using DocumentReader = xmlDocPtr (*)(const char* path);

  // Files are read with the XML library's default options.
  AppdataParser();
  // Files are read by `reader`; tests use it to present documents the library
  // does not produce from a file.
  explicit AppdataParser(DocumentReader reader);

  AppResult getSchemasNamesFromXml(const std::vector<std::string>& appdataFiles) override;

 private:
  AppResult readFiles(const std::vector<std::string>& appdataFiles);
  AppResult readFile(const std::string& path);
  // Collects the names below `node` and its following siblings.
  void browseXmlTree(xmlDocPtr document, xmlNodePtr node);
  void addNamesOfLmlist(xmlDocPtr document, xmlNodePtr lmlist);

  const DocumentReader reader_;
};

}  // namespace voskoamupgrader

#endif
