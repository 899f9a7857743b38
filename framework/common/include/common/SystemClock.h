// The process's real monotonic clock and sleep.

#ifndef VOSK_COMMON_SYSTEM_CLOCK_H
#define VOSK_COMMON_SYSTEM_CLOCK_H

#include "common/ClockIf.h"

class SystemClock : public ClockIf {
 public:
  struct timespec monotonicNow() override;
  unsigned int sleepSeconds(unsigned int seconds) override;

  // One instance serves the whole process.
  static SystemClock& instance();
};

#endif
