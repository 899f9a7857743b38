#include "env/PlatformEnv.h"

#include <unistd.h>

#include <cstdlib>

PlatformEnv& PlatformEnv::instance() {
  static PlatformEnv env;
  return env;
}

SaAisErrorT PlatformEnv::immCtInitialize(SafcImmCtHandleT* handle, SaUint32T mode) {
  return safcImmCtInitialize_2(handle, mode);
}

SaAisErrorT PlatformEnv::immCtFinalize(SafcImmCtHandleT handle) { return safcImmCtFinalize(handle); }

SaAisErrorT PlatformEnv::immCtReadSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                                SafcImmCtSchemaVersionT_2* fromVersion,
                                                SafcImmCtSchemaVersionT_2* toVersion) {
  return safcImmCtReadSchemaVersion_2(handle, schemaName, fromVersion, toVersion);
}

SaAisErrorT PlatformEnv::immCtFailUpgrade(SafcImmCtHandleT handle, const char* reason) {
  return safcImmCtFailUpgrade(handle, reason);
}

SaAisErrorT PlatformEnv::immCtReadInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                            SafcImmCtInstanceGroupT*** instanceGroups) {
  return safcImmCtReadInstances_2(handle, className, instanceGroups);
}

SaAisErrorT PlatformEnv::immCtWriteInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtWriteInstances(handle, instanceGroups);
}

SaAisErrorT PlatformEnv::immCtCopyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) {
  return safcImmCtCopyInstances(handle, classNames);
}

SaAisErrorT PlatformEnv::immCtWriteRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                               SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtWriteRtInstances(handle, implementerName, instanceGroups);
}

SaAisErrorT PlatformEnv::immCtInstanceGroupsMemoryFree(SafcImmCtHandleT handle,
                                                       SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtInstanceGroupsMemoryFree(handle, instanceGroups);
}

SaAisErrorT PlatformEnv::logInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks, SaVersionT* version) {
  return saLogInitialize(logHandle, callbacks, version);
}

SaAisErrorT PlatformEnv::logStreamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                                       const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                                       SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) {
  return saLogStreamOpen_2(logHandle, logStreamName, attributes, flags, timeout, logStreamHandle);
}

SaAisErrorT PlatformEnv::logWriteLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                                          SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) {
  return saLogWriteLogAsync(logStreamHandle, invocation, ackFlags, logRecord);
}

SaAisErrorT PlatformEnv::logFinalize(SaLogHandleT logHandle) { return saLogFinalize(logHandle); }

int PlatformEnv::lmhiGetLms(char* boardType, char* tag, LmhiLms* result) {
  return Lmhi_get_lms(boardType, tag, result);
}

void PlatformEnv::lmhiFreeBuffers(LmhiLms* result) { Lmhi_free_buffers(result); }

std::optional<std::string> PlatformEnv::variable(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return std::string(value);
}

struct timespec PlatformEnv::monotonicNow() {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now;
}

unsigned int PlatformEnv::sleepSeconds(unsigned int seconds) { return ::sleep(seconds); }
