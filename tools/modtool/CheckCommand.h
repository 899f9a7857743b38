// `vosk-modtool check`: validates modification files with the upgrader's
// parser and, given class definitions, against the old and new models.

#ifndef VOSK_TOOLS_MODTOOL_CHECK_COMMAND_H
#define VOSK_TOOLS_MODTOOL_CHECK_COMMAND_H

#include <ostream>
#include <string>

#include "ClassCatalog.h"
#include "CommandLine.h"

namespace modtool {

class CheckCommand {
 public:
  static const char* usage();
  // 0 clean (warnings allowed), 1 errors found, 2 could not run.
  static int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

 private:
  static bool loadCatalog(const CommandLine& line, ClassCatalog* catalog, std::string* why);
};

}  // namespace modtool

#endif
