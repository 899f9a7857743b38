// The simulated IMM conversion tool of one process: its open sessions, and
// the runs they write to. Behind the C calls of safcImmCt.h; safe from
// several threads (one session per schema thread of the program).
//
// A run is everything this process writes into one output folder
// ($VOSK_SIM_OUT). An upgrade-failure request appends its reason to
// <out>/rollback and turns the run into a rolled-back one: the models its
// sessions finalized before are moved from <out>/model to <out>/discarded,
// and those finalized later go there too. A rollback file already present
// when a session finalizes sends its model to discarded/ as well. A request
// may come without a session (handle kNoSession), from an upgrader that
// could not open one: it goes to the output folder the environment names.
//
// Every refused call is recorded with SimEnvironment::reportReason.

#ifndef VOSK_SIM_SIM_IMM_TOOL_H
#define VOSK_SIM_SIM_IMM_TOOL_H

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "SimImmSession.h"
#include "safcImmCt.h"

class SimImmTool {
 public:
  static constexpr SafcImmCtHandleT kNoSession = 0;

  static SimImmTool& instance();

  SaAisErrorT initialize(SafcImmCtHandleT* handle, SaUint32T mode);
  SaAisErrorT readSchemaVersion(SafcImmCtHandleT handle, const char* schemaName, SafcImmCtSchemaVersionT_2* from,
                                SafcImmCtSchemaVersionT_2* to);
  SaAisErrorT failUpgrade(SafcImmCtHandleT handle, const char* reason);
  SaAisErrorT finalize(SafcImmCtHandleT handle);

  using Work = std::function<SaAisErrorT(SimImmSession&, std::string* why)>;

  // Runs `work` on the session of `handle` unless VOSK_SIM_FAULTS injects a
  // result for `faultName` and the subject (`subject`, or the session's
  // schema when null) or the handle is unknown. A refusal is reported under
  // `call`.
  SaAisErrorT run(const char* call, const char* faultName, SafcImmCtHandleT handle, const char* subject,
                  const Work& work);

 private:
  struct Run {
    bool rolledBack = false;
    std::vector<std::string> finalized;  // models of this run in model/
  };

  // Does `work` unless VOSK_SIM_FAULTS injects a result for `faultName` and
  // `subject`; a refusal is reported under `call`.
  SaAisErrorT attempt(const char* call, const char* faultName, const std::string& subject,
                      const std::function<SaAisErrorT(std::string* why)>& work);
  std::shared_ptr<SimImmSession> find(SafcImmCtHandleT handle);
  // The schema's claim: false when another open session converts it into the
  // same output folder.
  bool claim(SafcImmCtHandleT handle, const std::string& schemaName);
  void close(SafcImmCtHandleT handle);
  // Moves the finished model `temp` into model/ or discarded/ of `outDir`.
  SaAisErrorT commit(const std::string& outDir, const std::string& temp, const std::string& schemaName,
                     std::string* why);
  SaAisErrorT rollback(const std::string& outDir, const char* reason, std::string* why);

  std::mutex sessionsMutex_;
  std::map<SafcImmCtHandleT, std::shared_ptr<SimImmSession>> sessions_;
  SafcImmCtHandleT nextHandle_ = 1;
  std::mutex runsMutex_;
  std::map<std::string, Run> runs_;  // by output folder
};

#endif
