// The Env of unit tests: the platform calls are gmock methods that answer
// SA_AIS_OK (or 0) unless a test says otherwise; the log service opens with
// handles 7 and 8 and keeps each record in LogRecorder::installed(). The
// clock stands still until a test moves `now`. Sleeps are recorded in
// `sleeps`, not taken; the seconds queued in `interruptions` are reported
// left by the next ones. The environment holds `variables` only.

#ifndef VOSK_TESTS_SUPPORT_MOCK_ENV_H
#define VOSK_TESTS_SUPPORT_MOCK_ENV_H

#include <gmock/gmock.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "env/Env.h"

class MockEnv : public Env {
 public:
  MockEnv();

  MOCK_METHOD(SaAisErrorT, immCtInitialize, (SafcImmCtHandleT*, SaUint32T), (override));
  MOCK_METHOD(SaAisErrorT, immCtFinalize, (SafcImmCtHandleT), (override));
  MOCK_METHOD(SaAisErrorT, immCtReadSchemaVersion,
              (SafcImmCtHandleT, const char*, SafcImmCtSchemaVersionT_2*, SafcImmCtSchemaVersionT_2*), (override));
  MOCK_METHOD(SaAisErrorT, immCtFailUpgrade, (SafcImmCtHandleT, const char*), (override));
  MOCK_METHOD(SaAisErrorT, immCtReadInstances, (SafcImmCtHandleT, const SaImmClassNameT, SafcImmCtInstanceGroupT***),
              (override));
  MOCK_METHOD(SaAisErrorT, immCtWriteInstances, (SafcImmCtHandleT, SafcImmCtInstanceGroupT**), (override));
  MOCK_METHOD(SaAisErrorT, immCtCopyInstances, (SafcImmCtHandleT, SaImmClassNameT*), (override));
  MOCK_METHOD(SaAisErrorT, immCtWriteRtInstances,
              (SafcImmCtHandleT, const SaImmOiImplementerNameT, SafcImmCtInstanceGroupT**), (override));
  MOCK_METHOD(SaAisErrorT, immCtInstanceGroupsMemoryFree, (SafcImmCtHandleT, SafcImmCtInstanceGroupT**), (override));
  MOCK_METHOD(SaAisErrorT, logInitialize, (SaLogHandleT*, const SaLogCallbacksT*, SaVersionT*), (override));
  MOCK_METHOD(SaAisErrorT, logStreamOpen,
              (SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT, SaTimeT,
               SaLogStreamHandleT*),
              (override));
  MOCK_METHOD(SaAisErrorT, logWriteLogAsync, (SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*),
              (override));
  MOCK_METHOD(SaAisErrorT, logFinalize, (SaLogHandleT), (override));
  MOCK_METHOD(int, lmhiGetLms, (char*, char*, LmhiLms*), (override));
  MOCK_METHOD(void, lmhiFreeBuffers, (LmhiLms*), (override));
  MOCK_METHOD(unsigned int, sleepSeconds, (unsigned int), (override));

  std::optional<std::string> variable(const char* name) override;
  struct timespec monotonicNow() override {
    return now;
  }

  std::map<std::string, std::string> variables;
  struct timespec now = {100, 0};
  std::vector<unsigned int> sleeps;
  std::deque<unsigned int> interruptions;
};

#endif
