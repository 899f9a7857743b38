// The framework's trace macros over the com_talvora_upgrade provider.
//
//   TAV_TRACE(EVENT, fmt, ...)  formats into this thread's message buffer and
//                               fires EVENT, only when EVENT is enabled.
//   TAV_TRACE_TEXT(EVENT, file, line, text)
//                               fires EVENT with a ready text and source place.
//
// EVENT is one of TRACE1, INFO_ABN, INFO, ERROR. The file field is the source
// path relative to the framework's root, e.g. "icti/IctiHandler.cc".

#ifndef VOSK_COMMON_TRACE_H
#define VOSK_COMMON_TRACE_H

#include "common/MessageFormatter.h"
#include "common/UpgradeTracepoints.h"

// The part of `path` after its last "framework/" (all of it when absent).
constexpr const char* tavSourceFile(const char* path) {
  const char* result = path;
  const char marker[] = "framework/";
  for (const char* p = path; *p != '\0'; ++p) {
    int i = 0;
    while (marker[i] != '\0' && p[i] == marker[i]) ++i;
    if (marker[i] == '\0') result = p + i;
  }
  return result;
}

#define TAV_SOURCE_FILE (tavSourceFile(__FILE__))

#define TAV_TRACE_TEXT(event, file, line, text)                                        \
  do {                                                                                 \
    if (lttng_ust_tracepoint_enabled(com_talvora_upgrade, event)) {                    \
      lttng_ust_do_tracepoint(com_talvora_upgrade, event, (file), (line), (text));     \
    }                                                                                  \
  } while (0)

#define TAV_TRACE(event, ...)                                                                          \
  do {                                                                                                 \
    if (lttng_ust_tracepoint_enabled(com_talvora_upgrade, event)) {                                    \
      lttng_ust_do_tracepoint(com_talvora_upgrade, event, TAV_SOURCE_FILE, __LINE__,                   \
                              MessageFormatter::format(__VA_ARGS__));                                  \
    }                                                                                                  \
  } while (0)

#endif
