#include "common/SaLogWrapper.h"

SaAisErrorT SaLogWrapper::initialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks,
                                     SaVersionT* version) {
  return saLogInitialize(logHandle, callbacks, version);
}

SaAisErrorT SaLogWrapper::streamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                                     const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                                     SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) {
  return saLogStreamOpen_2(logHandle, logStreamName, attributes, flags, timeout, logStreamHandle);
}

SaAisErrorT SaLogWrapper::writeLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                                        SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) {
  return saLogWriteLogAsync(logStreamHandle, invocation, ackFlags, logRecord);
}

SaAisErrorT SaLogWrapper::finalize(SaLogHandleT logHandle) { return saLogFinalize(logHandle); }
