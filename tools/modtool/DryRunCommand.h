// `vosk-modtool dry-run`: runs the real upgrader through the simulated
// upgrade wrapper on a scratch copy of a node (the node itself is never
// written) and reports the impact per schema and class; optionally compares
// a new model with an approved one and writes an HTML page of the report.

#ifndef VOSK_TOOLS_MODTOOL_DRY_RUN_COMMAND_H
#define VOSK_TOOLS_MODTOOL_DRY_RUN_COMMAND_H

#include <ostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ImpactReport.h"
#include "Progress.h"

namespace modtool {

class DryRunCommand {
 public:
  static const char* usage();
  // `selfPath`: this program, near which the upgrader is looked for;
  // `environment`: NAME=VALUE entries the upgrader inherits. 0 the upgrade
  // succeeds (and matches --expect), 1 it fails or differs, 2 could not run.
  static int run(int argc, const char* const* argv, const std::string& selfPath,
                 const std::vector<std::string>& environment, std::ostream& out, std::ostream& err);

 private:
  // Makes `scratch` an empty folder that holds a copy of `node`.
  static bool prepareScratch(const std::string& scratch, const std::string& node, std::string* why);
  static ImpactReport impactOf(const std::string& runFolder, const std::string& nodeCopy, const std::string& schema,
                               Progress* progress, std::string* why);
  // 0 equal, 1 different (the differences on `out`), 2 could not compare.
  static int compareWithExpected(const CommandLine& line, const std::string& runFolder, std::ostream& out,
                                 std::ostream& err);
};

}  // namespace modtool

#endif
