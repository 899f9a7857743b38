// `vosk-modtool plan`: the conversion path that the upgrader will take for
// one schema of a simulated node, from the node's own files.

#ifndef VOSK_TOOLS_MODTOOL_PLAN_COMMAND_H
#define VOSK_TOOLS_MODTOOL_PLAN_COMMAND_H

#include <ostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "PathPlan.h"

namespace modtool {

class PlanCommand {
 public:
  static const char* usage();
  // 0 a path exists (or none is needed), 1 none exists, 2 could not run.
  static int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

  // The schema's modification files, in order, as the upgrader asks the
  // node's load-module handler for them; none when it has none.
  static std::vector<std::string> modificationFiles(const std::string& node, const std::string& schema);
  static std::string toText(const std::string& schema, const PathPlan& plan, const std::string& node);
  static std::string toJson(const std::string& schema, const PathPlan& plan);

 private:
  static bool versions(const CommandLine& line, std::string* from, std::string* to, std::string* why);
};

}  // namespace modtool

#endif
