#include "SimImmArena.h"

#include <cstring>

void* SimImmArena::allocate(size_t size) {
  const size_t alignment = alignof(std::max_align_t);
  size = (size + alignment - 1) / alignment * alignment;
  if (size > left_) {
    size_t blockSize = size > kBlockSize ? size : kBlockSize;
    blocks_.emplace_back(new char[blockSize]);
    next_ = blocks_.back().get();
    left_ = blockSize;
  }
  void* result = next_;
  next_ += size;
  left_ -= size;
  std::memset(result, 0, size);
  return result;
}

char* SimImmArena::copy(const std::string& text) {
  char* result = allocateArray<char>(text.size() + 1);
  std::memcpy(result, text.data(), text.size());
  return result;
}
