// The platform's Env with a log service that accepts every record and keeps
// none: for programs that run the framework without filling a node's log
// (fuzzing, benchmarks, the authors' tool).

#ifndef VOSK_COMMON_DISCARDING_LOG_H
#define VOSK_COMMON_DISCARDING_LOG_H

#include "env/PlatformEnv.h"

class DiscardingLog : public PlatformEnv {
 public:
  SaAisErrorT logInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) override {
    *logHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT logStreamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT,
                            SaTimeT, SaLogStreamHandleT* logStreamHandle) override {
    *logStreamHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT logWriteLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*) override {
    return SA_AIS_OK;
  }
  SaAisErrorT logFinalize(SaLogHandleT) override { return SA_AIS_OK; }
};

#endif
