#include "client/ModificationFileLookup.h"

#include <stdexcept>
#include <vector>

#include "common/Log.h"

namespace {

constexpr const char* kModificationFilesTag = "modification_files";

// A zero-terminated copy that the handler may write to; its storage goes
// with the vector, also when the handler throws.
std::vector<char> writableCopy(const std::string& text) {
  std::vector<char> copy(text.begin(), text.end());
  copy.push_back('\0');
  return copy;
}

}  // namespace

void getModificationFiles(Env& env, const std::string& boardType, std::vector<std::string>* files) {
  TAV_LOG(INFO, "Getting modification files using tag %s ", boardType.c_str());
  LmhiLms answer{};
  std::vector<char> boardTypeCopy = writableCopy(boardType);
  std::vector<char> tagCopy = writableCopy(kModificationFilesTag);
  int rc = env.lmhiGetLms(boardTypeCopy.data(), tagCopy.data(), &answer);
  if (rc != 0) {
    // The answer holds nothing to hand back after a failed call.
    TAV_LOG(INFO_ABN,
            "Could not get list of modification files from LMHI using tag %s, boardType %s, return code was %d",
            kModificationFilesTag, boardType.c_str(), rc);
    return;
  }
  for (uint32_t i = 0; i < answer.nLms; ++i) {
    const LmhiLoadModule& lm = answer.lms[i];
    for (uint32_t j = 0; j < lm.nFiles; ++j) {
      // A string cannot be built from a missing path: fail the way the
      // standard library does, without its undefined corner.
      if (lm.files[j].path == nullptr) throw std::logic_error("basic_string: construction from null is not valid");
      files->push_back(lm.files[j].path);
    }
  }
  env.lmhiFreeBuffers(&answer);
  TAV_LOG(INFO, "Found %d modification files through LMHI using tag %s", static_cast<int>(files->size()),
          boardType.c_str());
}
