#include "client/LmhiWrapper.h"

#include <vector>

namespace {

// A zero-terminated copy that the handler may write to; its storage goes
// with the vector, also when the handler throws.
std::vector<char> writableCopy(const std::string& text) {
  std::vector<char> copy(text.begin(), text.end());
  copy.push_back('\0');
  return copy;
}

}  // namespace

LmhiWrapper::~LmhiWrapper() = default;

int LmhiWrapper::getLms(const std::string& boardType, const std::string& tag, LmhiLms* result) {
  std::vector<char> boardTypeCopy = writableCopy(boardType);
  std::vector<char> tagCopy = writableCopy(tag);
  return Lmhi_get_lms(boardTypeCopy.data(), tagCopy.data(), result);
}

void LmhiWrapper::freeBuffers(LmhiLms* result) { Lmhi_free_buffers(result); }
