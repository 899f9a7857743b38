#include "SimEnvironment.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::string SimEnvironment::root() { return variable("VOSK_SIM_ROOT"); }

std::string SimEnvironment::out() {
  std::string out = variable("VOSK_SIM_OUT");
  if (!out.empty()) return out;
  std::string root = SimEnvironment::root();
  return root.empty() ? root : root + "/out";
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

void SimEnvironment::reportReason(const char* call, const std::string& reason) {
  std::fprintf(stderr, "simulated node: %s: %s\n", call, reason.c_str());
}
