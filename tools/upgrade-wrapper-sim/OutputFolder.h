// The folder the simulated node writes a run's results to ($VOSK_SIM_OUT):
// the persistent log with its rotated files, the rollback requests, the calls
// the node refused, and the new model files, kept or discarded.

#ifndef VOSK_TOOLS_OUTPUT_FOLDER_H
#define VOSK_TOOLS_OUTPUT_FOLDER_H

#include <string>
#include <vector>

namespace wrappersim {

class OutputFolder {
 public:
  explicit OutputFolder(const std::string& path) : path_(path) {}

  const std::string& path() const { return path_; }

  // Empties the folder for a new run, creating it (and its parents) when
  // missing, and marks it as a run's output. Refuses, with a reason, a folder
  // that contains `nodeRoot` or that is neither empty nor marked by an
  // earlier run, so a mistyped --out cannot wipe a node or a home directory.
  bool prepare(const std::string& nodeRoot, std::string* reason) const;

  std::string logDirectory() const;
  // The log's files, oldest first: upgrade.log.3 .. upgrade.log.1, upgrade.log;
  // only those that exist.
  std::vector<std::string> logFiles() const;
  // The whole persistent log, oldest record first.
  std::string readLog() const;

  // Every rollback request, one per line of the rollback file; empty lines
  // are left out.
  std::vector<std::string> rollbackReasons() const;
  bool rollbackRequested() const;

  // Every call the simulated node refused, with its reason, one per line of
  // platform-errors.log; empty lines are left out.
  std::vector<std::string> platformErrors() const;

  // The *.xml files of model/ and discarded/, in name order.
  std::vector<std::string> modelFiles() const;
  std::vector<std::string> discardedFiles() const;

  // The *.xml files directly in `folder`, in name order; none when absent.
  static std::vector<std::string> xmlFilesIn(const std::string& folder);

 private:
  std::vector<std::string> linesOf(const std::string& file) const;

  const std::string path_;
};

}  // namespace wrappersim

#endif
