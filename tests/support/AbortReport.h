// For death tests of deliberate aborts: proves that the process logged its
// reason before it aborted. Call reportOnAbort in the death test's
// statement, before the aborting call; match the child's standard error
// with kAbortedAfterLogging.
//
//   EXPECT_DEATH({ reportOnAbort("Unsupported type: X"); f("X"); }, kAbortedAfterLogging);

#ifndef VOSK_TESTS_SUPPORT_ABORT_REPORT_H
#define VOSK_TESTS_SUPPORT_ABORT_REPORT_H

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "LogRecorder.h"

constexpr const char kAbortedAfterLogging[] = "aborted after logging";

inline std::string& abortReportLine() {
  static std::string line;
  return line;
}

inline void reportOnAbort(const std::string& line) {
  abortReportLine() = line;
  std::signal(SIGABRT, [](int) {
    bool logged = LogRecorder::installed().contains(abortReportLine());
    std::fputs(logged ? "aborted after logging\n" : "aborted without logging\n", stderr);
    std::_Exit(1);
  });
}

#endif
