// The framework's logging macro: a message goes to the trace event and to
// the persistent log.
//
//   TAV_LOG(EVENT, fmt, ...)   formats once into this thread's message buffer,
//                              fires EVENT when it is enabled, and always writes
//                              the text to the persistent log, with severity 1
//                              for ERROR and 0 for TRACE1, INFO and INFO_ABN.
//   TAV_LOG_ONLY(severity, fmt, ...)
//                              writes to the persistent log only.

#ifndef VOSK_COMMON_LOG_H
#define VOSK_COMMON_LOG_H

#include "common/PersistentLog.h"
#include "common/Trace.h"

#define TAV_LOG_SEVERITY_TRACE1 PersistentLog::kSeverityInfo
#define TAV_LOG_SEVERITY_INFO PersistentLog::kSeverityInfo
#define TAV_LOG_SEVERITY_INFO_ABN PersistentLog::kSeverityInfo
#define TAV_LOG_SEVERITY_ERROR PersistentLog::kSeverityError

#define TAV_LOG(event, ...)                                                                    \
  do {                                                                                         \
    const char* tavLogText_ = MessageFormatter::format(__VA_ARGS__);                           \
    TAV_TRACE_TEXT(event, TAV_SOURCE_FILE, __LINE__, tavLogText_);                             \
    PersistentLog::instance().write(TAV_LOG_SEVERITY_##event, TAV_SOURCE_FILE, __LINE__, tavLogText_); \
  } while (0)

#define TAV_LOG_ONLY(severity, ...)                                                            \
  PersistentLog::instance().write((severity), TAV_SOURCE_FILE, __LINE__, MessageFormatter::format(__VA_ARGS__))

#endif
