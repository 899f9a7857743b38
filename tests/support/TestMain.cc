// The main of every unit-test program: the persistent log writes through a
// MockEnv into LogRecorder::installed(), and each test starts with an empty
// record list.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "MockEnv.h"
#include "common/PersistentLog.h"

namespace {

class ClearLogRecorder : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { LogRecorder::installed().clear(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  static testing::NiceMock<MockEnv> processEnv;
  testing::Mock::AllowLeak(&processEnv);
  PersistentLog::chooseEnv(processEnv);
  testing::UnitTest::GetInstance()->listeners().Append(new ClearLogRecorder);
  return RUN_ALL_TESTS();
}
