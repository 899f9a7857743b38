// The Env of the node: the platform libraries the program is linked with
// (the simulated node's or the node's own) and the process's libc.

#ifndef VOSK_ENV_PLATFORM_ENV_H
#define VOSK_ENV_PLATFORM_ENV_H

#include "env/Env.h"

class PlatformEnv : public Env {
 public:
  // The one the program's entry hands to the framework; it has no state.
  static PlatformEnv& instance();

  SaAisErrorT immCtInitialize(SafcImmCtHandleT* handle, SaUint32T mode) override;
  SaAisErrorT immCtFinalize(SafcImmCtHandleT handle) override;
  SaAisErrorT immCtReadSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                     SafcImmCtSchemaVersionT_2* fromVersion,
                                     SafcImmCtSchemaVersionT_2* toVersion) override;
  SaAisErrorT immCtFailUpgrade(SafcImmCtHandleT handle, const char* reason) override;
  SaAisErrorT immCtReadInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                 SafcImmCtInstanceGroupT*** instanceGroups) override;
  SaAisErrorT immCtWriteInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) override;
  SaAisErrorT immCtCopyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) override;
  SaAisErrorT immCtWriteRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                    SafcImmCtInstanceGroupT** instanceGroups) override;
  SaAisErrorT immCtInstanceGroupsMemoryFree(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) override;

  SaAisErrorT logInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks, SaVersionT* version) override;
  SaAisErrorT logStreamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                            const SaLogFileCreateAttributesT_2* attributes, SaLogStreamOpenFlagsT flags,
                            SaTimeT timeout, SaLogStreamHandleT* logStreamHandle) override;
  SaAisErrorT logWriteLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation, SaLogAckFlagsT ackFlags,
                               const SaLogRecordT* logRecord) override;
  SaAisErrorT logFinalize(SaLogHandleT logHandle) override;

  int lmhiGetLms(char* boardType, char* tag, LmhiLms* result) override;
  void lmhiFreeBuffers(LmhiLms* result) override;

  std::optional<std::string> variable(const char* name) override;
  struct timespec monotonicNow() override;
  unsigned int sleepSeconds(unsigned int seconds) override;
};

#endif
