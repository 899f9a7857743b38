// The simulated SA Forum Log service: the C calls of saLog.h over files
// below $VOSK_SIM_OUT/log.

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "SimEnvironment.h"
#include "SimFaults.h"
#include "SimLogStream.h"
#include "saLog.h"

namespace {

struct LogService {
  std::mutex mutex;
  std::map<SaLogHandleT, std::string> clients;  // handle -> output folder
  std::map<SaLogStreamHandleT, std::pair<SaLogHandleT, std::shared_ptr<SimLogStream>>> streams;
  // One stream object per file, shared by every handle that opens it, as a
  // node's log service keeps one stream per name: its record ids, its open
  // file and its size (which decides rotation) stay one.
  std::map<std::string, std::weak_ptr<SimLogStream>> files;
  SaUint64T nextHandle = 1;
};

LogService& service() {
  static LogService s;
  return s;
}

SaAisErrorT injected(const char* call) { return static_cast<SaAisErrorT>(SimFaults::instance().inject(call)); }

}  // namespace

extern "C" SaAisErrorT saLogInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT* /*callbacks*/,
                                       SaVersionT* version) {
  if (SaAisErrorT rc = injected("LogInitialize")) return rc;
  if (logHandle == nullptr || version == nullptr) return SA_AIS_ERR_INVALID_PARAM;
  if (version->releaseCode != 'A' || version->majorVersion != 2) {
    version->releaseCode = 'A';
    version->majorVersion = 2;
    version->minorVersion = 1;
    return SA_AIS_ERR_VERSION;
  }
  std::string out = SimEnvironment::out();
  if (out.empty()) {
    SimEnvironment::reportReason("saLogInitialize", "", SA_AIS_ERR_LIBRARY,
                                 "no log service: VOSK_SIM_ROOT and VOSK_SIM_OUT are unset");
    return SA_AIS_ERR_LIBRARY;
  }
  LogService& s = service();
  std::lock_guard<std::mutex> lock(s.mutex);
  *logHandle = s.nextHandle++;
  s.clients[*logHandle] = out;
  return SA_AIS_OK;
}

extern "C" SaAisErrorT saLogStreamOpen_2(SaLogHandleT logHandle, const SaNameT* logStreamName,
                                         const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                                         SaTimeT /*timeout*/, SaLogStreamHandleT* logStreamHandle) {
  if (SaAisErrorT rc = injected("LogStreamOpen")) return rc;
  if (logStreamName == nullptr || logStreamHandle == nullptr) return SA_AIS_ERR_INVALID_PARAM;
  if (attributes == nullptr || flags != SA_LOG_STREAM_CREATE || attributes->logFileName == nullptr ||
      attributes->logFilePathName == nullptr) {
    return SA_AIS_ERR_INVALID_PARAM;
  }
  LogService& s = service();
  std::lock_guard<std::mutex> lock(s.mutex);
  auto client = s.clients.find(logHandle);
  if (client == s.clients.end()) return SA_AIS_ERR_BAD_HANDLE;
  std::string directory = client->second + "/log/" + attributes->logFilePathName;
  if (!SimEnvironment::makeDirectories(directory)) {
    SimEnvironment::reportReason("saLogStreamOpen_2", attributes->logFileName, SA_AIS_ERR_NO_RESOURCES,
                                 "cannot create " + directory);
    return SA_AIS_ERR_NO_RESOURCES;
  }
  std::weak_ptr<SimLogStream>& file = s.files[directory + "/" + attributes->logFileName];
  std::shared_ptr<SimLogStream> stream = file.lock();
  if (!stream) {
    stream = std::make_shared<SimLogStream>(directory, *attributes);
    file = stream;
  }
  *logStreamHandle = s.nextHandle++;
  s.streams[*logStreamHandle] = {logHandle, stream};
  return SA_AIS_OK;
}

extern "C" SaAisErrorT saLogWriteLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT /*invocation*/,
                                          SaLogAckFlagsT /*ackFlags*/, const SaLogRecordT* logRecord) {
  if (SaAisErrorT rc = injected("LogWriteLogAsync")) return rc;
  if (logRecord == nullptr) return SA_AIS_ERR_INVALID_PARAM;
  std::shared_ptr<SimLogStream> stream;
  {
    LogService& s = service();
    std::lock_guard<std::mutex> lock(s.mutex);
    auto found = s.streams.find(logStreamHandle);
    if (found == s.streams.end()) return SA_AIS_ERR_BAD_HANDLE;
    stream = found->second.second;
  }
  return stream->write(*logRecord);
}

extern "C" SaAisErrorT saLogFinalize(SaLogHandleT logHandle) {
  if (SaAisErrorT rc = injected("LogFinalize")) return rc;
  LogService& s = service();
  std::lock_guard<std::mutex> lock(s.mutex);
  if (s.clients.erase(logHandle) == 0) return SA_AIS_ERR_BAD_HANDLE;
  for (auto it = s.streams.begin(); it != s.streams.end();) {
    it = it->second.first == logHandle ? s.streams.erase(it) : std::next(it);
  }
  return SA_AIS_OK;
}
