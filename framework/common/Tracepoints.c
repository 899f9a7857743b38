/* Instantiates the framework's tracepoint provider for every program that
 * links the framework's common library. */
#define LTTNG_UST_TRACEPOINT_CREATE_PROBES
#define LTTNG_UST_TRACEPOINT_DEFINE
#include "common/UpgradeTracepoints.h"
