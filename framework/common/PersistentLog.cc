#include "common/PersistentLog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "common/MessageFormatter.h"
#include "common/Trace.h"
#include "env/PlatformEnv.h"

namespace {

constexpr const char* kStreamName = "safLgStr=%s,safApp=safLogService";
constexpr const char* kStreamUser = "upgrade";
constexpr const char* kFileFormat = "[@CY-@Cm-@Cd @Ch:@Cn:@Cs] @Cr @Sv @Cb";
constexpr SaUint64T kMaxFileSize = 2000000;
constexpr SaUint32T kMaxRecordSize = 512;
constexpr SaUint16T kRotatedFiles = 3;

// The Env of the process-wide log; set once, before the log is first used.
Env* g_processEnv = nullptr;

Env& processEnv() {
  if (g_processEnv == nullptr) g_processEnv = &PlatformEnv::instance();
  return *g_processEnv;
}

SaLogSeverityT logSeverity(int severity) {
  switch (severity) {
    case PersistentLog::kSeverityError:
      return SA_LOG_SEV_ERROR;
    case PersistentLog::kSeverityWarning:
      return SA_LOG_SEV_WARNING;
    default:
      return SA_LOG_SEV_INFO;
  }
}

// A failed write reports itself through a nested write. One level is enough
// to get the report out; deeper nesting could only repeat the same failure.
thread_local bool t_inNestedWrite = false;

}  // namespace

void PersistentLog::chooseEnv(Env& env) {
  if (g_processEnv != nullptr) {
    std::fprintf(stderr, "The persistent log's Env is chosen already\n");
    std::abort();
  }
  g_processEnv = &env;
}

PersistentLog& PersistentLog::instance() {
  static PersistentLog log(processEnv(), processEnv().variable("WMT_NAME").value_or("(null)"));
  return log;
}

PersistentLog::PersistentLog(Env& env, std::string upgraderName) : env_(env), upgraderName_(std::move(upgraderName)) {
  open();
}

PersistentLog::~PersistentLog() { close(); }

void PersistentLog::open() {
  SaVersionT version = {'A', 2, 1};
  SaAisErrorT rc = env_.logInitialize(&logHandle_, nullptr, &version);
  if (rc != SA_AIS_OK) {
    TAV_TRACE(ERROR, "Failed to initialize the log by upgrader %s, retCode = %d", upgraderName_.c_str(), rc);
    return;
  }
  logInitialized_ = true;
  openStream();
}

void PersistentLog::openStream() {
  SaNameT streamName;
  std::memset(&streamName, 0, sizeof streamName);
  int n = std::snprintf(reinterpret_cast<char*>(streamName.value), SA_MAX_NAME_LENGTH, kStreamName, kStreamUser);
  streamName.length = static_cast<SaUint16T>(n < SA_MAX_NAME_LENGTH ? n : SA_MAX_NAME_LENGTH - 1);

  SaLogFileCreateAttributesT_2 attributes;
  attributes.logFileName = const_cast<char*>("upgrade");
  attributes.logFilePathName = const_cast<char*>("saLogUpgrade");
  attributes.maxLogFileSize = kMaxFileSize;
  attributes.maxLogRecordSize = kMaxRecordSize;
  attributes.haProperty = SA_TRUE;
  attributes.logFileFullAction = SA_LOG_FILE_FULL_ACTION_ROTATE;
  attributes.maxFilesRotated = kRotatedFiles;
  attributes.logFileFmt = const_cast<char*>(kFileFormat);

  SaAisErrorT rc = env_.logStreamOpen(logHandle_, &streamName, &attributes, SA_LOG_STREAM_CREATE, SA_TIME_ONE_SECOND,
                                      &streamHandle_);
  if (rc != SA_AIS_OK) {
    TAV_TRACE(ERROR, "Failed to initialize the stream by upgrader %s, retCode = %d", upgraderName_.c_str(), rc);
    return;
  }
  streamOpen_ = true;
}

void PersistentLog::write(int severity, const char* file, int line, const char* text) {
  if (streamOpen_ && logInitialized_ && writingEnabled_) {
    if (writeRecord(severity, file, line, text)) return;
  }
  switch (severity) {
    case kSeverityError:
      TAV_TRACE_TEXT(ERROR, file, line, text);
      break;
    case kSeverityWarning:
      TAV_TRACE_TEXT(INFO_ABN, file, line, text);
      break;
    case kSeverityInfo:
      TAV_TRACE_TEXT(INFO, file, line, text);
      break;
    default:
      TAV_TRACE_TEXT(INFO, file, line, text);
      write(kSeverityInfo, file, line, text);
      break;
  }
}

// Returns false when the text still has to go somewhere.
bool PersistentLog::writeRecord(int severity, const char* file, int line, const char* text) {
  SaNameT user;
  std::memset(&user, 0, sizeof user);
  SaLogBufferT buffer;
  buffer.logBufSize = std::strlen(text);
  buffer.logBuf = reinterpret_cast<SaUint8T*>(const_cast<char*>(text));
  SaLogRecordT record;
  std::memset(&record, 0, sizeof record);
  record.logTimeStamp = SA_TIME_UNKNOWN;
  record.logHdrType = SA_LOG_GENERIC_HEADER;
  record.logHeader.genericHdr.notificationClassId = nullptr;
  record.logHeader.genericHdr.logSvcUsrName = &user;
  record.logHeader.genericHdr.logSeverity = logSeverity(severity);
  record.logBuffer = &buffer;

  SaAisErrorT rc = env_.logWriteLogAsync(streamHandle_, 0, 0, &record);
  if (rc == SA_AIS_OK) return true;
  if (t_inNestedWrite) {
    writingEnabled_ = false;
    return false;
  }
  writeFailed(rc, file, line);
  return true;
}

void PersistentLog::writeFailed(SaAisErrorT error, const char* file, int line) {
  const char* report = MessageFormatter::format("Failed to write to the stream, error = %d", error);
  TAV_TRACE_TEXT(ERROR, file, line, report);
  t_inNestedWrite = true;
  write(kSeverityError, file, line, report);
  t_inNestedWrite = false;
  writingEnabled_ = false;
}

void PersistentLog::close() {
  streamOpen_ = false;
  if (logInitialized_) {
    if (env_.logFinalize(logHandle_) != SA_AIS_OK) {
      TAV_TRACE(INFO_ABN, "Failed to close the log");
      write(kSeverityInfo, TAV_SOURCE_FILE, __LINE__, "Failed to close the log");
    }
  }
  logInitialized_ = false;
}
