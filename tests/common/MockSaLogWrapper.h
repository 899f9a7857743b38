#ifndef VOSK_TESTS_COMMON_MOCK_SA_LOG_WRAPPER_H
#define VOSK_TESTS_COMMON_MOCK_SA_LOG_WRAPPER_H

#include <gmock/gmock.h>

#include "common/SaLogWrapperIf.h"

class MockSaLogWrapper : public SaLogWrapperIf {
 public:
  MOCK_METHOD(SaAisErrorT, initialize, (SaLogHandleT*, const SaLogCallbacksT*, SaVersionT*), (override));
  MOCK_METHOD(SaAisErrorT, streamOpen,
              (SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT, SaTimeT,
               SaLogStreamHandleT*),
              (override));
  MOCK_METHOD(SaAisErrorT, writeLogAsync, (SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*),
              (override));
  MOCK_METHOD(SaAisErrorT, finalize, (SaLogHandleT), (override));
};

#endif
