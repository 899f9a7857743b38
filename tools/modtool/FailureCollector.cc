#include "FailureCollector.h"

#include <cstdlib>

namespace modtool {

long FailureCollector::lineOf(const std::string& context, const std::string& file) {
  // The file name may itself hold colons: it is known, so it is skipped whole.
  const std::string prefix = "at " + file + ":";
  if (context.compare(0, prefix.size(), prefix) != 0) return 0;
  return std::strtol(context.c_str() + prefix.size(), nullptr, 10);
}

}  // namespace modtool
