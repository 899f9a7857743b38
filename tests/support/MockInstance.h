// GoogleMock double of an instance.

#ifndef VOSK_TESTS_SUPPORT_MOCK_INSTANCE_H
#define VOSK_TESTS_SUPPORT_MOCK_INSTANCE_H

#include <gmock/gmock.h>

#include "icti/InstanceIf.h"

class MockInstance : public InstanceIf {
 public:
  MOCK_METHOD(bool, eraseAttribute, (const std::string& name), (override));
  MOCK_METHOD(std::string, getParentName, (), (const, override));
  MOCK_METHOD((std::vector<std::pair<std::string, AttributeInternalIf*>>), getAttributes, (), (const, override));
  MOCK_METHOD(AttributeInternalIf*, getAttribute, (const std::string& name), (const, override));
  MOCK_METHOD(bool, addAttribute, (const std::string& name, ValueType type, AttributeInternalIf** created),
              (override));
  MOCK_METHOD(std::string, getRdn, (), (const, override));
  MOCK_METHOD(bool, setRdn, (const std::string& rdn), (override));
  MOCK_METHOD(std::string, getLdn, (), (const, override));
  MOCK_METHOD(void, setParentName, (const std::string& parentName), (override));
};

#endif
