// `vosk-modtool diff`: two IMM XML models compared object by object, a
// summary first, then every added, removed and changed object with its
// attribute-level changes.

#ifndef VOSK_TOOLS_MODTOOL_DIFF_COMMAND_H
#define VOSK_TOOLS_MODTOOL_DIFF_COMMAND_H

#include <ostream>
#include <string>

#include "ModelDiff.h"

namespace modtool {

class DiffCommand {
 public:
  static const char* usage();
  // 0 the models hold the same objects, 1 they differ, 2 could not run.
  static int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

  static std::string summary(const ModelDiff& diff);
  // One object's change: "+ dn (Class)", "- dn (Class)", "~ dn (Class)" or
  // "> old dn -> new dn (Class -> Class)", then its attributes, indented.
  static std::string changeText(const ObjectChange& change);
  static std::string changeJson(const ObjectChange& change);
  static std::string toText(const ModelDiff& diff);
  static std::string toJson(const ModelDiff& diff);
};

}  // namespace modtool

#endif
