// Lists of objects (entries of SimImmIndexCursor) kept mostly on disk, so
// that a class of a million objects costs little memory while it waits to
// be used: full runs of about a megabyte go to an anonymous temporary file,
// made when the first run is full, and each list keeps only its last entries
// in memory. Without a temporary file everything stays in memory. Appending
// is safe from several threads, each with lists of its own.

#ifndef VOSK_SIM_SIM_IMM_SPOOL_H
#define VOSK_SIM_SIM_IMM_SPOOL_H

#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include "SimImmIndexCursor.h"
#include "SimImmObject.h"

class SimImmSpool {
 public:
  // One list: runs in the file, then the last entries in memory.
  struct Entries {
    std::vector<SimImmIndexCursor::Run> runs;
    std::string pending;
  };

  SimImmSpool() = default;
  ~SimImmSpool();
  SimImmSpool(const SimImmSpool&) = delete;
  SimImmSpool& operator=(const SimImmSpool&) = delete;

  // Appends the entry of `object`, the `place`th of its file, to `entries`.
  void append(uint32_t place, const SimImmObject& object, Entries* entries);

  // A cursor before the first entry of `entries`, for objects of
  // `className`; `entries` must outlive it and no longer change.
  SimImmIndexCursor cursor(const Entries& entries, const std::string& className) const;

 private:
  static constexpr size_t kRunSize = 1 << 20;

  mutable std::mutex mutex_;
  std::FILE* file_ = nullptr;
  bool unavailable_ = false;  // no temporary file could be made
};

#endif
