// The upgrader's persistent log: one application stream of the SA Forum Log
// service ("safLgStr=upgrade,safApp=safLogService") that survives the upgrade
// and is read afterwards.
//
// The process uses one instance, opened on first use over the Env that the
// program's main chose with chooseEnv(), or over the platform's when it chose
// none.
// When the log service
// cannot be used, every record goes to a tracepoint of the matching level
// instead, so writing never fails. After one failed write the stream is not
// written again for the rest of the process.
//
// write() may be called from any thread; close() only once the threads that
// write have ended.

#ifndef VOSK_COMMON_PERSISTENT_LOG_H
#define VOSK_COMMON_PERSISTENT_LOG_H

#include <atomic>
#include <string>

#include "env/Env.h"

class PersistentLog {
 public:
  static constexpr int kSeverityInfo = 0;
  static constexpr int kSeverityError = 1;
  static constexpr int kSeverityWarning = 2;

  // Chooses the Env of the process-wide log. A program's main calls it once,
  // before anything is logged; a second choice, or one after the log was
  // opened, could not take effect and aborts the process.
  static void chooseEnv(Env& env);

  // The process-wide log, opened on the first call.
  static PersistentLog& instance();

  // Opens the stream through `env`; `upgraderName` names the upgrader in the
  // messages about a failed opening.
  PersistentLog(Env& env, std::string upgraderName);
  ~PersistentLog();

  PersistentLog(const PersistentLog&) = delete;
  PersistentLog& operator=(const PersistentLog&) = delete;

  // severity: 0 information, 1 error, 2 warning. `file` and `line` name the
  // source place, for the tracepoint fallback.
  void write(int severity, const char* file, int line, const char* text);

  // Finalises the log service; harmless when repeated.
  void close();

 private:
  void open();
  void openStream();
  bool writeRecord(int severity, const char* file, int line, const char* text);
  void writeFailed(SaAisErrorT error, const char* file, int line);

  Env& env_;
  const std::string upgraderName_;
  SaLogHandleT logHandle_ = 0;
  SaLogStreamHandleT streamHandle_ = 0;
  std::atomic<bool> streamOpen_{false};
  std::atomic<bool> logInitialized_{false};
  std::atomic<bool> writingEnabled_{true};
};

#endif
