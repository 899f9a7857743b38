// Everything the framework asks of the world outside the process: the node's
// IMM conversion tool, its log service and its load-module handler (LMHI),
// the process environment, the monotonic clock and sleeping. Nothing else in
// the framework calls a platform library, getenv, clock_gettime or sleep.
//
// Each platform call forwards its arguments unchanged and returns the
// platform's result code (SA_AIS_OK is 1; LMHI answers 0 on success).
//
// A component that calls out gets its Env from whoever builds it. The program
// runs on PlatformEnv::instance(); tests hand in one whose node, clock and
// environment they control. An Env may be used by several threads at once.

#ifndef VOSK_ENV_ENV_H
#define VOSK_ENV_ENV_H

#include <ctime>
#include <optional>
#include <string>

#include "lmhi.h"
#include "saLog.h"
#include "safcImmCt.h"

class Env {
 public:
  virtual ~Env();

  // The IMM conversion tool.
  [[nodiscard]] virtual SaAisErrorT immCtInitialize(SafcImmCtHandleT* handle, SaUint32T mode) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtFinalize(SafcImmCtHandleT handle) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtReadSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                                           SafcImmCtSchemaVersionT_2* fromVersion,
                                                           SafcImmCtSchemaVersionT_2* toVersion) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtFailUpgrade(SafcImmCtHandleT handle, const char* reason) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtReadInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                                       SafcImmCtInstanceGroupT*** instanceGroups) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtWriteInstances(SafcImmCtHandleT handle,
                                                        SafcImmCtInstanceGroupT** instanceGroups) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtCopyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtWriteRtInstances(SafcImmCtHandleT handle,
                                                          const SaImmOiImplementerNameT implementerName,
                                                          SafcImmCtInstanceGroupT** instanceGroups) = 0;
  [[nodiscard]] virtual SaAisErrorT immCtInstanceGroupsMemoryFree(SafcImmCtHandleT handle,
                                                                  SafcImmCtInstanceGroupT** instanceGroups) = 0;

  // The log service.
  [[nodiscard]] virtual SaAisErrorT logInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks,
                                                  SaVersionT* version) = 0;
  [[nodiscard]] virtual SaAisErrorT logStreamOpen(SaLogHandleT logHandle, const SaNameT* logStreamName,
                                                  const SaLogFileCreateAttributesT_2* attributes,
                                                  SaLogStreamOpenFlagsT flags, SaTimeT timeout,
                                                  SaLogStreamHandleT* logStreamHandle) = 0;
  [[nodiscard]] virtual SaAisErrorT logWriteLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                                                     SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord) = 0;
  [[nodiscard]] virtual SaAisErrorT logFinalize(SaLogHandleT logHandle) = 0;

  // The load-module handler. After success the answer belongs to the
  // handler until lmhiFreeBuffers() hands it back.
  [[nodiscard]] virtual int lmhiGetLms(char* boardType, char* tag, LmhiLms* result) = 0;
  virtual void lmhiFreeBuffers(LmhiLms* result) = 0;

  // The value of the environment variable `name`; nothing when it is unset.
  virtual std::optional<std::string> variable(const char* name) = 0;

  // The monotonic clock.
  virtual struct timespec monotonicNow() = 0;
  // Sleeps like sleep(3): returns the seconds left when a signal ended the
  // sleep early, else 0.
  [[nodiscard]] virtual unsigned int sleepSeconds(unsigned int seconds) = 0;

  // Whole milliseconds from `start` to `end`: the seconds and nanoseconds
  // differences are combined in floating point and truncated.
  static int millisecondsBetween(const struct timespec& start, const struct timespec& end);
};

#endif
