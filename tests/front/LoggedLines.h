// The persistent-log records of the current test as "ERROR: <text>" and
// "INFO: <text>" lines, so that a test can compare the whole log, order and
// severities included, with one expectation.

#ifndef VOSK_TESTS_FRONT_LOGGED_LINES_H
#define VOSK_TESTS_FRONT_LOGGED_LINES_H

#include <string>
#include <vector>

#include "LogRecorder.h"
#include "saLog.h"

inline std::vector<std::string> loggedLines() {
  std::vector<std::string> lines;
  for (const LoggedRecord& record : LogRecorder::installed().records()) {
    std::string severity = record.severity == SA_LOG_SEV_ERROR  ? "ERROR: "
                           : record.severity == SA_LOG_SEV_INFO ? "INFO: "
                                                                : "SEVERITY " + std::to_string(record.severity) + ": ";
    lines.push_back(severity + record.text);
  }
  return lines;
}

#endif
