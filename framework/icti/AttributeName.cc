#include "icti/AttributeName.h"

#include <mutex>
#include <unordered_map>
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
  // The names this thread has asked for, viewing the shared copies.
  thread_local std::unordered_map<std::string_view, const std::string*> known;
  auto it = known.find(text);
  if (it != known.end()) return it->second;
  Names& all = names();
  const std::string* name;
  {
    std::lock_guard<std::mutex> lock(all.mutex);
    name = &*all.set.emplace(text).first;
  }
  known.emplace(*name, name);
  return name;
}
