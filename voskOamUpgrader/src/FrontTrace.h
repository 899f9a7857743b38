// The front application's trace macros over the com_talvora_yd_vosk_oam_upgrader
// provider. An event carries fileAndLine ("<source base name>:<line>"), the
// object "GENERAL" and "<function>(): <message>".
//
//   VOSK_TRACE(EVENT, function, fmt, ...)   formats and fires EVENT when enabled
//   VOSK_TRACE_TEXT(EVENT, function, text)  fires EVENT with a ready text
//   VOSK_LOG(EVENT, function, fmt, ...)     formats once, fires EVENT when
//                                           enabled and writes the text to the
//                                           persistent log (severity 1 for
//                                           ERROR, 0 for INFO)

#ifndef VOSK_FRONT_FRONT_TRACE_H
#define VOSK_FRONT_FRONT_TRACE_H

#include <string>

#include "FrontTracepoints.h"
#include "common/MessageFormatter.h"
#include "common/PersistentLog.h"

namespace voskoamupgrader {

class FrontTrace {
 public:
  FrontTrace(const char* path, int line, const char* function, const char* text);

  const char* fileAndLine() const { return fileAndLine_.c_str(); }
  const char* message() const { return message_.c_str(); }
  static const char* object() { return "GENERAL"; }

 private:
  std::string fileAndLine_;
  std::string message_;
};

}  // namespace voskoamupgrader

#define VOSK_TRACE_TEXT(event, function, text)                                                         \
  do {                                                                                                 \
    if (lttng_ust_tracepoint_enabled(com_talvora_yd_vosk_oam_upgrader, event)) {                       \
      ::voskoamupgrader::FrontTrace voskTrace_(__FILE__, __LINE__, (function), (text));               \
      lttng_ust_do_tracepoint(com_talvora_yd_vosk_oam_upgrader, event, voskTrace_.fileAndLine(),       \
                              ::voskoamupgrader::FrontTrace::object(), voskTrace_.message());          \
    }                                                                                                  \
  } while (0)

#define VOSK_TRACE(event, function, ...)                                                               \
  do {                                                                                                 \
    if (lttng_ust_tracepoint_enabled(com_talvora_yd_vosk_oam_upgrader, event)) {                       \
      VOSK_TRACE_TEXT(event, (function), MessageFormatter::format(__VA_ARGS__));                      \
    }                                                                                                  \
  } while (0)

#define VOSK_LOG_SEVERITY_INFO PersistentLog::kSeverityInfo
#define VOSK_LOG_SEVERITY_ERROR PersistentLog::kSeverityError

#define VOSK_LOG(event, function, ...)                                                                 \
  do {                                                                                                 \
    const char* voskLogText_ = MessageFormatter::format(__VA_ARGS__);                                  \
    VOSK_TRACE_TEXT(event, (function), voskLogText_);                                                  \
    PersistentLog::instance().write(VOSK_LOG_SEVERITY_##event, __FILE__, __LINE__, voskLogText_);      \
  } while (0)

#endif
