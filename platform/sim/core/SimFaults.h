// Failure injection for the simulated node, driven by VOSK_SIM_FAULTS:
// comma-separated items "<call>[@<subject>]=<code>[x<count>][+<good>]". A
// matching call returns <code> instead of doing its work, for its first
// <count> matching calls or always, after the first <good> matching calls
// were let through. <call> is the platform function's name without
// prefix and version suffix ("Initialize", "LogWriteLogAsync", "get_lms");
// <subject> narrows an item to one class, schema or board type.
//
// Kill points, for crash tests: VOSK_SIM_KILL_AFTER=<n> ends the process
// with SIGKILL when the platform call after the first <n> calls starts (every
// call that failure injection sees counts, the log and load-module calls
// too); VOSK_SIM_KILL_AFTER_OBJECTS=<n> does so once <n> objects are in the
// model files being written, in the middle of a finalize.
//
// Safe to use from several threads at once.

#ifndef VOSK_SIM_SIM_FAULTS_H
#define VOSK_SIM_SIM_FAULTS_H

#include <mutex>
#include <string>
#include <vector>

class SimFaults {
 public:
  // The faults of this process, parsed from the environment on first use.
  static SimFaults& instance();

  explicit SimFaults(const std::string& faults);

  // The code to return instead of doing the call, or 0 to do it.
  int inject(const char* call, const char* subject = nullptr);

  // Counts one object put into a model file; true when the process is to be
  // killed now (the caller makes what it wrote visible first, then kill()).
  bool objectWritten();
  [[noreturn]] static void kill();

  // Items that did not parse, for the caller to report.
  const std::vector<std::string>& malformedItems() const { return malformed_; }

  // Parses the environment again (tests change it between cases).
  static void reload();

 private:
  struct Item {
    std::string call;
    std::string subject;  // empty: any subject
    int code;
    long remaining;  // -1: always
    long good;       // matching calls still let through before the first failure
  };

  void parse(const std::string& faults);

  std::mutex mutex_;
  std::vector<Item> items_;
  std::vector<std::string> malformed_;
  long killAfterCalls_ = -1;  // -1: never
  long killAfterObjects_ = -1;
  long calls_ = 0;
  long objects_ = 0;
};

#endif
