#include "FrontTrace.h"

#include <cstring>

namespace voskoamupgrader {

FrontTrace::FrontTrace(const char* path, int line, const char* function, const char* text) {
  const char* slash = std::strrchr(path, '/');
  fileAndLine_ = std::string(slash != nullptr ? slash + 1 : path) + ":" + std::to_string(line);
  message_ = std::string(function) + "(): " + (text != nullptr ? text : "");
}

}  // namespace voskoamupgrader
