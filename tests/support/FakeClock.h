#ifndef VOSK_TESTS_SUPPORT_FAKE_CLOCK_H
#define VOSK_TESTS_SUPPORT_FAKE_CLOCK_H

#include <deque>
#include <vector>

#include "common/ClockIf.h"

// Time moves only when a test says so; sleeps are recorded, not taken.
class FakeClock : public ClockIf {
 public:
  struct timespec monotonicNow() override { return now; }
  unsigned int sleepSeconds(unsigned int seconds) override {
    sleeps.push_back(seconds);
    if (interruptions.empty()) return 0;
    unsigned int left = interruptions.front();
    interruptions.pop_front();
    return left;
  }

  struct timespec now = {100, 0};
  std::vector<unsigned int> sleeps;
  // Seconds left reported by the next sleeps, as after a signal.
  std::deque<unsigned int> interruptions;
};

#endif
