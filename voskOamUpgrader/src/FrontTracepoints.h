/*
 * The front application's tracepoint provider. The front emits INFO and
 * ERROR; the other events are declared so that tools see the full provider.
 */
#undef LTTNG_UST_TRACEPOINT_PROVIDER
#define LTTNG_UST_TRACEPOINT_PROVIDER com_talvora_yd_vosk_oam_upgrader

#undef LTTNG_UST_TRACEPOINT_INCLUDE
#define LTTNG_UST_TRACEPOINT_INCLUDE "FrontTracepoints.h"

#if !defined(VOSK_FRONT_TRACEPOINTS_H) || defined(LTTNG_UST_TRACEPOINT_HEADER_MULTI_READ)
#define VOSK_FRONT_TRACEPOINTS_H

#include <lttng/tracepoint.h>

LTTNG_UST_TRACEPOINT_EVENT_CLASS(
    com_talvora_yd_vosk_oam_upgrader, message,
    LTTNG_UST_TP_ARGS(const char*, fileAndLine, const char*, obj, const char*, msg),
    LTTNG_UST_TP_FIELDS(lttng_ust_field_string(fileAndLine, fileAndLine) lttng_ust_field_string(obj, obj)
                            lttng_ust_field_string(msg, msg)))

#define VOSK_FRONT_EVENT(name)                                                                   \
    LTTNG_UST_TRACEPOINT_EVENT_INSTANCE(com_talvora_yd_vosk_oam_upgrader, message,              \
                                        com_talvora_yd_vosk_oam_upgrader, name,                 \
                                        LTTNG_UST_TP_ARGS(const char*, fileAndLine, const char*, obj, \
                                                          const char*, msg))

VOSK_FRONT_EVENT(ERROR)
VOSK_FRONT_EVENT(INFO)
VOSK_FRONT_EVENT(EXCEPTION)
VOSK_FRONT_EVENT(SI_SEND)
VOSK_FRONT_EVENT(SI_REC)
VOSK_FRONT_EVENT(SI_ENTER)
VOSK_FRONT_EVENT(SI_EXIT)
VOSK_FRONT_EVENT(SI_PARAM)
VOSK_FRONT_EVENT(MSG_SEND)
VOSK_FRONT_EVENT(MSG_REC)
VOSK_FRONT_EVENT(API_CALL)
VOSK_FRONT_EVENT(FN_ENTER)
VOSK_FRONT_EVENT(FN_EXIT)
VOSK_FRONT_EVENT(FN_PARAM)
VOSK_FRONT_EVENT(LAB)

#undef VOSK_FRONT_EVENT

#endif

#include <lttng/tracepoint-event.h>
