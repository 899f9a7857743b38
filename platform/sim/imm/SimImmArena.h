// Storage for the records that one read of the simulated conversion tool
// hands out: many small allocations that all live until the records are
// freed together. Memory comes in large blocks, so building a class of many
// objects costs few heap calls, and everything goes at once with the arena.

#ifndef VOSK_SIM_SIM_IMM_ARENA_H
#define VOSK_SIM_SIM_IMM_ARENA_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class SimImmArena {
 public:
  SimImmArena() = default;
  SimImmArena(const SimImmArena&) = delete;
  SimImmArena& operator=(const SimImmArena&) = delete;

  // `size` zeroed bytes aligned to `alignment` (a power of two, at most
  // that of any scalar); valid as long as the arena. Records are packed as
  // tightly as their types allow.
  void* allocate(size_t size, size_t alignment);
  // `size` zeroed bytes aligned as a value of that size needs: to the
  // largest power of two that divides it, at most that of any scalar.
  void* allocate(size_t size);

  // A zeroed array of `count` elements of T.
  template <typename T>
  T* allocateArray(size_t count) {
    return static_cast<T*>(allocate(sizeof(T) * count, alignof(T)));
  }

  // A NUL-terminated copy of `text`.
  char* copy(const std::string& text);

 private:
  static constexpr size_t kBlockSize = 256 * 1024;

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  size_t left_ = 0;
};

#endif
