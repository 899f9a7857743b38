#include "LineSplitter.h"

namespace wrappersim {

std::vector<std::string> LineSplitter::feed(const char* data, size_t size) {
  std::vector<std::string> lines;
  pending_.append(data, size);
  size_t start = 0;
  for (size_t end; (end = pending_.find('\n', start)) != std::string::npos; start = end + 1) {
    lines.push_back(pending_.substr(start, end - start));
  }
  pending_.erase(0, start);
  return lines;
}

std::string LineSplitter::takeRest() {
  std::string rest;
  rest.swap(pending_);
  return rest;
}

}  // namespace wrappersim
