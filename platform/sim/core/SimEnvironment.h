// Where the simulated node lives: VOSK_SIM_ROOT names the node's directory,
// VOSK_SIM_OUT the folder the platform writes to (default: <root>/out), and
// VOSK_SIM_FAULTS the failures to inject, VOSK_SIM_KILL_AFTER* its kill
// points. The only reader of the environment
// in the simulated node.

#ifndef VOSK_SIM_SIM_ENVIRONMENT_H
#define VOSK_SIM_SIM_ENVIRONMENT_H

#include <string>

class SimEnvironment {
 public:
  // Empty when VOSK_SIM_ROOT is unset or empty.
  static std::string root();
  // Empty when neither VOSK_SIM_OUT nor VOSK_SIM_ROOT is set.
  static std::string out();
  // The items of VOSK_SIM_FAULTS (see SimFaults); empty when it is unset.
  static std::string faults();
  // The count a kill point variable (VOSK_SIM_KILL_AFTER,
  // VOSK_SIM_KILL_AFTER_OBJECTS) gives; -1 when it is unset or no whole
  // number of at least 0.
  static long killAfter(const char* name);

  // Creates `path` and its missing parents; false when that fails.
  static bool makeDirectories(const std::string& path);
  // Whether `path` names a regular file (after symbolic links). The node's
  // readers refuse anything else: a FIFO would block them for ever.
  static bool isRegularFile(const std::string& path);

  // Records why a call was refused, so that a user of the simulated node sees
  // why a call failed: one line "<call> [<subject>] error <code>: <reason>" on
  // standard error and, when an output folder is known, appended to
  // <out>/platform-errors.log before this returns. Safe from several threads.
  static void reportReason(const char* call, const std::string& subject, int code, const std::string& reason);
  // Records something the node takes but a user should know of, the same
  // way: "<source> [<subject>] warning: <text>".
  static void reportWarning(const char* source, const std::string& subject, const std::string& text);

  SimEnvironment() = delete;

 private:
  static void record(const std::string& line);
};

#endif
