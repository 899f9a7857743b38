#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogRecorder.h"
#include "MockEnv.h"
#include "common/PersistentLog.h"

using testing::_;
using testing::DoAll;
using testing::Invoke;
using testing::NiceMock;
using testing::Return;
using testing::SaveArgPointee;
using testing::SetArgPointee;

namespace {

TEST(PersistentLogTest, OpensTheUpgradeStreamAsConfigured) {
  NiceMock<MockEnv> env;
  SaVersionT version{};
  std::string name, fileName, pathName, format;
  SaLogFileCreateAttributesT_2 attributes{};
  EXPECT_CALL(env, logInitialize(_, nullptr, _))
      .WillOnce(DoAll(SaveArgPointee<2>(&version), SetArgPointee<0>(7), Return(SA_AIS_OK)));
  EXPECT_CALL(env, logStreamOpen(7, _, _, SA_LOG_STREAM_CREATE, SA_TIME_ONE_SECOND, _))
      .WillOnce(DoAll(Invoke([&](SaLogHandleT, const SaNameT* n, const SaLogFileCreateAttributesT_2* a,
                                 SaLogStreamOpenFlagsT, SaTimeT, SaLogStreamHandleT*) {
                        name.assign(reinterpret_cast<const char*>(n->value), n->length);
                        attributes = *a;
                        fileName = a->logFileName;
                        pathName = a->logFilePathName;
                        format = a->logFileFmt;
                      }),
                      Return(SA_AIS_OK)));
  PersistentLog log(env, "upgrader");

  EXPECT_EQ("A.2.1", std::string(1, version.releaseCode) + "." + std::to_string(version.majorVersion) + "." +
                         std::to_string(version.minorVersion));
  EXPECT_EQ("safLgStr=upgrade,safApp=safLogService", name);
  EXPECT_EQ("saLogUpgrade/upgrade [@CY-@Cm-@Cd @Ch:@Cn:@Cs] @Cr @Sv @Cb", pathName + "/" + fileName + " " + format);
  EXPECT_EQ(2000000u, attributes.maxLogFileSize);
  EXPECT_EQ(512u, attributes.maxLogRecordSize);
  EXPECT_EQ(SA_TRUE, attributes.haProperty);
  EXPECT_EQ(SA_LOG_FILE_FULL_ACTION_ROTATE, attributes.logFileFullAction);
  EXPECT_EQ(3, attributes.maxFilesRotated);
}

TEST(PersistentLogTest, RecordsCarryTheMappedSeverityTheTextAndAGenericHeader) {
  struct Case {
    int severity;
    SaLogSeverityT expected;
  };
  const Case cases[] = {{0, SA_LOG_SEV_INFO}, {1, SA_LOG_SEV_ERROR}, {2, SA_LOG_SEV_WARNING}, {5, SA_LOG_SEV_INFO}};
  NiceMock<MockEnv> env;
  SaLogRecordT seen{};
  EXPECT_CALL(env, logWriteLogAsync(8, 0, 0, _)).Times(4).WillRepeatedly(Invoke([&](auto, auto, auto, auto r) {
    seen = *r;
    EXPECT_EQ(0, r->logHeader.genericHdr.logSvcUsrName->length);
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
    EXPECT_EQ(SA_TIME_UNKNOWN, seen.logTimeStamp);
    EXPECT_EQ(SA_LOG_GENERIC_HEADER, seen.logHdrType);
    EXPECT_EQ(nullptr, seen.logHeader.genericHdr.notificationClassId);
  }
}

TEST(PersistentLogTest, AFailedWriteIsReportedOnceAndDisablesTheStreamForGood) {
  NiceMock<MockEnv> env;
  PersistentLog log(env, "upgrader");
  EXPECT_CALL(env, logWriteLogAsync(_, _, _, _))
      .WillOnce(Return(SA_AIS_ERR_TRY_AGAIN))
      .WillOnce(Invoke([](auto, auto, auto, const SaLogRecordT* r) {
        LogRecorder::installed().record(r);
        return SA_AIS_OK;
      }));
  log.write(0, "f.cc", 1, "lost");
  log.write(0, "f.cc", 2, "goes to a tracepoint");
  std::vector<LoggedRecord> records = LogRecorder::installed().records();
  ASSERT_EQ(1u, records.size());
  EXPECT_EQ(SA_LOG_SEV_ERROR, records[0].severity);
  EXPECT_EQ("Failed to write to the stream, error = 6", records[0].text);
}

TEST(PersistentLogTest, APersistentWriteFailureEndsAfterOneNestedAttempt) {
  NiceMock<MockEnv> env;
  PersistentLog log(env, "upgrader");
  EXPECT_CALL(env, logWriteLogAsync(_, _, _, _)).Times(2).WillRepeatedly(Return(SA_AIS_ERR_BAD_HANDLE));
  log.write(1, "f.cc", 1, "lost");
  log.write(1, "f.cc", 1, "not tried");
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

TEST(PersistentLogDeathTest, TheProcessLogsEnvIsChosenOnce) {
  NiceMock<MockEnv> env;
  EXPECT_DEATH(PersistentLog::chooseEnv(env), "The persistent log's Env is chosen already");
}

}  // namespace
