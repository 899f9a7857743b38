#include "VoskOamUpgraderApp.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include "FrontTrace.h"
#include "ListText.h"

namespace voskoamupgrader {

namespace {

// One record per schema, in schema-name order. The schema name is also the
// key of its modification files; the front uses no IMM namespace.
std::vector<SchemaData> schemasToUpgrade(const std::map<std::string, std::string>& schemaImmFiles) {
  std::vector<SchemaData> schemas;
  for (const auto& [name, path] : schemaImmFiles) schemas.push_back({name, path, name, ""});
  return schemas;
}

}  // namespace

AppResult runApp(int argc, char** argv, FilesManagerBase& filesManager, AppdataParserBase& appdataParser,
                 TavClientIfBase& client) {
  VOSK_TRACE(INFO, "runApp", "Entering vosk-oam-upgrader main()");

  AppResult result = filesManager.findAppdataFiles();
  if (result != APP_RESULT_OK) {
    VOSK_LOG(ERROR, "runApp", "Failed to find mods files, result : %s", appResultToString(result).c_str());
    return result;
  }
  VOSK_TRACE(INFO, "runApp", "Will parse the following YD appdata file to fetch list of schemas: %s",
             listToString(filesManager.appdataFiles()).c_str());

  result = appdataParser.getSchemasNamesFromXml(filesManager.appdataFiles());
  if (result != APP_RESULT_OK) {
    VOSK_LOG(ERROR, "runApp", "Failed to parse mods files result : %s", appResultToString(result).c_str());
    return result;
  }
  const std::set<std::string>& schemaNames = appdataParser.schemaNames();
  VOSK_LOG(INFO, "runApp", "Found %d schemas to be upgraded, schema list: %s", static_cast<int>(schemaNames.size()),
           listToString(schemaNames).c_str());

  result = filesManager.findSchemasImmFiles(schemaNames);
  if (result != APP_RESULT_OK) {
    VOSK_LOG(ERROR, "runApp", "Failed to find IMM file, result : %s", appResultToString(result).c_str());
    return result;
  }
  VOSK_TRACE(INFO, "runApp", "Starting TAV upgrade for %zu schemas included into target UP",
             filesManager.schemaImmFiles().size());

  std::vector<SchemaData> schemas = schemasToUpgrade(filesManager.schemaImmFiles());
  std::vector<UpgradeActionIf*> actions;
  VOSK_TRACE(INFO, "runApp", "Calling UpgradeClientIf::upgrade");
  client.upgrade(schemas, actions, argc, argv);
  VOSK_TRACE(INFO, "runApp", "Finished UpgradeClientIf::upgrade");
  return APP_RESULT_OK;
}

}  // namespace voskoamupgrader
