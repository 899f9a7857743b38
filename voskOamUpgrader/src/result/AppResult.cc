#include "AppResult.h"

#include <map>

namespace voskoamupgrader {

namespace {

const std::map<int, std::string>& decodingTable() {
  static const std::map<int, std::string> table = {
      {APP_RESULT_OK, "APP_RESULT_OK"},
      {APP_RESULT_NO_WPK_ROOT, "APP_RESULT_NO_WPK_ROOT"},
      {APP_RESULT_FAILED_TO_FIND_MODS, "APP_RESULT_FAILED_TO_FIND_MODS"},
      {APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, "APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"},
      {APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE, "APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE"},
      {APP_RESULT_FAILED_TO_FIND_IMM_FILE, "APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
      {APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME, "APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"},
  };
  return table;
}

}  // namespace

std::string appResultToString(AppResult result) {
  const std::map<int, std::string>& table = decodingTable();
  auto found = table.find(result);
  if (found != table.end()) return found->second;
  return "NOT_DECODED (" + std::to_string(static_cast<int>(result)) + ")";
}

}  // namespace voskoamupgrader
