// A fresh folder below the system's temporary folder ($TMPDIR or /tmp) for
// what the simulated node writes while the tool runs, removed with all its
// content when the object goes.

#ifndef VOSK_TOOLS_MODTOOL_SCRATCH_FOLDER_H
#define VOSK_TOOLS_MODTOOL_SCRATCH_FOLDER_H

#include <string>

namespace modtool {

class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Empty when no folder could be made.
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace modtool

#endif
