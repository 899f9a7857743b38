#include "SimImmArena.h"

#include <cstdint>
#include <cstring>

void* SimImmArena::allocate(size_t size, size_t alignment) {
  size_t padding = next_ == nullptr ? 0 : (alignment - reinterpret_cast<uintptr_t>(next_) % alignment) % alignment;
  if (next_ == nullptr || padding + size > left_) {
    // A new block is aligned for any scalar.
    size_t blockSize = size > kBlockSize ? size : kBlockSize;
    blocks_.emplace_back(new char[blockSize]);
    next_ = blocks_.back().get();
    left_ = blockSize;
    padding = 0;
  }
  void* result = next_ + padding;
  next_ += padding + size;
  left_ -= padding + size;
  std::memset(result, 0, size);
  return result;
}

void* SimImmArena::allocate(size_t size) {
  const size_t largest = alignof(std::max_align_t);
  const size_t divides = size & (~size + 1);
  return allocate(size, divides == 0 || divides > largest ? largest : divides);
}

char* SimImmArena::copy(const std::string& text) {
  char* result = allocateArray<char>(text.size() + 1);
  std::memcpy(result, text.data(), text.size());
  return result;
}
