// Failure injection for the simulated node, driven by VOSK_SIM_FAULTS:
// comma-separated items "<call>[@<subject>]=<code>[x<count>]". A matching
// call returns <code> instead of doing its work, for its first <count>
// matching calls or always. <call> is the platform function's name without
// prefix and version suffix ("Initialize", "LogWriteLogAsync", "get_lms");
// <subject> narrows an item to one class, schema or board type.
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
  };

  void parse(const std::string& faults);

  std::mutex mutex_;
  std::vector<Item> items_;
  std::vector<std::string> malformed_;
};

#endif
