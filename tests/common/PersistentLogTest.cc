#include "common/PersistentLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "MockSaLogWrapper.h"

using testing::_;
using testing::DoAll;
using testing::Invoke;
using testing::NiceMock;
using testing::Return;
using testing::SetArgPointee;

namespace {

struct Written {
  SaLogSeverityT severity;
  std::string text;
};

class PersistentLogTest : public testing::Test {
 protected:
  void SetUp() override {
    ON_CALL(wrapper, initialize(_, _, _)).WillByDefault(DoAll(SetArgPointee<0>(7), Return(SA_AIS_OK)));
    ON_CALL(wrapper, streamOpen(_, _, _, _, _, _)).WillByDefault(DoAll(SetArgPointee<5>(8), Return(SA_AIS_OK)));
    ON_CALL(wrapper, finalize(_)).WillByDefault(Return(SA_AIS_OK));
    ON_CALL(wrapper, writeLogAsync(_, _, _, _))
        .WillByDefault(Invoke([this](SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT* r) {
          written.push_back({r->logHeader.genericHdr.logSeverity,
                             std::string(reinterpret_cast<const char*>(r->logBuffer->logBuf),
                                         r->logBuffer->logBufSize)});
          return SA_AIS_OK;
        }));
  }

  NiceMock<MockSaLogWrapper> wrapper;
  std::vector<Written> written;
};

TEST_F(PersistentLogTest, OpensTheUpgradeStreamAsConfigured) {
  SaVersionT version{};
  SaNameT name{};
  SaLogFileCreateAttributesT_2 attributes{};
  std::string fileName, pathName, format;
  EXPECT_CALL(wrapper, initialize(_, nullptr, _))
      .WillOnce(DoAll(Invoke([&](SaLogHandleT*, const SaLogCallbacksT*, SaVersionT* v) { version = *v; }),
                      SetArgPointee<0>(7), Return(SA_AIS_OK)));
  EXPECT_CALL(wrapper, streamOpen(7, _, _, SA_LOG_STREAM_CREATE, SA_TIME_ONE_SECOND, _))
      .WillOnce(DoAll(Invoke([&](SaLogHandleT, const SaNameT* n, const SaLogFileCreateAttributesT_2* a,
                                 SaLogStreamOpenFlagsT, SaTimeT, SaLogStreamHandleT*) {
                        name = *n;
                        attributes = *a;
                        fileName = a->logFileName;
                        pathName = a->logFilePathName;
                        format = a->logFileFmt;
                      }),
                      SetArgPointee<5>(8), Return(SA_AIS_OK)));
  PersistentLog log(wrapper, "upgrader");

  EXPECT_EQ('A', version.releaseCode);
  EXPECT_EQ(2, version.majorVersion);
  EXPECT_EQ(1, version.minorVersion);
  EXPECT_EQ("safLgStr=upgrade,safApp=safLogService",
            std::string(reinterpret_cast<const char*>(name.value), name.length));
  EXPECT_EQ("upgrade", fileName);
  EXPECT_EQ("saLogUpgrade", pathName);
  EXPECT_EQ(2000000u, attributes.maxLogFileSize);
  EXPECT_EQ(512u, attributes.maxLogRecordSize);
  EXPECT_EQ(SA_TRUE, attributes.haProperty);
  EXPECT_EQ(SA_LOG_FILE_FULL_ACTION_ROTATE, attributes.logFileFullAction);
  EXPECT_EQ(3, attributes.maxFilesRotated);
  EXPECT_EQ("[@CY-@Cm-@Cd @Ch:@Cn:@Cs] @Cr @Sv @Cb", format);
}

TEST_F(PersistentLogTest, MapsSeveritiesAndWritesTheTextWithoutItsTerminator) {
  struct Case {
    int severity;
    SaLogSeverityT expected;
  };
  const Case cases[] = {{0, SA_LOG_SEV_INFO}, {1, SA_LOG_SEV_ERROR}, {2, SA_LOG_SEV_WARNING}, {5, SA_LOG_SEV_INFO}};
  PersistentLog log(wrapper, "upgrader");
  for (const Case& c : cases) {
    written.clear();
    log.write(c.severity, "f.cc", 1, "hello");
    ASSERT_EQ(1u, written.size()) << c.severity;
    EXPECT_EQ(c.expected, written[0].severity) << c.severity;
    EXPECT_EQ("hello", written[0].text);
  }
}

TEST_F(PersistentLogTest, RecordsCarryAnUnknownTimeAndAGenericHeader) {
  SaLogRecordT seen{};
  EXPECT_CALL(wrapper, writeLogAsync(8, 0, 0, _))
      .WillOnce(DoAll(Invoke([&](SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT* r) {
                        seen = *r;
                        EXPECT_EQ(0, r->logHeader.genericHdr.logSvcUsrName->length);
                      }),
                      Return(SA_AIS_OK)));
  PersistentLog log(wrapper, "upgrader");
  log.write(0, "f.cc", 1, "x");
  EXPECT_EQ(SA_TIME_UNKNOWN, seen.logTimeStamp);
  EXPECT_EQ(SA_LOG_GENERIC_HEADER, seen.logHdrType);
  EXPECT_EQ(nullptr, seen.logHeader.genericHdr.notificationClassId);
}

TEST_F(PersistentLogTest, CloseFinalizesOnceAndStopsWriting) {
  EXPECT_CALL(wrapper, finalize(7)).Times(1).WillOnce(Return(SA_AIS_OK));
  PersistentLog log(wrapper, "upgrader");
  log.close();
  log.close();
  EXPECT_CALL(wrapper, writeLogAsync(_, _, _, _)).Times(0);
  log.write(0, "f.cc", 1, "after close");
}

}  // namespace
