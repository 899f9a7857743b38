// The log service of the test program's node: every record a MockEnv writes
// to the log is kept in memory, so a test can check the messages a log
// reader would see. The test main clears it before each test.

#ifndef VOSK_TESTS_SUPPORT_LOG_RECORDER_H
#define VOSK_TESTS_SUPPORT_LOG_RECORDER_H

#include <mutex>
#include <string>
#include <vector>

#include "env/Env.h"

struct LoggedRecord {
  SaLogSeverityT severity;
  std::string text;
};

class LogRecorder {
 public:
  // The recorder of this test program.
  static LogRecorder& installed();

  void record(const SaLogRecordT* logRecord);
  void clear();
  std::vector<LoggedRecord> records() const;
  std::vector<std::string> texts() const;
  // True when some record's text equals `text` exactly.
  bool contains(const std::string& text) const { return count(text) > 0; }
  // How many records' texts equal `text` exactly.
  size_t count(const std::string& text) const;
  // True when some record's text contains `part`.
  bool containsPart(const std::string& part) const;

 private:
  mutable std::mutex mutex_;
  std::vector<LoggedRecord> records_;
};

#endif
