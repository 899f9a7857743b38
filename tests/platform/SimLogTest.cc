#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

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

TEST(SimLogTest, FilesRotateAtTheMaximumSizeKeepingThreeOldOnes) {
  TempDir dir;
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

TEST(SimLogTest, WithoutANodeInitialisingFails) {
  TempDir dir;
  unsetenv("VOSK_SIM_OUT");
  unsetenv("VOSK_SIM_ROOT");
  SaLogHandleT log;
  SaVersionT version{'A', 2, 1};
  EXPECT_EQ(SA_AIS_ERR_LIBRARY, saLogInitialize(&log, nullptr, &version));
  setenv("VOSK_SIM_ROOT", dir.path().c_str(), 1);
  EXPECT_EQ(SA_AIS_OK, saLogInitialize(&log, nullptr, &version));
  saLogFinalize(log);
  unsetenv("VOSK_SIM_ROOT");
}

}  // namespace
