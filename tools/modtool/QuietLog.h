// The persistent log of vosk-modtool's own process: the framework's parts
// log as they do in the upgrader, but here the records go nowhere: the
// tool reports for itself, and running it never writes a node's log.

#ifndef VOSK_TOOLS_MODTOOL_QUIET_LOG_H
#define VOSK_TOOLS_MODTOOL_QUIET_LOG_H

#include "common/SaLogWrapperIf.h"

namespace modtool {

class QuietLog : public SaLogWrapperIf {
 public:
  // Makes the process's persistent log this one; call before anything logs.
  static QuietLog& install();

  SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) override;
  SaAisErrorT streamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT,
                         SaTimeT, SaLogStreamHandleT* logStreamHandle) override;
  SaAisErrorT writeLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*) override {
    return SA_AIS_OK;
  }
  SaAisErrorT finalize(SaLogHandleT) override { return SA_AIS_OK; }
};

}  // namespace modtool

#endif
