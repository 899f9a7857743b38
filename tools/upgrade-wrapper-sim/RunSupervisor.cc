#include "RunSupervisor.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <limits>

namespace wrappersim {

namespace {

RunOutcome outcomeOf(RunOutcome::Kind kind) {
  RunOutcome outcome;
  outcome.kind = kind;
  return outcome;
}

}  // namespace

const char RunSupervisor::kNeverEndingLoopLine[] =
    "Entering the never ending loop, if you want to terminate this program you are going to have to kill it.";

RunSupervisor::RunSupervisor(WrapperSocket* socket, ChildProcess* child, LineSink lineSink)
    : socket_(socket), child_(child), lineSink_(std::move(lineSink)) {}

RunOutcome RunSupervisor::supervise(double timeoutSeconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline =
      Clock::now() + std::chrono::microseconds(static_cast<long long>(std::llround(timeoutSeconds * 1e6)));
  for (;;) {
    long long leftMs = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    leftMs = std::clamp<long long>(leftMs, 0, std::numeric_limits<int>::max());
    pollfd fds[3] = {{socket_->fd(), POLLIN, 0}, {child_->outputFd(), POLLIN, 0}, {child_->exitFd(), POLLIN, 0}};
    int ready = ::poll(fds, 3, static_cast<int>(leftMs));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) {
      RunOutcome outcome = decide(RunOutcome::Kind::kTimeOut);
      outcome.timeoutSeconds = timeoutSeconds;
      return outcome;
    }
    if ((fds[0].revents & POLLIN) && socket_->acceptPending()) return outcomeOf(RunOutcome::Kind::kSuccess);
    if ((fds[1].revents & (POLLIN | POLLHUP | POLLERR)) && readOutput()) {
      return decide(RunOutcome::Kind::kRolledBack);
    }
    if (fds[2].revents & POLLIN) {
      // What it printed before its end still decides the run.
      if (readOutput()) return decide(RunOutcome::Kind::kRolledBack);
      if (child_->reap()) return socket_->acceptPending() ? outcomeOf(RunOutcome::Kind::kSuccess) : outcomeOfEnd();
    }
  }
}

bool RunSupervisor::readOutput() {
  if (child_->outputFd() < 0) return false;
  char buffer[4096];
  for (;;) {
    ssize_t size = ::read(child_->outputFd(), buffer, sizeof buffer);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return false;  // nothing more for now
    if (size == 0) {
      std::string rest = splitter_.takeRest();
      child_->closeOutput();
      return !rest.empty() && handleLine(rest);
    }
    bool loopLine = false;
    for (const std::string& line : splitter_.feed(buffer, static_cast<size_t>(size))) {
      loopLine = handleLine(line) || loopLine;
    }
    if (loopLine) return true;
  }
}

bool RunSupervisor::handleLine(const std::string& line) {
  if (lineSink_) lineSink_(line);
  return line.find(kNeverEndingLoopLine) != std::string::npos;
}

RunOutcome RunSupervisor::outcomeOfEnd() const {
  RunOutcome outcome;
  int status = child_->waitStatus();
  if (WIFSIGNALED(status)) {
    outcome.kind = RunOutcome::Kind::kCrashed;
    outcome.signal = WTERMSIG(status);
    return outcome;
  }
  outcome.exitStatus = WEXITSTATUS(status);
  outcome.kind = outcome.exitStatus >= 1 && outcome.exitStatus <= 6 ? RunOutcome::Kind::kFrontFailed
                                                                     : RunOutcome::Kind::kUnexpectedExit;
  return outcome;
}

RunOutcome RunSupervisor::decide(RunOutcome::Kind withoutConnect) const {
  return outcomeOf(socket_->acceptPending() ? RunOutcome::Kind::kSuccess : withoutConnect);
}

}  // namespace wrappersim
