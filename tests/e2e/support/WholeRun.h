// One whole run of the built upgrader through the built upgrade-wrapper-sim,
// on a package and node written by a NodeBuilder, and what it left behind:
// the wrapper's exit status and report, the rollback lines, the persistent
// log, and the model files of the node's output folder.
//
//   NodeBuilder node(dir.path());
//   node.add({...});
//   RunResult result = WholeRun(node).faults("Finalize@Transport=21").run();
//   EXPECT_EQ(1, result.exitStatus);

#ifndef VOSK_TESTS_E2E_WHOLE_RUN_H
#define VOSK_TESTS_E2E_WHOLE_RUN_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "NodeBuilder.h"

namespace e2e {

// An object of a model file: its dn, its class and attribute name -> values, in file order.
struct ModelObject {
  std::string dn;
  std::string className;
  std::map<std::string, std::vector<std::string>> attrs;
};
using ModelObjects = std::map<std::string, ModelObject>;  // by dn

struct RunResult {
  int exitStatus = -1;                      // the wrapper's; -1 or above 128 when a signal ended it
  std::string report;                       // the wrapper's standard output
  std::string errors;                       // standard error of the wrapper and the upgrader
  std::vector<std::string> rollback;        // lines of <out>/rollback
  std::vector<std::string> log;             // texts of the persistent-log records, oldest first
  std::vector<std::string> platformErrors;  // lines of <out>/platform-errors.log: refused platform calls
  std::string outPath;

  // True when some record's text equals `text`.
  bool logged(const std::string& text) const;
  // How many records' texts contain `part`.
  size_t loggedParts(const std::string& part) const;
  // The file names in <out>/model and <out>/discarded, in name order.
  std::vector<std::string> modelFiles() const;
  std::vector<std::string> discardedFiles() const;
  // The content of <out>/model/<schema>.xml; empty when absent.
  std::string model(const std::string& schema) const;
  // The objects of <out>/model/<schema>.xml by dn; empty when absent or not XML.
  ModelObjects objects(const std::string& schema) const;
  // The same in file order, an object given twice listed twice.
  std::vector<ModelObject> objectList(const std::string& schema) const;
  // The rollback lines as one text, one line each.
  std::string rollbackText() const;
};

// Where a run reads and writes: the package, the node, the node's output
// folder, and a folder for the wrapper's own output.
struct RunFolders {
  std::string package;
  std::string node;
  std::string out;
  std::string scratch;
};

class WholeRun {
 public:
  explicit WholeRun(const NodeBuilder& node);
  explicit WholeRun(RunFolders folders) : folders_(std::move(folders)) {}

  // VOSK_SIM_FAULTS of the upgrader.
  WholeRun& faults(const std::string& items);
  // NAME=VALUE sets, NAME alone removes a variable of the upgrader's environment.
  WholeRun& env(const std::string& setting);
  // The upgrader's arguments instead of the socket path (see --args).
  WholeRun& args(const std::string& arguments);
  RunResult run() const;

 private:
  RunFolders folders_;
  std::vector<std::string> options_;
};

}  // namespace e2e

#endif
