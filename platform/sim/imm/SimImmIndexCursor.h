// A list of objects of one class in a SimImmSpool (one class of one file of
// the old model's index, or one written group), walked one at a time: each
// entry is the object's place (in its file, or in its group) and the object
// (SimImmObjectCodec), the entries in order in runs of the spool file, then
// the last ones in memory. The cursor loads one run at
// a time and decodes one object at a time into a reused object, so walking a
// class costs the memory of a run and an object, however large the class.

#ifndef VOSK_SIM_SIM_IMM_INDEX_CURSOR_H
#define VOSK_SIM_SIM_IMM_INDEX_CURSOR_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "SimImmObject.h"

class SimImmIndexCursor {
 public:
  using Run = std::pair<long, size_t>;  // offset in the spool, size

  // Appends the entry of `object`, the `place`th object of its file.
  static void append(uint32_t place, const SimImmObject& object, std::string* entries);

  // A cursor before the first entry of `runs` (read from the spool file
  // `spool`) and `pending`, for objects of `className`. The runs and the
  // pending entries must outlive the cursor and stay unchanged.
  SimImmIndexCursor(int spool, const std::vector<Run>& runs, const std::string& pending, const std::string& className);

  // Moves to the next object. False at the end, or when the spool cannot be
  // read: error() then says why.
  bool next();

  // The current object and its place in its file.
  const SimImmObject& object() const { return object_; }
  uint32_t place() const { return place_; }
  const std::string& error() const { return error_; }

 private:
  // Makes the next run (or the pending entries) the current entries.
  bool loadNext();
  const std::string& entries() const { return run_ <= runs_->size() ? loaded_ : *pending_; }

  const int spool_;
  const std::vector<Run>* runs_;
  const std::string* pending_;
  size_t run_ = 0;  // runs loaded so far; past the runs, the pending entries are current
  std::string loaded_;
  size_t pos_ = 0;
  uint32_t place_ = 0;
  SimImmObject object_;
  std::string error_;
};

#endif
