#include "SimImmSpool.h"

SimImmSpool::~SimImmSpool() {
  if (file_ != nullptr) std::fclose(file_);
}

void SimImmSpool::append(uint32_t place, const SimImmObject& object, Entries* entries) {
  SimImmIndexCursor::append(place, object, &entries->pending);
  if (entries->pending.size() < kRunSize) return;
  std::lock_guard<std::mutex> lock(mutex_);
  if (file_ == nullptr && !unavailable_) {
    file_ = std::tmpfile();
    unavailable_ = file_ == nullptr;
  }
  if (file_ == nullptr) return;
  const long offset = std::ftell(file_);
  if (offset >= 0 &&
      std::fwrite(entries->pending.data(), 1, entries->pending.size(), file_) == entries->pending.size() &&
      std::fflush(file_) == 0) {
    entries->runs.emplace_back(offset, entries->pending.size());
    entries->pending.clear();
  }
}

SimImmIndexCursor SimImmSpool::cursor(const Entries& entries, const std::string& className) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return SimImmIndexCursor(file_ != nullptr ? fileno(file_) : -1, entries.runs, entries.pending, className);
}
