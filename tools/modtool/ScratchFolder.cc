#include "ScratchFolder.h"

#include <stdlib.h>

#include <filesystem>

namespace modtool {

namespace {

// The system's temporary folder; /tmp when the environment names none that
// exists.
std::string temporaryFolder() {
  std::error_code error;
  std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  return error ? "/tmp" : folder.string();
}

}  // namespace

ScratchFolder::ScratchFolder() {
  std::string pattern = temporaryFolder() + "/vosk-modtool-XXXXXX";
  if (::mkdtemp(&pattern[0]) != nullptr) path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
  std::error_code error;
  if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

}  // namespace modtool
