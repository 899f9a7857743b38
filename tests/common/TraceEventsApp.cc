// Fires every kind of trace event and log record the upgrader writes, and
// prints what a reader must find, one item a line:
//   "trace: <event as babeltrace2 prints it, without time, host and context>"
//   "log: <severity> <text>" for each record of the persistent log.
// A line number the program cannot know (a framework-internal message)
// reads "ANY". trace_events_test.sh records the run and compares.

#include <cstdio>
#include <string>

#include "FrontTrace.h"
#include "common/Log.h"
#include "env/PlatformEnv.h"

namespace {

void expectTrace(const char* event, const std::string& file, const std::string& line, const std::string& msg) {
  std::printf("trace: com_talvora_upgrade:%s: { file = \"%s\", line = %s, msg = \"%s\" }\n", event, file.c_str(),
              line.c_str(), msg.c_str());
}

void expectTrace(const char* event, int line, const std::string& msg) {
  expectTrace(event, __FILE__, std::to_string(line), msg);
}

void expectFrontTrace(const char* event, int line, const std::string& msg) {
  std::printf(
      "trace: com_talvora_yd_vosk_oam_upgrader:%s: { fileAndLine = \"TraceEventsApp.cc:%d\", obj = \"GENERAL\", "
      "msg = \"%s\" }\n",
      event, line, msg.c_str());
}

void expectLog(const char* severity, const std::string& text) { std::printf("log: %s %s\n", severity, text.c_str()); }

// A node whose log service is not there: every log call fails as an
// unloadable library.
class MissingLogService : public PlatformEnv {
 public:
  SaAisErrorT logInitialize(SaLogHandleT*, const SaLogCallbacksT*, SaVersionT*) override { return SA_AIS_ERR_LIBRARY; }
  SaAisErrorT logStreamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT,
                            SaTimeT, SaLogStreamHandleT*) override {
    return SA_AIS_ERR_LIBRARY;
  }
  SaAisErrorT logWriteLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*) override {
    return SA_AIS_ERR_LIBRARY;
  }
  SaAisErrorT logFinalize(SaLogHandleT) override { return SA_AIS_ERR_LIBRARY; }
};

void frameworkMessages() {
  int line = __LINE__ + 1;
  TAV_LOG(TRACE1, "UpgradeHandler::UpgradeHandler(int, char **).");
  expectTrace("TRACE1", line, "UpgradeHandler::UpgradeHandler(int, char **).");
  expectLog("IN", "UpgradeHandler::UpgradeHandler(int, char **).");

  line = __LINE__ + 1;
  TAV_LOG(INFO_ABN, "Failed to connect to %s", "/tmp/wrapper.sock");
  expectTrace("INFO_ABN", line, "Failed to connect to /tmp/wrapper.sock");
  expectLog("IN", "Failed to connect to /tmp/wrapper.sock");

  line = __LINE__ + 1;
  TAV_LOG(INFO, "Found %d modification files through LMHI using tag %s", 4, "RadioNode");
  expectTrace("INFO", line, "Found 4 modification files through LMHI using tag RadioNode");
  expectLog("IN", "Found 4 modification files through LMHI using tag RadioNode");

  line = __LINE__ + 1;
  TAV_LOG(ERROR, "Expected exactly two argument, got %d", 3);
  expectTrace("ERROR", line, "Expected exactly two argument, got 3");
  expectLog("ER", "Expected exactly two argument, got 3");

  line = __LINE__ + 1;
  TAV_TRACE(INFO, "trace only, %s", "not logged");
  expectTrace("INFO", line, "trace only, not logged");

  MessageFormatter::setPrefix("RadioNode");
  line = __LINE__ + 1;
  TAV_LOG(INFO, "UPGRADE STARTING");
  expectTrace("INFO", line, "RadioNode: UPGRADE STARTING");
  expectLog("IN", "RadioNode: UPGRADE STARTING");
  MessageFormatter::setPrefix(nullptr);
}

void frontMessages() {
  int line = __LINE__ + 1;
  VOSK_LOG(INFO, __func__, "Found %d schemas", 2);
  expectFrontTrace("INFO", line, "frontMessages(): Found 2 schemas");
  expectLog("IN", "Found 2 schemas");

  line = __LINE__ + 1;
  VOSK_LOG(ERROR, __func__, "Could not find %s", "appdata");
  expectFrontTrace("ERROR", line, "frontMessages(): Could not find appdata");
  expectLog("ER", "Could not find appdata");

  line = __LINE__ + 1;
  VOSK_TRACE(INFO, __func__, "trace only");
  expectFrontTrace("INFO", line, "frontMessages(): trace only");
}

// Without a log service the log reports from its own source file, and each
// record becomes a tracepoint of its level at the writer's place.
void messagesWithoutLogService() {
  MissingLogService service;
  PersistentLog log(service, "trace-test");
  expectTrace("ERROR", "common/PersistentLog.cc", "ANY",
              "Failed to initialize the log by upgrader trace-test, retCode = 2");
  log.write(PersistentLog::kSeverityWarning, "client/Somewhere.cc", 42, "a warning");
  expectTrace("INFO_ABN", "client/Somewhere.cc", "42", "a warning");
}

}  // namespace

int main() {
  PersistentLog::chooseEnv(PlatformEnv::instance());
  frameworkMessages();
  frontMessages();
  messagesWithoutLogService();
  PersistentLog::instance().close();
  return 0;
}
