#include "icti/AttributeName.h"

#include <mutex>
#include <unordered_set>

namespace {

struct Names {
  std::mutex mutex;
  std::unordered_set<std::string> set;  // node-based: addresses stay valid
};

// Never destroyed: threads may still end attributes while statics go away.
Names& names() {
  static Names* names = new Names;
  return *names;
}

}  // namespace

const std::string* AttributeName::of(std::string_view text) {
  thread_local const std::string* last = nullptr;
  if (last != nullptr && *last == text) return last;
  Names& all = names();
  std::lock_guard<std::mutex> lock(all.mutex);
  last = &*all.set.emplace(text).first;
  return last;
}
