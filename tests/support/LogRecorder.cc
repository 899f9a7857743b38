#include "LogRecorder.h"

#include <algorithm>

LogRecorder& LogRecorder::installed() {
  static LogRecorder recorder;
  return recorder;
}

void LogRecorder::record(const SaLogRecordT* logRecord) {
  std::lock_guard<std::mutex> lock(mutex_);
  records_.push_back(
      {logRecord->logHeader.genericHdr.logSeverity,
       std::string(reinterpret_cast<const char*>(logRecord->logBuffer->logBuf), logRecord->logBuffer->logBufSize)});
}

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

size_t LogRecorder::count(const std::string& text) const {
  std::vector<std::string> all = texts();
  return static_cast<size_t>(std::count(all.begin(), all.end(), text));
}

bool LogRecorder::containsPart(const std::string& part) const {
  std::vector<std::string> all = texts();
  return std::any_of(all.begin(), all.end(), [&](const std::string& t) { return t.find(part) != std::string::npos; });
}
