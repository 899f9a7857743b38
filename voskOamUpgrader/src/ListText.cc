#include "ListText.h"

namespace voskoamupgrader {

namespace {

template <typename Iterator>
std::string bracketed(Iterator begin, Iterator end) {
  std::string text = "[";
  for (Iterator it = begin; it != end; ++it) {
    if (it != begin) text += ",";
    text += *it;
  }
  return text + "]";
}

}  // namespace

std::string listToString(const std::vector<std::string>& elements) {
  return bracketed(elements.begin(), elements.end());
}

std::string listToString(const std::set<std::string>& elements) { return bracketed(elements.begin(), elements.end()); }

}  // namespace voskoamupgrader
