#include "SimImmVersions.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "SimEnvironment.h"

namespace {

// A line a schema, so even a node of many thousand schemas stays far below
// this; a larger file is no versions file, and reading it would take the
// process's memory and time.
const off_t kMaxSize = 16 << 20;

bool parseNumber(const std::string& text, SaUint32T* value) {
  if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != std::string::npos) return false;
  *value = static_cast<SaUint32T>(std::strtoul(text.c_str(), nullptr, 10));
  return true;
}

}  // namespace

bool SimImmVersions::parseVersion(const std::string& text, SafcImmCtSchemaVersionT_2* version) {
  size_t first = text.find('_');
  size_t second = first == std::string::npos ? first : text.find('_', first + 1);
  if (second == std::string::npos) return false;
  return parseNumber(text.substr(0, first), &version->version) &&
         parseNumber(text.substr(first + 1, second - first - 1), &version->release) &&
         parseNumber(text.substr(second + 1), &version->correction);
}

SimImmVersions::Result SimImmVersions::find(const std::string& path, const std::string& schemaName,
                                            SafcImmCtSchemaVersionT_2* from, SafcImmCtSchemaVersionT_2* to,
                                            std::string* why) {
  if (!SimEnvironment::isRegularFile(path)) {
    *why = "cannot read " + path + ": not a regular file";
    return Result::kUnreadable;
  }
  struct stat st;
  if (::stat(path.c_str(), &st) == 0 && st.st_size > kMaxSize) {
    *why = "cannot read " + path + ": " + std::to_string(st.st_size) + " bytes, a versions file has at most " +
           std::to_string(kMaxSize);
    return Result::kUnreadable;
  }
  std::ifstream in(path);
  if (!in) {
    *why = "cannot read " + path + ": " + std::strerror(errno);
    return Result::kUnreadable;
  }
  Result result = Result::kNotListed;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    line = line.substr(0, line.find('#'));
    std::istringstream words(line);
    std::string name, fromText, toText, extra;
    if (!(words >> name)) continue;
    SafcImmCtSchemaVersionT_2 lineFrom{}, lineTo{};
    if (!(words >> fromText >> toText) || (words >> extra) || !parseVersion(fromText, &lineFrom) ||
        !parseVersion(toText, &lineTo)) {
      *why = path + ":" + std::to_string(number) + ": expected \"<schemaName> <V_R_C> <V_R_C>\"";
      return Result::kUnreadable;
    }
    if (name == schemaName && result == Result::kNotListed) {
      *from = lineFrom;
      *to = lineTo;
      result = Result::kFound;
    }
  }
  if (result == Result::kNotListed) *why = "schema " + schemaName + " is not listed in " + path;
  return result;
}
