#include "LogRecorder.h"

#include "common/PersistentLog.h"

LogRecorder& LogRecorder::installed() {
  static LogRecorder recorder;
  return recorder;
}

SaAisErrorT LogRecorder::initialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) {
  *logHandle = 1;
  return SA_AIS_OK;
}

SaAisErrorT LogRecorder::streamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*,
                                    SaLogStreamOpenFlagsT, SaTimeT, SaLogStreamHandleT* logStreamHandle) {
  *logStreamHandle = 2;
  return SA_AIS_OK;
}

SaAisErrorT LogRecorder::writeLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT,
                                       const SaLogRecordT* logRecord) {
  std::lock_guard<std::mutex> lock(mutex_);
  records_.push_back({logRecord->logHeader.genericHdr.logSeverity,
                      std::string(reinterpret_cast<const char*>(logRecord->logBuffer->logBuf),
                                  logRecord->logBuffer->logBufSize)});
  return SA_AIS_OK;
}

SaAisErrorT LogRecorder::finalize(SaLogHandleT) { return SA_AIS_OK; }

void LogRecorder::clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  records_.clear();
}

std::vector<LoggedRecord> LogRecorder::records() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return records_;
}

std::vector<std::string> LogRecorder::texts() const {
  std::vector<std::string> texts;
  for (const LoggedRecord& r : records()) texts.push_back(r.text);
  return texts;
}

bool LogRecorder::contains(const std::string& text) const { return count(text) > 0; }

size_t LogRecorder::count(const std::string& text) const {
  size_t n = 0;
  for (const LoggedRecord& r : records()) n += r.text == text ? 1 : 0;
  return n;
}

bool LogRecorder::containsPart(const std::string& part) const {
  for (const LoggedRecord& r : records()) {
    if (r.text.find(part) != std::string::npos) return true;
  }
  return false;
}
