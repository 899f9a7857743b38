#include "QuietLog.h"

#include "common/PersistentLog.h"

namespace modtool {

QuietLog& QuietLog::install() {
  static QuietLog log;
  PersistentLog::useWrapper(&log);
  return log;
}

SaAisErrorT QuietLog::initialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) {
  *logHandle = 1;
  return SA_AIS_OK;
}

SaAisErrorT QuietLog::streamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*,
                                 SaLogStreamOpenFlagsT, SaTimeT, SaLogStreamHandleT* logStreamHandle) {
  *logStreamHandle = 1;
  return SA_AIS_OK;
}

}  // namespace modtool
