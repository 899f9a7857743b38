// Finds the front's input files below the package root named by WPK_PATH:
//
// - the appdata file <root>/appdata/voskOamUpgradeModLm.xml;
// - for each schema, its IMM schema file: a file below <root>/share whose
//   path contains a directory "imm" directly followed by the schema name, an
//   underscore, anything, and ".xml". The schema the file belongs to is read
//   from its file name, up to the first "_imm".
//
// The share tree is walked in directory order, without sorting; when a schema
// has several IMM files, the one met last is used.

#ifndef VOSK_FRONT_FILES_MANAGER_H
#define VOSK_FRONT_FILES_MANAGER_H

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

#include "FilesManagerBase.h"
#include "env/Env.h"

namespace voskoamupgrader {

class FilesManager : public FilesManagerBase {
 public:
  // The package root is the value of `env`'s WPK_PATH, empty when it is
  // unset.
  explicit FilesManager(Env& env);
  explicit FilesManager(std::string wpkPath);

  AppResult findAppdataFiles() override;
  AppResult findSchemasImmFiles(const std::set<std::string>& schemaNames) override;

 private:
  // Appends to `found` the paths of the IMM files of `schemaNames` in the
  // tree below `directory`.
  // Folders already searched, by device and inode: a symbolic link back up
  // the tree is searched once, not until the path grows too long.
  using Folders = std::set<std::pair<dev_t, ino_t>>;
  static AppResult walkDirectory(const std::string& directory, std::vector<std::string>& found,
                                 const std::set<std::string>& schemaNames, Folders& walked);
  // Appends `path`, whose last component is `entryName`, to `found` when it
  // is an IMM file of one of `schemaNames`.
  static AppResult collectIfImmFile(const std::string& entryName, const std::string& path,
                                    std::vector<std::string>& found, const std::set<std::string>& schemaNames);
  // Maps the collected paths to schema names.
  AppResult mapImmFiles(const std::vector<std::string>& found, const std::set<std::string>& schemaNames);

  const std::string wpkPath_;
};

}  // namespace voskoamupgrader

#endif
