// A log service that accepts every record and keeps none: for programs that
// run the framework without a node and must not fill a log (fuzzing,
// benchmarks).

#ifndef VOSK_COMMON_DISCARDING_LOG_H
#define VOSK_COMMON_DISCARDING_LOG_H

#include "common/SaLogWrapperIf.h"

class DiscardingLog : public SaLogWrapperIf {
 public:
  SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) override {
    *logHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT streamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT,
                         SaTimeT, SaLogStreamHandleT* logStreamHandle) override {
    *logStreamHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT writeLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*) override {
    return SA_AIS_OK;
  }
  SaAisErrorT finalize(SaLogHandleT) override { return SA_AIS_OK; }
};

#endif
