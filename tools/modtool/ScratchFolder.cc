#include "ScratchFolder.h"

#include <stdlib.h>

#include <filesystem>

namespace modtool {

ScratchFolder::ScratchFolder() {
  const char* base = ::getenv("TMPDIR");
  std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/vosk-modtool-XXXXXX";
  if (::mkdtemp(&pattern[0]) != nullptr) path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
  std::error_code error;
  if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

}  // namespace modtool
