/*
 * The framework's tracepoint provider. Every framework message can be
 * recorded as one of four events, each carrying the source file relative to
 * the framework's root, the line and the message text.
 */
#undef LTTNG_UST_TRACEPOINT_PROVIDER
#define LTTNG_UST_TRACEPOINT_PROVIDER com_talvora_upgrade

#undef LTTNG_UST_TRACEPOINT_INCLUDE
#define LTTNG_UST_TRACEPOINT_INCLUDE "common/UpgradeTracepoints.h"

#if !defined(VOSK_COMMON_UPGRADE_TRACEPOINTS_H) || defined(LTTNG_UST_TRACEPOINT_HEADER_MULTI_READ)
#define VOSK_COMMON_UPGRADE_TRACEPOINTS_H

#include <lttng/tracepoint.h>

LTTNG_UST_TRACEPOINT_EVENT_CLASS(
    com_talvora_upgrade, message,
    LTTNG_UST_TP_ARGS(const char*, file, int, line, const char*, msg),
    LTTNG_UST_TP_FIELDS(lttng_ust_field_string(file, file) lttng_ust_field_integer(int, line, line)
                            lttng_ust_field_string(msg, msg)))

#define VOSK_UPGRADE_EVENT(name)                                                     \
    LTTNG_UST_TRACEPOINT_EVENT_INSTANCE(com_talvora_upgrade, message, com_talvora_upgrade, name, \
                                        LTTNG_UST_TP_ARGS(const char*, file, int, line, const char*, msg))

VOSK_UPGRADE_EVENT(TRACE1)
VOSK_UPGRADE_EVENT(INFO_ABN)
VOSK_UPGRADE_EVENT(INFO)
VOSK_UPGRADE_EVENT(ERROR)

#undef VOSK_UPGRADE_EVENT

#endif

#include <lttng/tracepoint-event.h>
