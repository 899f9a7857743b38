// The SA Forum Log service calls of the persistent log, behind an interface
// so that the log can run against a substitute in tests.

#ifndef VOSK_COMMON_SA_LOG_WRAPPER_IF_H
#define VOSK_COMMON_SA_LOG_WRAPPER_IF_H

#include "saLog.h"

class SaLogWrapperIf {
 public:
  virtual ~SaLogWrapperIf() = default;
  virtual SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks,
                                 SaVersionT* version) = 0;
  virtual SaAisErrorT streamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                                 const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                                 SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) = 0;
  virtual SaAisErrorT writeLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                                    SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) = 0;
  virtual SaAisErrorT finalize(SaLogHandleT logHandle) = 0;
};

#endif
