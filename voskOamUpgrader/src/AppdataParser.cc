#include "AppdataParser.h"

#include <libxml/parser.h>

#include <cstring>

#include "FrontTrace.h"
#include "common/RegularFile.h"

namespace voskoamupgrader {

namespace {

constexpr const char* kLmlistElement = "lmlist";
constexpr const char* kSchemaNameAttribute = "boardType";

// A FIFO in place of the file would block the read for ever.
xmlDocPtr readWithDefaultOptions(const char* path) {
  return isRegularFile(path) ? xmlReadFile(path, nullptr, 0) : nullptr;
}

bool isNamed(const xmlChar* name, const char* expected) {
  return name != nullptr && std::strcmp(reinterpret_cast<const char*>(name), expected) == 0;
}

}  // namespace

AppdataParser::AppdataParser() : AppdataParser(readWithDefaultOptions) {}

AppdataParser::AppdataParser(DocumentReader reader) : reader_(reader) {}

AppResult AppdataParser::getSchemasNamesFromXml(const std::vector<std::string>& appdataFiles) {
  return readFiles(appdataFiles);
}

AppResult AppdataParser::readFiles(const std::vector<std::string>& appdataFiles) {
  for (const std::string& path : appdataFiles) {
    AppResult result = readFile(path);
    if (result != APP_RESULT_OK) {
      VOSK_LOG(ERROR, "readFiles", "Unable to detect schema name from modification file: %s", path.c_str());
      return result;
    }
  }
  return APP_RESULT_OK;
}

AppResult AppdataParser::readFile(const std::string& path) {
  xmlDocPtr document = reader_(path.c_str());
  if (document == nullptr) {
    VOSK_LOG(ERROR, "getSchemasNamesFromXml", "Error returned while reading xml file: %s", path.c_str());
    return APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE;
  }
  xmlNodePtr root = xmlDocGetRootElement(document);
  if (root == nullptr) {
    VOSK_LOG(ERROR, "getSchemasNamesFromXml", "Error returned while parsing xml file: %s", path.c_str());
    xmlFreeDoc(document);
    return APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE;
  }
  browseXmlTree(document, root);
  if (schemaNames().empty()) {
    VOSK_LOG(INFO, "getSchemasNamesFromXml", "No schema names found in the file %s", path.c_str());
  }
  xmlFreeDoc(document);
  return APP_RESULT_OK;
}

void AppdataParser::browseXmlTree(xmlDocPtr document, xmlNodePtr node) {
  for (; node != nullptr; node = node->next) {
    if (node->type != XML_ELEMENT_NODE || node->name == nullptr) continue;
    if (isNamed(node->name, kLmlistElement)) {
      addNamesOfLmlist(document, node);
    } else {
      browseXmlTree(document, node->children);
    }
  }
}

void AppdataParser::addNamesOfLmlist(xmlDocPtr document, xmlNodePtr lmlist) {
  for (xmlAttrPtr attribute = lmlist->properties; attribute != nullptr; attribute = attribute->next) {
    xmlChar* value = xmlNodeListGetString(document, attribute->children, 1);
    if (value == nullptr) continue;
    const char* name = reinterpret_cast<const char*>(value);
    // An empty value names no schema.
    if (*name != '\0' && isNamed(attribute->name, kSchemaNameAttribute) && !addSchemaName(name)) {
      VOSK_TRACE(INFO, "browseXmlTree", "Schema name %s is listed in upgrade appdata file more than once", name);
    }
    xmlFree(value);
  }
}

}  // namespace voskoamupgrader
