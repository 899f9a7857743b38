// Forwards each call unchanged to the platform's log service library.

#ifndef VOSK_COMMON_SA_LOG_WRAPPER_H
#define VOSK_COMMON_SA_LOG_WRAPPER_H

#include "common/SaLogWrapperIf.h"

class SaLogWrapper : public SaLogWrapperIf {
 public:
  SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks, SaVersionT* version) override;
  SaAisErrorT streamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                         const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                         SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) override;
  SaAisErrorT writeLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                            SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) override;
  SaAisErrorT finalize(SaLogHandleT logHandle) override;
};

#endif
