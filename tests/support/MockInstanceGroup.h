// GoogleMock double of an instance group.

#ifndef VOSK_TESTS_SUPPORT_MOCK_INSTANCE_GROUP_H
#define VOSK_TESTS_SUPPORT_MOCK_INSTANCE_GROUP_H

#include <gmock/gmock.h>

#include "icti/InstanceGroupIf.h"

class MockInstanceGroup : public InstanceGroupIf {
 public:
  MOCK_METHOD(std::string, getClassName, (), (const, override));
  MOCK_METHOD(bool, forEachInstance, (const std::function<bool(InstanceIf&)>& step), (override));
  MOCK_METHOD(std::vector<InstanceIf*>, getInstances, (), (const, override));
  MOCK_METHOD(std::vector<InstanceIf*>, getChildInstances, (const std::string& parentLdn), (const, override));
  MOCK_METHOD(InstanceIf*, getInstance, (const std::string& ldn), (const, override));
  MOCK_METHOD(InstanceIf*, getFirstInstance, (), (const, override));
  MOCK_METHOD(unsigned int, getNumberOfInstances, (), (const, override));
  MOCK_METHOD(bool, eraseInstance, (const std::string& ldn), (override));
  MOCK_METHOD(unsigned int, addInstance, (InstanceIf * instance), (override));
  MOCK_METHOD(void, detachInstance, (InstanceIf * instance), (override));
  MOCK_METHOD(bool, isStructGroup, (), (const, override));
  MOCK_METHOD(InstanceIf*, createInstance,
              (const std::string& parentLdn, const std::string& rdnId, bool isStruct, const std::string& structType),
              (override));
};

#endif
