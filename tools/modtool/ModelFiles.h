// Where vosk-modtool finds IMM XML models: the old model of a node (its
// imm/old folder) or a folder of dumps, in the order the simulated node
// reads them (by name).

#ifndef VOSK_TOOLS_MODTOOL_MODEL_FILES_H
#define VOSK_TOOLS_MODTOOL_MODEL_FILES_H

#include <string>
#include <vector>

namespace modtool {

class ModelFiles {
 public:
  // The *.xml files of `folder`, or of `folder`/imm/old when it is a node.
  // False, with `why` set, when there is no such folder or it has none.
  static bool oldModel(const std::string& folder, std::vector<std::string>* files, std::string* why);

  ModelFiles() = delete;
};

}  // namespace modtool

#endif
