#include "SimEnvironment.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::string SimEnvironment::root() { return variable("VOSK_SIM_ROOT"); }

std::string SimEnvironment::faults() { return variable("VOSK_SIM_FAULTS"); }

long SimEnvironment::killAfter(const char* name) {
  const std::string text = variable(name);
  char* end = nullptr;
  long value = !text.empty() ? std::strtol(text.c_str(), &end, 10) : -1;
  return !text.empty() && *end == '\0' && value >= 0 ? value : -1;
}

std::string SimEnvironment::out() {
  std::string out = variable("VOSK_SIM_OUT");
  if (!out.empty()) return out;
  std::string root = SimEnvironment::root();
  return root.empty() ? root : root + "/out";
}

bool SimEnvironment::isRegularFile(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool SimEnvironment::makeDirectories(const std::string& path) {
  for (size_t pos = 1; pos <= path.size(); ++pos) {
    if (pos != path.size() && path[pos] != '/') continue;
    std::string prefix = path.substr(0, pos);
    if (::mkdir(prefix.c_str(), 0755) != 0 && errno != EEXIST) return false;
  }
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

void SimEnvironment::reportReason(const char* call, const std::string& subject, int code,
                                  const std::string& reason) {
  record(std::string(call) + " [" + subject + "] error " + std::to_string(code) + ": " + reason + "\n");
}

void SimEnvironment::reportWarning(const char* source, const std::string& subject, const std::string& text) {
  record(std::string(source) + " [" + subject + "] warning: " + text + "\n");
}

void SimEnvironment::record(const std::string& line) {
  static std::mutex mutex;
  std::lock_guard<std::mutex> lock(mutex);
  std::fprintf(stderr, "simulated node: %s", line.c_str());
  std::string folder = out();
  if (folder.empty() || !makeDirectories(folder)) return;
  if (FILE* file = std::fopen((folder + "/platform-errors.log").c_str(), "a")) {
    std::fputs(line.c_str(), file);
    std::fclose(file);
  }
}
