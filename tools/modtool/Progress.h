// Progress of long work (indexing a large dump, a dry run of a big node) on
// standard error, one line redrawn in place, only when standard error is a
// terminal: logs and pipes stay clean.

#ifndef VOSK_TOOLS_MODTOOL_PROGRESS_H
#define VOSK_TOOLS_MODTOOL_PROGRESS_H

#include <chrono>
#include <string>

namespace modtool {

class Progress {
 public:
  // Enabled when standard error is a terminal.
  Progress();
  ~Progress() { done(); }

  // "<what>: <count>[/<total>]"; redrawn at most ten times a second.
  void update(const std::string& what, long count, long total = 0);
  // Clears the line.
  void done();

 private:
  bool enabled_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point last_;
};

}  // namespace modtool

#endif
