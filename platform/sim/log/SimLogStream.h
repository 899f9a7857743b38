// One open stream of the simulated log service: a log file under
// <out>/log/<path name>/<file name>.log, written in the stream's record
// format and rotated when it would grow past its maximum size. The file is
// kept open between records, and each record is one write to it: a record
// is in the file when write returns, so a process that dies loses nothing
// it logged.

#ifndef VOSK_SIM_SIM_LOG_STREAM_H
#define VOSK_SIM_SIM_LOG_STREAM_H

#include <ctime>
#include <mutex>
#include <string>

#include "saLog.h"

class SimLogStream {
 public:
  SimLogStream(const std::string& directory, const SaLogFileCreateAttributesT_2& attributes);
  ~SimLogStream();

  SimLogStream(const SimLogStream&) = delete;
  SimLogStream& operator=(const SimLogStream&) = delete;

  // Appends one record; the file is written before this returns.
  SaAisErrorT write(const SaLogRecordT& record);

  // The record as the stream's format string lays it out, without its line
  // end, cut to the maximum record size.
  std::string formatRecord(unsigned long recordId, std::time_t now, SaLogSeverityT severity,
                           const std::string& text) const;

  const std::string& path() const { return path_; }

 private:
  // Opens the file for appending when it is not open; false when it cannot.
  bool openFile();
  void rotate();

  const std::string path_;
  const std::string format_;
  const SaUint64T maxFileSize_;
  const SaUint32T maxRecordSize_;
  const SaUint16T maxFilesRotated_;
  std::mutex mutex_;
  unsigned long nextRecordId_ = 1;
  int fd_ = -1;
  SaUint64T size_ = 0;  // of the open file
};

#endif
