#include "SimImmOldModel.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "SimEnvironment.h"
#include "SimImmDumpReader.h"
#include "SimImmObjectCodec.h"

SimImmOldModel::SimImmOldModel(std::vector<std::string> files)
    : files_(std::move(files)), index_(files_.size()), spool_(std::tmpfile()) {}

SimImmOldModel::~SimImmOldModel() {
  if (spool_ != nullptr) std::fclose(spool_);
}

bool SimImmOldModel::classes(const SimImmClassModel** model, std::string* why) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (classState_ == State::kNotRead) {
    classState_ = classes_.load(files_, &classError_) ? State::kRead : State::kFailed;
  }
  *model = &classes_;
  *why = classError_;
  return classState_ == State::kRead;
}

bool SimImmOldModel::objectsOf(const std::string& className, std::vector<SimImmObject>* objects, std::string* why) {
  const SimImmClassModel* model = nullptr;
  if (!classes(&model, why)) return false;
  {
    std::unique_lock<std::mutex> lock(mutex_);
    if (!indexAll(&lock, why)) return false;
  }
  std::string encoded;
  for (const FileIndex& file : index_) {
    auto found = file.objects.find(className);
    if (found != file.objects.end() && !load(found->second, &encoded, why)) return false;
  }
  objects->clear();
  SimImmObjectCodec::decode(encoded, className,
                            [objects](SimImmObject&& object) { objects->push_back(std::move(object)); });
  return true;
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

bool SimImmOldModel::load(const ClassObjects& objects, std::string* encoded, std::string* why) const {
  for (const auto& run : objects.runs) {
    size_t start = encoded->size();
    encoded->resize(start + run.second);
    if (::pread(fileno(spool_), &(*encoded)[start], run.second, run.first) != static_cast<ssize_t>(run.second)) {
      *why = std::string("cannot read the index of the old model: ") + std::strerror(errno);
      return false;
    }
  }
  *encoded += objects.pending;
  return true;
}

void SimImmOldModel::add(const SimImmObject& object, ClassObjects* objects) {
  SimImmObjectCodec::encode(object, &objects->pending);
  if (spool_ == nullptr || objects->pending.size() < kRunSize) return;
  std::lock_guard<std::mutex> lock(spoolMutex_);
  long offset = std::ftell(spool_);
  if (offset >= 0 &&
      std::fwrite(objects->pending.data(), 1, objects->pending.size(), spool_) == objects->pending.size() &&
      std::fflush(spool_) == 0) {
    objects->runs.emplace_back(offset, objects->pending.size());
    objects->pending.clear();
  }
}

void SimImmOldModel::warn(const std::string& path, const std::string& warning) const {
  std::lock_guard<std::mutex> lock(warningsMutex_);
  if (warned_.insert(path + ": " + warning).second) SimEnvironment::reportWarning("old model", path, warning);
}

bool SimImmOldModel::indexFile(size_t file, FileIndex* index) {
  SimImmDumpReader::Handler handler;
  handler.onWarning = [this](const std::string& path, const std::string& warning) { warn(path, warning); };
  std::string undefined;
  handler.onObject = [&](SimImmObject&& object) {
    if (classes_.find(object.className) == nullptr) {
      undefined =
          "line " + std::to_string(object.line) + ": object " + object.dn + " of undefined class " + object.className;
      return false;
    }
    add(object, &index->objects[object.className]);
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

std::vector<std::string> SimImmOldModel::filesHolding(const std::set<std::string>& classNames) {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<std::string> files;
  for (size_t file = 0; file < files_.size(); ++file) {
    if (index_[file].state != State::kRead) return files_;
    for (const std::string& className : classNames) {
      if (index_[file].objects.count(className) != 0) {
        files.push_back(files_[file]);
        break;
      }
    }
  }
  return files;
}

bool SimImmOldModel::streamObjects(const std::set<std::string>& classNames, const Each& each, std::string* why) {
  if (classNames.empty()) return true;
  bool refused = false;
  SimImmDumpReader::Handler handler;
  handler.onWarning = [this](const std::string& path, const std::string& warning) { warn(path, warning); };
  handler.wantObject = [&](const std::string& className) { return classNames.count(className) != 0; };
  handler.onObject = [&](SimImmObject&& object) {
    refused = !each(object, why);
    return !refused;
  };
  for (const std::string& file : filesHolding(classNames)) {
    SimImmDumpReader reader;
    if (!reader.read(file, handler)) {
      *why = reader.error();
      return false;
    }
    if (refused) {
      *why = file + ": " + *why;
      return false;
    }
  }
  return true;
}
