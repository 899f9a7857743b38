// A log service for tests: every record written to the persistent log is
// kept in memory, so a test can check the messages a log reader would see.
// The test main installs one for the whole test program.

#ifndef VOSK_TESTS_SUPPORT_LOG_RECORDER_H
#define VOSK_TESTS_SUPPORT_LOG_RECORDER_H

#include <mutex>
#include <string>
#include <vector>

#include "common/SaLogWrapperIf.h"

struct LoggedRecord {
  SaLogSeverityT severity;
  std::string text;
};

class LogRecorder : public SaLogWrapperIf {
 public:
  // The recorder installed for this test program.
  static LogRecorder& installed();

  SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks, SaVersionT* version) override;
  SaAisErrorT streamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                         const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                         SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) override;
  SaAisErrorT writeLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                            SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) override;
  SaAisErrorT finalize(SaLogHandleT logHandle) override;

  void clear();
  std::vector<LoggedRecord> records() const;
  std::vector<std::string> texts() const;
  // True when some record's text equals `text` exactly.
  bool contains(const std::string& text) const;
  // How many records' texts equal `text` exactly.
  size_t count(const std::string& text) const;
  // True when some record's text contains `part`.
  bool containsPart(const std::string& part) const;

 private:
  mutable std::mutex mutex_;
  std::vector<LoggedRecord> records_;
};

#endif
