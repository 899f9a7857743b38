// The monotonic clock and the sleeps the framework takes, behind an
// interface so that tests run without waiting.

#ifndef VOSK_COMMON_CLOCK_IF_H
#define VOSK_COMMON_CLOCK_IF_H

#include <ctime>

class ClockIf {
 public:
  virtual ~ClockIf() = default;

  virtual struct timespec monotonicNow() = 0;
  // Sleeps like sleep(3): returns the seconds left when a signal ended the
  // sleep early, else 0.
  virtual unsigned int sleepSeconds(unsigned int seconds) = 0;

  // Whole milliseconds from `start` to `end`: the seconds and nanoseconds
  // differences are combined in floating point and truncated.
  static int millisecondsBetween(const struct timespec& start, const struct timespec& end) {
    double ms = static_cast<double>(end.tv_sec - start.tv_sec) * 1000.0 +
                static_cast<double>(end.tv_nsec - start.tv_nsec) / 1000000.0;
    return static_cast<int>(ms);
  }
};

#endif
