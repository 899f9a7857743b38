#include "SimImmIndexCursor.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "SimImmObjectCodec.h"

void SimImmIndexCursor::append(uint32_t place, const SimImmObject& object, std::string* entries) {
  entries->append(reinterpret_cast<const char*>(&place), sizeof place);
  SimImmObjectCodec::encode(object, entries);
}

SimImmIndexCursor::SimImmIndexCursor(int spool, const std::vector<Run>& runs, const std::string& pending,
                                     const std::string& className)
    : spool_(spool), runs_(&runs), pending_(&pending) {
  object_.className = className;
}

bool SimImmIndexCursor::next() {
  while (pos_ == entries().size()) {
    if (run_ > runs_->size() || !loadNext()) return false;
  }
  const std::string& in = entries();
  std::memcpy(&place_, in.data() + pos_, sizeof place_);
  pos_ += sizeof place_;
  SimImmObjectCodec::decodeNext(in, &pos_, &object_);
  return true;
}

bool SimImmIndexCursor::loadNext() {
  pos_ = 0;
  if (run_ == runs_->size()) {
    ++run_;
    loaded_ = std::string();
    return true;
  }
  const Run& run = (*runs_)[run_++];
  loaded_.resize(run.second);
  if (::pread(spool_, &loaded_[0], run.second, run.first) != static_cast<ssize_t>(run.second)) {
    error_ = std::string("cannot read the spool file: ") + std::strerror(errno);
    return false;
  }
  return true;
}
