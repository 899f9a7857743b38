#include "FilesManager.h"

#include <dirent.h>
#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>

#include "FrontTrace.h"
#include "ListText.h"

namespace voskoamupgrader {

namespace {

constexpr const char* kAppdataFile = "/appdata/voskOamUpgradeModLm.xml";
constexpr const char* kShareFolder = "/share";
constexpr const char* kImmDirectoryRegex = "[\\/]imm[\\/]";
constexpr const char* kImmFileRegex = "[_].*[.]xml";
constexpr const char* kSchemaNameMarker = "_imm";

enum class MatchResult { kMatch, kNoMatch, kFailed };

// Matches `subject` against the POSIX basic regular expression `pattern`.
MatchResult regexMatch(const std::string& pattern, const std::string& subject) {
  regex_t regex;
  int rc = regcomp(&regex, pattern.c_str(), REG_NOSUB);
  if (rc != 0) {
    VOSK_LOG(ERROR, "regexMatch", "Regular expression compilation failed with error: %d", rc);
    return MatchResult::kFailed;
  }
  rc = regexec(&regex, subject.c_str(), 0, nullptr, 0);
  regfree(&regex);
  if (rc == 0) return MatchResult::kMatch;
  return rc == REG_NOMATCH ? MatchResult::kNoMatch : MatchResult::kFailed;
}

bool isDotOrDotDot(const char* name) { return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0; }

}  // namespace

FilesManager::FilesManager(Env& env) : FilesManager(env.variable("WPK_PATH").value_or("")) {}

FilesManager::FilesManager(std::string wpkPath) : wpkPath_(std::move(wpkPath)) {}

AppResult FilesManager::findAppdataFiles() {
  if (wpkPath_.empty()) {
    VOSK_LOG(ERROR, "findAppdataFiles", "Unable to get WPK_PATH environment variable.");
    return APP_RESULT_NO_WPK_ROOT;
  }
  std::string path = wpkPath_ + kAppdataFile;
  if (access(path.c_str(), F_OK) == 0) {
    addAppdataFile(path);
    return APP_RESULT_OK;
  }
  VOSK_LOG(ERROR, "findAppdataFiles", "Unable to find mods file: %s", path.c_str());
  return APP_RESULT_FAILED_TO_FIND_MODS;
}

AppResult FilesManager::findSchemasImmFiles(const std::set<std::string>& schemaNames) {
  if (wpkPath_.empty()) return APP_RESULT_NO_WPK_ROOT;
  if (!schemaNames.empty()) {
    std::vector<std::string> found;
    Folders walked;
    AppResult result = walkDirectory(wpkPath_ + kShareFolder, found, schemaNames, walked);
    if (result != APP_RESULT_OK) {
      VOSK_LOG(ERROR, "findSchemasImmFiles", "Execution of find schemas failed, result = %s",
               appResultToString(result).c_str());
      return result;
    }
    result = mapImmFiles(found, schemaNames);
    if (result != APP_RESULT_OK) return result;
  }
  std::vector<std::string> missing;
  for (const std::string& name : schemaNames) {
    if (schemaImmFiles().count(name) == 0) missing.push_back(name);
  }
  if (!missing.empty()) {
    VOSK_LOG(ERROR, "findSchemasImmFiles", "Ignored schemas due to missed imm files: %s",
             listToString(missing).c_str());
    return APP_RESULT_FAILED_TO_FIND_IMM_FILE;
  }
  return APP_RESULT_OK;
}

AppResult FilesManager::mapImmFiles(const std::vector<std::string>& found, const std::set<std::string>& schemaNames) {
  std::map<std::string, std::vector<std::string>> filesOf;
  for (const std::string& path : found) {
    size_t slash = path.rfind('/');
    size_t marker = slash == std::string::npos ? std::string::npos : path.find(kSchemaNameMarker, slash);
    if (marker == std::string::npos) {
      VOSK_LOG(ERROR, "findSchemasImmFiles",
               "Unable to detect schema name when parsing find command output, expected path pattern: "
               "*<SchemaName>_*.xml, found line: %s",
               path.c_str());
      return APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME;
    }
    std::string name = path.substr(slash + 1, marker - slash - 1);
    if (schemaNames.count(name) == 0) {
      VOSK_TRACE(INFO, "findSchemasImmFiles", "Schema name %s is detected, in the line %s, but ignored",
                 name.c_str(), path.c_str());
      continue;
    }
    setSchemaImmFile(name, path);
    filesOf[name].push_back(path);
  }
  // Which of several files holds the schema's classes cannot be told: taking
  // the wrong one would drop every class it lacks from the new model.
  for (const auto& [name, paths] : filesOf) {
    if (paths.size() == 1) continue;
    VOSK_LOG(ERROR, "findSchemasImmFiles", "Schema %s has more than one IMM file, keep one of: %s", name.c_str(),
             listToString(paths).c_str());
    return APP_RESULT_FAILED_TO_FIND_IMM_FILE;
  }
  return APP_RESULT_OK;
}

AppResult FilesManager::walkDirectory(const std::string& directory, std::vector<std::string>& found,
                                      const std::set<std::string>& schemaNames, Folders& walked) {
  struct stat self;
  if (stat(directory.c_str(), &self) == 0 && !walked.insert({self.st_dev, self.st_ino}).second) {
    VOSK_LOG(INFO, "findSchemasImmFiles", "%s is a folder searched already (a symbolic link): skipped",
             directory.c_str());
    return APP_RESULT_OK;
  }
  DIR* dir = opendir(directory.c_str());
  if (dir == nullptr) return APP_RESULT_FAILED_TO_FIND_IMM_FILE;
  AppResult result = APP_RESULT_OK;
  while (result == APP_RESULT_OK) {
    const dirent* entry = readdir(dir);
    if (entry == nullptr) break;
    if (isDotOrDotDot(entry->d_name)) continue;
    std::string path = directory + "/" + entry->d_name;
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
      VOSK_LOG(ERROR, "findSchemasImmFiles", "Cannot read %s: %s", path.c_str(), std::strerror(errno));
      result = APP_RESULT_FAILED_TO_FIND_IMM_FILE;
    } else if (S_ISDIR(status.st_mode)) {
      result = walkDirectory(path, found, schemaNames, walked);
    } else {
      result = collectIfImmFile(entry->d_name, path, found, schemaNames);
    }
  }
  closedir(dir);
  return result;
}

AppResult FilesManager::collectIfImmFile(const std::string& entryName, const std::string& path,
                                         std::vector<std::string>& found, const std::set<std::string>& schemaNames) {
  for (const std::string& name : schemaNames) {
    if (entryName.find(name) == std::string::npos) continue;
    switch (regexMatch(kImmDirectoryRegex + name + kImmFileRegex, path)) {
      case MatchResult::kMatch:
        found.push_back(path);
        return APP_RESULT_OK;
      case MatchResult::kNoMatch:
        break;
      case MatchResult::kFailed:
        return APP_RESULT_FAILED_TO_FIND_IMM_FILE;
    }
  }
  return APP_RESULT_OK;
}

}  // namespace voskoamupgrader
