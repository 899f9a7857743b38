#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "SimFaults.h"
#include "SimLogStream.h"
#include "TempDir.h"
#include "saLog.h"

namespace {

SaLogFileCreateAttributesT_2 upgradeAttributes(SaUint64T maxFileSize, SaUint32T maxRecordSize) {
  SaLogFileCreateAttributesT_2 a{};
  a.logFileName = const_cast<char*>("upgrade");
  a.logFilePathName = const_cast<char*>("saLogUpgrade");
  a.maxLogFileSize = maxFileSize;
  a.maxLogRecordSize = maxRecordSize;
  a.haProperty = SA_TRUE;
  a.logFileFullAction = SA_LOG_FILE_FULL_ACTION_ROTATE;
  a.maxFilesRotated = 3;
  a.logFileFmt = const_cast<char*>("[@CY-@Cm-@Cd @Ch:@Cn:@Cs] @Cr @Sv @Cb");
  return a;
}

// `text` must outlive the record.
SaLogRecordT record(const char* text, SaLogSeverityT severity, SaLogBufferT* buffer) {
  buffer->logBufSize = std::strlen(text);
  buffer->logBuf = reinterpret_cast<SaUint8T*>(const_cast<char*>(text));
  SaLogRecordT r{};
  r.logTimeStamp = SA_TIME_UNKNOWN;
  r.logHdrType = SA_LOG_GENERIC_HEADER;
  r.logHeader.genericHdr.logSeverity = severity;
  r.logBuffer = buffer;
  return r;
}

class SimLogTest : public testing::Test {
 protected:
  void SetUp() override {
    setenv("VOSK_SIM_OUT", dir.path().c_str(), 1);
    unsetenv("VOSK_SIM_FAULTS");
    SimFaults::reload();
  }
  void TearDown() override {
    unsetenv("VOSK_SIM_OUT");
    unsetenv("VOSK_SIM_ROOT");
    unsetenv("VOSK_SIM_FAULTS");
    SimFaults::reload();
  }

  SaAisErrorT open(SaLogHandleT* log, SaLogStreamHandleT* stream) {
    SaVersionT version{'A', 2, 1};
    SaAisErrorT rc = saLogInitialize(log, nullptr, &version);
    if (rc != SA_AIS_OK) return rc;
    SaNameT name{};
    SaLogFileCreateAttributesT_2 a = upgradeAttributes(2000000, 512);
    return saLogStreamOpen_2(*log, &name, &a, SA_LOG_STREAM_CREATE, SA_TIME_ONE_SECOND, stream);
  }

  TempDir dir;
};

TEST_F(SimLogTest, TheMaximumRecordSizeCountsTheLineEnd) {
  SimLogStream stream(dir.path(), upgradeAttributes(2000000, 64));
  std::string line = stream.formatRecord(1, 0, SA_LOG_SEV_INFO, std::string(200, 'z'));
  EXPECT_EQ(63u, line.size());
}

TEST_F(SimLogTest, FilesRotateAtTheMaximumSizeKeepingThreeOldOnes) {
  SimLogStream stream(dir.path(), upgradeAttributes(200, 512));
  SaLogBufferT buffer;
  // Each line is 50 bytes: four fit in one file.
  for (int i = 0; i < 25; ++i) {
    char text[32];
    std::snprintf(text, sizeof text, "record %02d", i);
    ASSERT_EQ(SA_AIS_OK, stream.write(record(text, SA_LOG_SEV_INFO, &buffer)));
  }
  const std::string log = dir.path() + "/upgrade.log";
  EXPECT_EQ(1u, TempDir::lines(log).size());
  for (const char* old : {".1", ".2", ".3"}) EXPECT_EQ(4u, TempDir::lines(log + old).size()) << old;
  EXPECT_FALSE(TempDir::exists(log + ".4"));
  EXPECT_NE(std::string::npos, TempDir::read(log).find("record 24"));
  EXPECT_NE(std::string::npos, TempDir::read(log + ".3").find("record 12"));
}

// Two clients that open the same stream, as two schema threads do, write
// one file with one run of record ids.
TEST_F(SimLogTest, TheServiceWritesUnderTheOutputFolderOneStreamForAllItsClients) {
  SaLogHandleT log, otherLog;
  SaLogStreamHandleT stream, otherStream;
  ASSERT_EQ(SA_AIS_OK, open(&log, &stream));
  ASSERT_EQ(SA_AIS_OK, open(&otherLog, &otherStream));
  SaLogBufferT buffer;
  SaLogRecordT r = record("hello", SA_LOG_SEV_INFO, &buffer);
  SaLogBufferT otherBuffer;
  SaLogRecordT other = record("world", SA_LOG_SEV_INFO, &otherBuffer);
  ASSERT_EQ(SA_AIS_OK, saLogWriteLogAsync(stream, 0, 0, &r));
  ASSERT_EQ(SA_AIS_OK, saLogWriteLogAsync(otherStream, 0, 0, &other));
  EXPECT_EQ(SA_AIS_OK, saLogFinalize(log));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, saLogWriteLogAsync(stream, 0, 0, &r));
  EXPECT_EQ(SA_AIS_ERR_BAD_HANDLE, saLogFinalize(log));
  EXPECT_EQ(SA_AIS_OK, saLogFinalize(otherLog));
  auto lines = TempDir::lines(dir.path() + "/log/saLogUpgrade/upgrade.log");
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ(" 0000000001 IN hello", lines[0].substr(21));
  EXPECT_EQ(" 0000000002 IN world", lines[1].substr(21));
}

TEST_F(SimLogTest, WithoutANodeInitialisingFails) {
  unsetenv("VOSK_SIM_OUT");
  unsetenv("VOSK_SIM_ROOT");
  SaLogHandleT log;
  SaVersionT version{'A', 2, 1};
  EXPECT_EQ(SA_AIS_ERR_LIBRARY, saLogInitialize(&log, nullptr, &version));
  setenv("VOSK_SIM_ROOT", dir.path().c_str(), 1);
  EXPECT_EQ(SA_AIS_OK, saLogInitialize(&log, nullptr, &version));
  saLogFinalize(log);
}

}  // namespace
