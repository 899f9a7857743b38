#include "RunOutcome.h"

#include <cstdio>
#include <cstring>

namespace wrappersim {

namespace {

const char* const kAppResultNames[] = {
    "APP_RESULT_OK",
    "APP_RESULT_NO_WPK_ROOT",
    "APP_RESULT_FAILED_TO_FIND_MODS",
    "APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE",
    "APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE",
    "APP_RESULT_FAILED_TO_FIND_IMM_FILE",
    "APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME",
};
const int kAppResultCount = sizeof kAppResultNames / sizeof kAppResultNames[0];

std::string seconds(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

std::string appResultName(int code) {
  if (code >= 0 && code < kAppResultCount) return kAppResultNames[code];
  return "NOT_DECODED (" + std::to_string(code) + ")";
}

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
