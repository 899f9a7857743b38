#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace modtool {

Progress::Progress() : enabled_(::isatty(STDERR_FILENO) == 1) {}

void Progress::update(const std::string& what, long count, long total) {
  if (!enabled_) return;
  const auto now = std::chrono::steady_clock::now();
  if (shown_ && now - last_ < std::chrono::milliseconds(100)) return;
  last_ = now;
  shown_ = true;
  if (total > 0) {
    std::fprintf(stderr, "\r\033[K%s: %ld/%ld", what.c_str(), count, total);
  } else {
    std::fprintf(stderr, "\r\033[K%s: %ld", what.c_str(), count);
  }
  std::fflush(stderr);
}

void Progress::done() {
  if (!enabled_ || !shown_) return;
  std::fprintf(stderr, "\r\033[K");
  std::fflush(stderr);
  shown_ = false;
}

}  // namespace modtool
