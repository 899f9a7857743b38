#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogRecorder.h"
#include "MockEnv.h"
#include "common/PersistentLog.h"

using testing::_;
using testing::Invoke;
using testing::NiceMock;
using testing::Return;

namespace {

// The stream's settings are the simulated node's to check, and the failed writes are the
// fault matrix's (LogWriteLogAsync); whole runs read every record back.
TEST(PersistentLogTest, RecordsCarryTheMappedSeverityAndTheText) {
  struct Case {
    int severity;
    SaLogSeverityT expected;
  };
  const Case cases[] = {{0, SA_LOG_SEV_INFO}, {1, SA_LOG_SEV_ERROR}, {2, SA_LOG_SEV_WARNING}, {5, SA_LOG_SEV_INFO}};
  NiceMock<MockEnv> env;
  EXPECT_CALL(env, logWriteLogAsync(8, 0, 0, _)).Times(4).WillRepeatedly(Invoke([&](auto, auto, auto, auto r) {
    LogRecorder::installed().record(r);
    return SA_AIS_OK;
  }));
  PersistentLog log(env, "upgrader");
  for (const Case& c : cases) {
    LogRecorder::installed().clear();
    log.write(c.severity, "f.cc", 1, "hello");
    std::vector<LoggedRecord> records = LogRecorder::installed().records();
    ASSERT_EQ(1u, records.size()) << c.severity;
    EXPECT_EQ(c.expected, records[0].severity) << c.severity;
    EXPECT_EQ("hello", records[0].text);
  }
}

TEST(PersistentLogTest, CloseFinalizesOnceAndStopsWriting) {
  NiceMock<MockEnv> env;
  EXPECT_CALL(env, logFinalize(7)).Times(1).WillOnce(Return(SA_AIS_OK));
  PersistentLog log(env, "upgrader");
  log.close();
  log.close();
  EXPECT_CALL(env, logWriteLogAsync(_, _, _, _)).Times(0);
  log.write(0, "f.cc", 1, "after close");
}

}  // namespace
