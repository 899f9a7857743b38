#include "SimImmOldModel.h"

#include <functional>
#include <queue>
#include <utility>

#include "SimEnvironment.h"
#include "SimImmDumpReader.h"

SimImmOldModel::SimImmOldModel(std::vector<std::string> files)
    : files_(std::move(files)), index_(files_.size()) {}

bool SimImmOldModel::classes(const SimImmClassModel** model, std::string* why) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (classState_ == State::kNotRead) {
    classState_ = classes_.load(files_, &classError_) ? State::kRead : State::kFailed;
  }
  *model = &classes_;
  *why = classError_;
  return classState_ == State::kRead;
}

bool SimImmOldModel::objectsOf(const std::string& className, const Each& each, std::string* why) {
  if (!indexed(why)) return false;
  for (const FileIndex& file : index_) {
    if (!streamFile(file, {className}, each, why)) return false;
  }
  return true;
}

bool SimImmOldModel::streamObjects(const std::set<std::string>& classNames, const Each& each, std::string* why) {
  if (classNames.empty()) return true;
  if (!indexed(why)) return false;
  for (size_t file = 0; file < files_.size(); ++file) {
    bool refused = false;
    auto checked = [&](const SimImmObject& object, std::string* reason) {
      refused = !each(object, reason);
      return !refused;
    };
    if (!streamFile(index_[file], classNames, checked, why)) {
      if (refused) *why = files_[file] + ": " + *why;
      return false;
    }
  }
  return true;
}

bool SimImmOldModel::indexed(std::string* why) {
  const SimImmClassModel* model = nullptr;
  if (!classes(&model, why)) return false;
  std::unique_lock<std::mutex> lock(mutex_);
  return indexAll(&lock, why);
}

bool SimImmOldModel::indexAll(std::unique_lock<std::mutex>* lock, std::string* why) {
  for (size_t file = 0; file < files_.size(); ++file) {
    if (index_[file].state != State::kNotRead) continue;
    index_[file].state = State::kIndexing;
    lock->unlock();
    bool indexed = indexFile(file, &index_[file]);
    lock->lock();
    index_[file].state = indexed ? State::kRead : State::kFailed;
    indexed_.notify_all();
  }
  indexed_.wait(*lock, [this] {
    for (const FileIndex& file : index_) {
      if (file.state == State::kIndexing) return false;
    }
    return true;
  });
  for (const FileIndex& file : index_) {
    if (file.state == State::kFailed) {
      *why = file.error;
      return false;
    }
  }
  return true;
}

void SimImmOldModel::warn(const std::string& path, const std::string& warning) const {
  std::lock_guard<std::mutex> lock(warningsMutex_);
  if (warned_.insert(path + ": " + warning).second) SimEnvironment::reportWarning("old model", path, warning);
}

bool SimImmOldModel::indexFile(size_t file, FileIndex* index) {
  SimImmDumpReader::Handler handler;
  handler.onWarning = [this](const std::string& path, const std::string& warning) { warn(path, warning); };
  std::string undefined;
  uint32_t place = 0;
  handler.onObject = [&](SimImmObject&& object) {
    if (classes_.find(object.className) == nullptr) {
      undefined =
          "line " + std::to_string(object.line) + ": object " + object.dn + " of undefined class " + object.className;
      return false;
    }
    spool_.append(place++, object, &index->objects[object.className]);
    return true;
  };
  SimImmDumpReader reader;
  if (!reader.read(files_[file], handler)) {
    index->error = reader.error();
  } else if (!undefined.empty()) {
    index->error = files_[file] + ": " + undefined;
  }
  if (index->error.empty()) return true;
  index->objects.clear();
  return false;
}

bool SimImmOldModel::streamFile(const FileIndex& file, const std::set<std::string>& classNames, const Each& each,
                                std::string* why) const {
  std::vector<SimImmIndexCursor> cursors;
  for (const std::string& className : classNames) {
    auto found = file.objects.find(className);
    if (found == file.objects.end()) continue;
    cursors.push_back(spool_.cursor(found->second, className));
  }
  // The cursor that stands on the object of lowest place goes next.
  using Head = std::pair<uint32_t, size_t>;  // place, cursor
  std::priority_queue<Head, std::vector<Head>, std::greater<Head>> heads;
  auto advance = [&](size_t cursor) {
    if (cursors[cursor].next()) {
      heads.emplace(cursors[cursor].place(), cursor);
      return true;
    }
    *why = cursors[cursor].error();
    return why->empty();
  };
  for (size_t cursor = 0; cursor < cursors.size(); ++cursor) {
    if (!advance(cursor)) return false;
  }
  while (!heads.empty()) {
    const size_t cursor = heads.top().second;
    heads.pop();
    if (!each(cursors[cursor].object(), why) || !advance(cursor)) return false;
  }
  return true;
}
