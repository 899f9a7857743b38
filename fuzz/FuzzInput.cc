#include "FuzzInput.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "common/DiscardingLog.h"
#include "common/PersistentLog.h"

FuzzFile::FuzzFile(const uint8_t* data, size_t size) : fd_(memfd_create("fuzz-input", 0)) {
  if (fd_ < 0) {
    std::perror("memfd_create");
    std::abort();
  }
  for (size_t written = 0; written < size;) {
    ssize_t n = ::write(fd_, data + written, size - written);
    if (n <= 0) {
      std::perror("write");
      std::abort();
    }
    written += static_cast<size_t>(n);
  }
  path_ = "/proc/self/fd/" + std::to_string(fd_);
}

FuzzFile::~FuzzFile() { ::close(fd_); }

void fuzzQuietProcess() {
  static const bool done = [] {
    static DiscardingLog log;
    PersistentLog::chooseEnv(log);
    if (std::freopen("/dev/null", "w", stdout) == nullptr) std::abort();
    return true;
  }();
  (void)done;
}
