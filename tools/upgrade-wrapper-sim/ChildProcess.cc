#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace wrappersim {

namespace {

std::vector<char*> pointers(const std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (const std::string& text : texts) result.push_back(const_cast<char*>(text.c_str()));
  result.push_back(nullptr);
  return result;
}

}  // namespace

ChildProcess::~ChildProcess() {
  if (pid_ > 0 && !reap()) stop(0);
  closeOutput();
  if (exitFd_ >= 0) ::close(exitFd_);
}

bool ChildProcess::start(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment, std::string* error) {
  // posix_spawn may start a child that cannot execute the program and only
  // exits with status 127 (POSIX allows it; glibc does so under qemu-user),
  // so a program that cannot be executed is refused here, with the reason.
  if (::access(program.c_str(), X_OK) != 0) {
    *error = "cannot start " + program + ": " + std::strerror(errno);
    return false;
  }
  int pipeFds[2];
  if (::pipe2(pipeFds, O_CLOEXEC) != 0) {
    *error = std::string("pipe: ") + std::strerror(errno);
    return false;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, pipeFds[1], STDOUT_FILENO);

  std::vector<std::string> argvTexts{program};
  argvTexts.insert(argvTexts.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv = pointers(argvTexts);
  std::vector<char*> envp = pointers(environment);
  int rc = ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipeFds[1]);
  if (rc != 0) {
    ::close(pipeFds[0]);
    pid_ = -1;
    *error = "cannot start " + program + ": " + std::strerror(rc);
    return false;
  }
  outputFd_ = pipeFds[0];
  ::fcntl(outputFd_, F_SETFL, O_NONBLOCK);
  exitFd_ = static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0));
  if (exitFd_ < 0) {
    *error = std::string("pidfd_open: ") + std::strerror(errno);
    stop(0);
    return false;
  }
  return true;
}

void ChildProcess::closeOutput() {
  if (outputFd_ < 0) return;
  ::close(outputFd_);
  outputFd_ = -1;
}

bool ChildProcess::reap() {
  if (ended_) return true;
  if (pid_ <= 0) return false;
  int status = 0;
  if (::waitpid(pid_, &status, WNOHANG) != pid_) return false;
  ended_ = true;
  waitStatus_ = status;
  return true;
}

bool ChildProcess::waitForEnd(int timeoutMs) {
  if (exitFd_ >= 0) {
    pollfd exitPoll{exitFd_, POLLIN, 0};
    while (::poll(&exitPoll, 1, timeoutMs) < 0 && errno == EINTR) {
    }
  }
  return reap();
}

void ChildProcess::stop(int graceMs) {
  if (pid_ <= 0 || reap()) return;
  if (graceMs > 0) {
    ::kill(pid_, SIGTERM);
    if (waitForEnd(graceMs)) return;
  }
  ::kill(pid_, SIGKILL);
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  ended_ = true;
  waitStatus_ = status;
}

}  // namespace wrappersim
