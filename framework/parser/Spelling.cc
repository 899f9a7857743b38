#include "parser/Spelling.h"

#include <algorithm>
#include <cctype>

namespace {

bool sameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> previous(b.size() + 1), current(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) previous[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    current[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replace = previous[j - 1] + (sameLetter(a[i - 1], b[j - 1]) ? 0 : 1);
      current[j] = std::min({previous[j] + 1, current[j - 1] + 1, replace});
    }
    previous.swap(current);
  }
  return previous[b.size()];
}

}  // namespace

std::string Spelling::closest(const std::string& written, const std::vector<std::string>& known) {
  std::string best;
  size_t bestDistance = 0;
  for (const std::string& name : known) {
    const size_t distance = editDistance(written, name);
    if (best.empty() || distance < bestDistance) {
      best = name;
      bestDistance = distance;
    }
  }
  return best;
}

std::string Spelling::suggestion(const std::string& written, const std::vector<std::string>& known) {
  const std::string best = closest(written, known);
  // A name that shares little with what was written would mislead.
  if (best.empty() || editDistance(written, best) * 2 > std::max(written.size(), best.size())) return std::string();
  return " (did you mean " + best + "?)";
}
