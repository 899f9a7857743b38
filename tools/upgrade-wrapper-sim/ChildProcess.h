// The upgrader as a child process: started with a given argument list and
// environment, its standard output on a pipe, its end observable through a
// process file descriptor, so one poll() can wait for all of it.

#ifndef VOSK_TOOLS_CHILD_PROCESS_H
#define VOSK_TOOLS_CHILD_PROCESS_H

#include <sys/types.h>

#include <string>
#include <vector>

namespace wrappersim {

class ChildProcess {
 public:
  ChildProcess() = default;
  // Stops a child still running (SIGKILL at once) and closes the descriptors.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Starts `program` with `arguments` (after its name) and `environment`
  // (NAME=VALUE entries); standard input is /dev/null, standard error is
  // shared with the wrapper. False with a reason when it cannot be started.
  bool start(const std::string& program, const std::vector<std::string>& arguments,
             const std::vector<std::string>& environment, std::string* error);

  pid_t pid() const { return pid_; }
  // Readable while the child writes; end of file once every writer is gone.
  // -1 after closeOutput().
  int outputFd() const { return outputFd_; }
  void closeOutput();
  // Readable once the child has ended.
  int exitFd() const { return exitFd_; }

  // Collects the child's end without blocking; true once it has ended.
  bool reap();
  bool ended() const { return ended_; }
  // The wait status; meaningful once ended.
  int waitStatus() const { return waitStatus_; }

  // Ends a running child: SIGTERM, then SIGKILL when it has not ended within
  // `graceMs`; returns once it is reaped.
  void stop(int graceMs);

 private:
  bool waitForEnd(int timeoutMs);

  pid_t pid_ = -1;
  int outputFd_ = -1;
  int exitFd_ = -1;
  bool ended_ = false;
  int waitStatus_ = 0;
};

}  // namespace wrappersim

#endif
