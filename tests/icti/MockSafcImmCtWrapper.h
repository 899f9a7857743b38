#ifndef VOSK_TESTS_ICTI_MOCK_SAFC_IMM_CT_WRAPPER_H
#define VOSK_TESTS_ICTI_MOCK_SAFC_IMM_CT_WRAPPER_H

#include <gmock/gmock.h>

#include "icti/SafcImmCtWrapperIf.h"

class MockSafcImmCtWrapper : public SafcImmCtWrapperIf {
 public:
  MOCK_METHOD(SaAisErrorT, initialize, (SafcImmCtHandleT*, SaUint32T), (override));
  MOCK_METHOD(SaAisErrorT, finalize, (SafcImmCtHandleT), (override));
  MOCK_METHOD(SaAisErrorT, readSchemaVersion,
              (SafcImmCtHandleT, const char*, SafcImmCtSchemaVersionT_2*, SafcImmCtSchemaVersionT_2*), (override));
  MOCK_METHOD(SaAisErrorT, failUpgrade, (SafcImmCtHandleT, const char*), (override));
  MOCK_METHOD(SaAisErrorT, readInstances, (SafcImmCtHandleT, const SaImmClassNameT, SafcImmCtInstanceGroupT***),
              (override));
  MOCK_METHOD(SaAisErrorT, writeInstances, (SafcImmCtHandleT, SafcImmCtInstanceGroupT**), (override));
  MOCK_METHOD(SaAisErrorT, copyInstances, (SafcImmCtHandleT, SaImmClassNameT*), (override));
  MOCK_METHOD(SaAisErrorT, waitForClasses, (SafcImmCtHandleT, SaImmClassNameT*), (override));
  MOCK_METHOD(SaAisErrorT, writeRtInstances, (SafcImmCtHandleT, const SaImmOiImplementerNameT, SafcImmCtInstanceGroupT**),
              (override));
  MOCK_METHOD(SaAisErrorT, copyRtInstances, (SafcImmCtHandleT, const SaImmOiImplementerNameT, SaImmClassNameT*),
              (override));
  MOCK_METHOD(SaAisErrorT, instanceGroupsMemoryFree, (SafcImmCtHandleT, SafcImmCtInstanceGroupT**), (override));
};

#endif
