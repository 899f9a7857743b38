#include "SimLogStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace {

const char* severityText(SaLogSeverityT severity) {
  static const char* const kTexts[] = {"EM", "AL", "CR", "ER", "WA", "NO", "IN"};
  return severity <= SA_LOG_SEV_INFO ? kTexts[severity] : "IN";
}

std::string twoDigits(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%02d", value);
  return text;
}

std::string fileSuffix(int index) { return index == 0 ? "" : "." + std::to_string(index); }

}  // namespace

SimLogStream::SimLogStream(const std::string& directory, const SaLogFileCreateAttributesT_2& attributes)
    : path_(directory + "/" + attributes.logFileName + ".log"),
      format_(attributes.logFileFmt != nullptr ? attributes.logFileFmt : "@Cb"),
      maxFileSize_(attributes.maxLogFileSize),
      maxRecordSize_(attributes.maxLogRecordSize),
      maxFilesRotated_(attributes.maxFilesRotated) {}

SimLogStream::~SimLogStream() {
  if (fd_ >= 0) ::close(fd_);
}

std::string SimLogStream::formatRecord(unsigned long recordId, std::time_t now, SaLogSeverityT severity,
                                       const std::string& text) const {
  struct tm t;
  localtime_r(&now, &t);
  std::string out;
  for (size_t i = 0; i < format_.size(); ++i) {
    if (format_[i] != '@' || i + 2 >= format_.size()) {
      out += format_[i];
      continue;
    }
    std::string token = format_.substr(i + 1, 2);
    char number[32];
    if (token == "CY") {
      out += std::to_string(t.tm_year + 1900);
    } else if (token == "Cm") {
      out += twoDigits(t.tm_mon + 1);
    } else if (token == "Cd") {
      out += twoDigits(t.tm_mday);
    } else if (token == "Ch") {
      out += twoDigits(t.tm_hour);
    } else if (token == "Cn") {
      out += twoDigits(t.tm_min);
    } else if (token == "Cs") {
      out += twoDigits(t.tm_sec);
    } else if (token == "Cr") {
      std::snprintf(number, sizeof number, "%010lu", recordId);
      out += number;
    } else if (token == "Sv") {
      out += severityText(severity);
    } else if (token == "Cb") {
      out += text;
    } else {
      out += format_[i];
      continue;
    }
    i += 2;
  }
  // The record size counts the line end.
  if (maxRecordSize_ > 0 && out.size() + 1 > maxRecordSize_) out.resize(maxRecordSize_ - 1);
  return out;
}

SaAisErrorT SimLogStream::write(const SaLogRecordT& record) {
  if (record.logBuffer == nullptr || (record.logBuffer->logBuf == nullptr && record.logBuffer->logBufSize > 0)) {
    return SA_AIS_ERR_INVALID_PARAM;
  }
  std::string text(reinterpret_cast<const char*>(record.logBuffer->logBuf), record.logBuffer->logBufSize);
  SaLogSeverityT severity = record.logHdrType == SA_LOG_GENERIC_HEADER ? record.logHeader.genericHdr.logSeverity
                                                                       : static_cast<SaLogSeverityT>(SA_LOG_SEV_INFO);

  std::lock_guard<std::mutex> lock(mutex_);
  std::string line = formatRecord(nextRecordId_++, std::time(nullptr), severity, text) + "\n";
  if (!openFile()) return SA_AIS_ERR_NO_RESOURCES;
  if (maxFileSize_ > 0 && size_ + line.size() > maxFileSize_) {
    rotate();
    if (!openFile()) return SA_AIS_ERR_NO_RESOURCES;
  }
  ssize_t written = ::write(fd_, line.data(), line.size());
  if (written > 0) size_ += static_cast<SaUint64T>(written);
  return written == static_cast<ssize_t>(line.size()) ? SA_AIS_OK : SA_AIS_ERR_NO_RESOURCES;
}

bool SimLogStream::openFile() {
  if (fd_ >= 0) return true;
  fd_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (fd_ < 0) return false;
  struct stat st;
  size_ = ::fstat(fd_, &st) == 0 ? static_cast<SaUint64T>(st.st_size) : 0;
  return true;
}

// upgrade.log becomes upgrade.log.1, .1 becomes .2, and so on; the file past
// the last kept one is removed.
void SimLogStream::rotate() {
  ::close(fd_);
  fd_ = -1;
  if (maxFilesRotated_ == 0) {
    ::unlink(path_.c_str());
    return;
  }
  ::unlink((path_ + fileSuffix(maxFilesRotated_)).c_str());
  for (int i = maxFilesRotated_ - 1; i >= 0; --i) {
    ::rename((path_ + fileSuffix(i)).c_str(), (path_ + fileSuffix(i + 1)).c_str());
  }
}
