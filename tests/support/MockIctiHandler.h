// GoogleMock double of the ICTI handler.

#ifndef VOSK_TESTS_SUPPORT_MOCK_ICTI_HANDLER_H
#define VOSK_TESTS_SUPPORT_MOCK_ICTI_HANDLER_H

#include <gmock/gmock.h>

#include "icti/IctiHandlerIf.h"

class MockIctiHandler : public IctiHandlerIf {
 public:
  MOCK_METHOD(InstanceGroupIf*, getInstanceGroup,
              (const std::string& className, const std::string& prefix, bool usePrefix), (override));
  MOCK_METHOD(InstanceIf*, getTheOnlyInstance, (const std::string& className, const std::string& prefix),
              (override));
  MOCK_METHOD(InstanceGroupIf*, addInstanceGroup, (const std::string& className), (override));
  MOCK_METHOD(bool, removeInstanceGroup, (const std::string& className), (override));
  MOCK_METHOD(InstanceGroupIf*, getInstanceGroupForLdn, (const std::string& ldn), (override));
  MOCK_METHOD(void, failUpgrade, (const char* message), (override));
  MOCK_METHOD(bool, isAlive, (), (override));
  MOCK_METHOD(void, setFailureContext, (const std::string& context), (override));
  MOCK_METHOD(int, failureCount, (), (const, override));
  MOCK_METHOD(bool, classDefined, (const std::string& className), (override));
};

#endif
