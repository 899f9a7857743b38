#include "common/SystemClock.h"

#include <unistd.h>

struct timespec SystemClock::monotonicNow() {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now;
}

unsigned int SystemClock::sleepSeconds(unsigned int seconds) { return ::sleep(seconds); }

SystemClock& SystemClock::instance() {
  static SystemClock clock;
  return clock;
}
