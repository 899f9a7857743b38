// Finds the front's input files below the package root: the appdata file that
// lists the schemas, and each schema's IMM schema file. The base exists so
// that the run sequence can be given another implementation; it holds what
// was found, which the run sequence reads after each successful call.

#ifndef VOSK_FRONT_FILES_MANAGER_BASE_H
#define VOSK_FRONT_FILES_MANAGER_BASE_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "AppResult.h"

namespace voskoamupgrader {

class FilesManagerBase {
 public:
  FilesManagerBase() = default;
  FilesManagerBase(const FilesManagerBase&) = delete;
  FilesManagerBase& operator=(const FilesManagerBase&) = delete;
  virtual ~FilesManagerBase() = default;

  // Adds the package's appdata file to appdataFiles().
  virtual AppResult findAppdataFiles() = 0;

  // Maps each of `schemaNames` to its IMM schema file in schemaImmFiles();
  // fails when some schema has none.
  virtual AppResult findSchemasImmFiles(const std::set<std::string>& schemaNames) = 0;

  // The appdata files found, in the order found.
  const std::vector<std::string>& appdataFiles() const { return appdataFiles_; }

  // Schema name -> full path of its IMM schema file, ordered by schema name.
  const std::map<std::string, std::string>& schemaImmFiles() const { return schemaImmFiles_; }

 protected:
  void addAppdataFile(const std::string& path) { appdataFiles_.push_back(path); }
  // A later path for the same schema replaces the earlier one.
  void setSchemaImmFile(const std::string& schemaName, const std::string& path) {
    schemaImmFiles_[schemaName] = path;
  }

 private:
  std::vector<std::string> appdataFiles_;
  std::map<std::string, std::string> schemaImmFiles_;
};

}  // namespace voskoamupgrader

#endif
