// Watches a started upgrader until its outcome is known: a connect to the
// wrapper socket (success), the never-ending-loop line without a connect
// (failure, the node rolls back), its end (front failure or crash), or the
// time-out. One poll() waits on the socket, the output pipe and the child's
// end; nothing sleeps.

#ifndef VOSK_TOOLS_RUN_SUPERVISOR_H
#define VOSK_TOOLS_RUN_SUPERVISOR_H

#include <functional>
#include <string>

#include "ChildProcess.h"
#include "LineSplitter.h"
#include "RunOutcome.h"
#include "WrapperSocket.h"

namespace wrappersim {

class RunSupervisor {
 public:
  // What the upgrader prints once it has run all schemas.
  static const char kNeverEndingLoopLine[];

  using LineSink = std::function<void(const std::string& line)>;

  // `lineSink` receives every line the upgrader prints (may be empty).
  RunSupervisor(WrapperSocket* socket, ChildProcess* child, LineSink lineSink);

  // Waits for the outcome; the child may still run afterwards.
  RunOutcome supervise(double timeoutSeconds);

 private:
  // Reads what the pipe holds; true when the never-ending-loop line came.
  bool readOutput();
  bool handleLine(const std::string& line);
  RunOutcome outcomeOfEnd() const;
  // After the loop line or the end: a connect may wait in the backlog,
  // because the upgrader connects before it prints.
  RunOutcome decide(RunOutcome::Kind withoutConnect) const;

  WrapperSocket* socket_;
  ChildProcess* child_;
  LineSink lineSink_;
  LineSplitter splitter_;
};

}  // namespace wrappersim

#endif
