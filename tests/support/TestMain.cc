// The main of every unit-test program: the persistent log writes into a
// LogRecorder, and each test starts with an empty record list.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogRecorder.h"
#include "common/PersistentLog.h"

namespace {

class ClearLogRecorder : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { LogRecorder::installed().clear(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  PersistentLog::useWrapper(&LogRecorder::installed());
  testing::UnitTest::GetInstance()->listeners().Append(new ClearLogRecorder);
  return RUN_ALL_TESTS();
}
