/* Instantiates the front's tracepoint provider in the program that links
 * the front. */
#define LTTNG_UST_TRACEPOINT_CREATE_PROBES
#define LTTNG_UST_TRACEPOINT_DEFINE
#include "FrontTracepoints.h"
