#include "RunOutcome.h"

#include <cstdio>
#include <cstring>

#include "AppResult.h"

namespace wrappersim {

namespace {

// The front's name of an exit status, "NOT_DECODED (n)" for one it has no
// name for.
std::string appResultName(int code) {
  return voskoamupgrader::appResultToString(static_cast<voskoamupgrader::AppResult>(code));
}

std::string seconds(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

std::string signalName(int signal) {
  const char* abbreviation = sigabbrev_np(signal);
  if (abbreviation == nullptr) return "signal " + std::to_string(signal);
  return std::string("SIG") + abbreviation;
}

void RunOutcome::noteRollbackRequest() {
  if (kind == Kind::kSuccess) kind = Kind::kConnectedRolledBack;
}

int RunOutcome::wrapperExitStatus() const {
  switch (kind) {
    case Kind::kSuccess:
      return 0;
    case Kind::kRolledBack:
    case Kind::kConnectedRolledBack:
      return 1;
    case Kind::kFrontFailed:
      return 2;
    case Kind::kTimeOut:
    case Kind::kCrashed:
    case Kind::kUnexpectedExit:
      break;
  }
  return 3;
}

std::string RunOutcome::describe() const {
  switch (kind) {
    case Kind::kSuccess:
      return "Outcome: success, the upgrader connected to the wrapper socket";
    case Kind::kRolledBack:
      return "Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node rolls "
             "back";
    case Kind::kConnectedRolledBack:
      return "Outcome: upgrade failed, the upgrader connected to the wrapper socket, but a rollback was requested; the "
             "node rolls back";
    case Kind::kFrontFailed:
      return "Outcome: front failed with exit status " + std::to_string(exitStatus) + " (" +
             appResultName(exitStatus) + ")";
    case Kind::kTimeOut:
      return "Outcome: time-out, no outcome within " + seconds(timeoutSeconds) + " s";
    case Kind::kCrashed:
      return "Outcome: crash, the upgrader was ended by signal " + std::to_string(signal) + " (" +
             signalName(signal) + ")";
    case Kind::kUnexpectedExit:
      return "Outcome: crash, the upgrader exited with unexpected status " + std::to_string(exitStatus) + " (" +
             appResultName(exitStatus) + ")";
  }
  return "Outcome: unknown";
}

}  // namespace wrappersim
