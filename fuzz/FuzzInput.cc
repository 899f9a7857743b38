#include "FuzzInput.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "common/PersistentLog.h"
#include "common/SaLogWrapperIf.h"

namespace {

// A log service that accepts every record and keeps none.
class DiscardingLog : public SaLogWrapperIf {
 public:
  SaAisErrorT initialize(SaLogHandleT* logHandle, const SaLogCallbacksT*, SaVersionT*) override {
    *logHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT streamOpen(SaLogHandleT, const SaNameT*, const SaLogFileCreateAttributesT_2*, SaLogStreamOpenFlagsT,
                         SaTimeT, SaLogStreamHandleT* logStreamHandle) override {
    *logStreamHandle = 1;
    return SA_AIS_OK;
  }
  SaAisErrorT writeLogAsync(SaLogStreamHandleT, SaInvocationT, SaLogAckFlagsT, const SaLogRecordT*) override {
    return SA_AIS_OK;
  }
  SaAisErrorT finalize(SaLogHandleT) override { return SA_AIS_OK; }
};

}  // namespace

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
    PersistentLog::useWrapper(&log);
    if (std::freopen("/dev/null", "w", stdout) == nullptr) std::abort();
    return true;
  }();
  (void)done;
}
