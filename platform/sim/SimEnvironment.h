// Where the simulated node lives: VOSK_SIM_ROOT names the node's directory,
// VOSK_SIM_OUT the folder the platform writes to (default: <root>/out).

#ifndef VOSK_SIM_SIM_ENVIRONMENT_H
#define VOSK_SIM_SIM_ENVIRONMENT_H

#include <string>

class SimEnvironment {
 public:
  // Empty when VOSK_SIM_ROOT is unset or empty.
  static std::string root();
  // Empty when neither VOSK_SIM_OUT nor VOSK_SIM_ROOT is set.
  static std::string out();

  // Creates `path` and its missing parents; false when that fails.
  static bool makeDirectories(const std::string& path);

  // Writes a line about a refused call to standard error, so that a user of
  // the simulated node sees why a call failed.
  static void reportReason(const char* call, const std::string& reason);

  SimEnvironment() = delete;
};

#endif
