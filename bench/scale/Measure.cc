// Runs a command and prints what it cost, for the whole-run scale benchmark:
//
//   vosk-bench-measure COMMAND [ARG]...
//   -> "<wall seconds> <peak RSS in KiB> <exit status>" on standard error
//
// The peak RSS is the largest of the command and of every process it waited
// for (a wrapper and the program it starts), as the kernel accounts it.
// The command's own output goes where this program's goes.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: vosk-bench-measure COMMAND [ARG]...\n");
    return 2;
  }
  auto start = std::chrono::steady_clock::now();
  pid_t child = fork();
  if (child == 0) {
    execvp(argv[1], argv + 1);
    std::perror(argv[1]);
    _exit(127);
  }
  int status = 0;
  struct rusage usage {};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) {
    std::perror("vosk-bench-measure");
    return 2;
  }
  std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  int exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  std::fprintf(stderr, "%.2f %ld %d\n", wall.count(), usage.ru_maxrss, exitStatus);
  return 0;
}
