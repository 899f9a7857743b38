// GoogleMock double of an upgrade action as the parser sees it.

#ifndef VOSK_TESTS_SUPPORT_MOCK_UPGRADE_ACTION_H
#define VOSK_TESTS_SUPPORT_MOCK_UPGRADE_ACTION_H

#include <gmock/gmock.h>

#include "runtime/UpgradeActionIf.h"

class MockUpgradeAction : public UpgradeActionIf {
 public:
  explicit MockUpgradeAction(const char* name) : name_(name) {}

  MOCK_METHOD(bool, execute, (IctiHandlerIf * ictiHandler, InstanceGroupIf* instanceGroup, ActionArgumentsIf& args),
              (override));
  MOCK_METHOD(bool, validateArgs, (ActionArgumentsIf & args, IctiHandlerIf* ictiHandler), (override));
  const char* getName() const override { return name_; }
  MOCK_METHOD(std::vector<std::string>, argumentNames, (), (const, override));

 private:
  const char* name_;
};

#endif
