// How a run of the upgrader ended, as the wrapper saw it, and what that means
// for the wrapper's own exit status and report.

#ifndef VOSK_TOOLS_RUN_OUTCOME_H
#define VOSK_TOOLS_RUN_OUTCOME_H

#include <string>

namespace wrappersim {

struct RunOutcome {
  enum class Kind {
    kSuccess,              // the upgrader connected to the wrapper socket
    kRolledBack,           // it entered the never-ending loop without a connect
    kConnectedRolledBack,  // it connected, but a rollback was requested
    kFrontFailed,          // it exited with an AppResult code 1..6
    kTimeOut,              // nothing decided the run before the time-out
    kCrashed,              // it was ended by a signal (an abort included)
    kUnexpectedExit,       // it exited with a status that is no front failure
  };

  Kind kind = Kind::kTimeOut;
  int exitStatus = 0;        // kFrontFailed, kUnexpectedExit
  int signal = 0;            // kCrashed
  double timeoutSeconds = 0;  // kTimeOut

  // A rollback request outweighs a connect: the node rolls back whatever the
  // upgrader signalled. The other outcomes stay as they are.
  void noteRollbackRequest();

  // True when the node rolls back after the run.
  bool rollsBack() const { return kind == Kind::kRolledBack || kind == Kind::kConnectedRolledBack; }
  // The wrapper's exit status: 0 success, 1 rolled back, 2 front failed,
  // 3 time-out or crash.
  int wrapperExitStatus() const;
  // One line, without line end, starting with "Outcome: ".
  std::string describe() const;
};

// "SIGABRT" and the like; "signal n" when the number has no name.
std::string signalName(int signal);

}  // namespace wrappersim

#endif
