// The old model of the simulated node: the IMM XML files of imm/old, in name
// order. Shared by all sessions of a process and safe from several threads.
//
// The first read of a class indexes the whole dump in one streaming pass:
// each object is kept compactly (its text, no records) with the other
// objects of its class, so a later read of any class decodes only that
// class's objects and no read parses the dump again. Each file is indexed
// on its own: sessions that read at the same time index different files at
// once, and a read decodes outside the model's lock. The compact objects go
// to an anonymous spool file in runs of about a megabyte a class, so memory
// stays small however large the dump. Copies go through the files instead
// (streamObjects), one object at a time, and once the dump is indexed only
// through the files that hold objects of the copied classes: on a node whose
// schemas have a file each, a session's copy reads its own schema's file.

#ifndef VOSK_SIM_SIM_IMM_OLD_MODEL_H
#define VOSK_SIM_SIM_IMM_OLD_MODEL_H

#include <condition_variable>
#include <cstdio>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "SimImmClassModel.h"
#include "SimImmObject.h"

class SimImmOldModel {
 public:
  explicit SimImmOldModel(std::vector<std::string> files);
  ~SimImmOldModel();
  SimImmOldModel(const SimImmOldModel&) = delete;
  SimImmOldModel& operator=(const SimImmOldModel&) = delete;

  // The class definitions, read once. False, with `why` set, when the files
  // do not give them.
  bool classes(const SimImmClassModel** model, std::string* why);

  // The objects of `className` in file order (empty for a class without
  // objects). False, with `why` set, when the dump cannot be indexed: it is
  // malformed or holds objects of undefined classes.
  bool objectsOf(const std::string& className, std::vector<SimImmObject>* objects, std::string* why);

  // Hands each object of `classNames` to `each`, straight from the files, in
  // file order. `each` may refuse an object (false, with `why` set): the
  // stream then stops, and `why` is given the object's file in front.
  using Each = std::function<bool(const SimImmObject&, std::string* why)>;
  bool streamObjects(const std::set<std::string>& classNames, const Each& each, std::string* why);

 private:
  enum class State { kNotRead, kIndexing, kRead, kFailed };

  // The compact objects of one class: runs in the spool file, then the
  // last ones in memory.
  struct ClassObjects {
    std::vector<std::pair<long, size_t>> runs;  // offset, size
    std::string pending;
  };
  // The index of one file.
  struct FileIndex {
    State state = State::kNotRead;
    std::string error;
    std::map<std::string, ClassObjects> objects;
  };
  static constexpr size_t kRunSize = 1 << 20;

  // Indexes the files no session indexes yet, then waits for the others.
  // False, with `why` set to the first file's failure, when a file fails.
  // Called with `lock` held; the index is complete and unchanging after.
  bool indexAll(std::unique_lock<std::mutex>* lock, std::string* why);
  bool indexFile(size_t file, FileIndex* index);
  // Reports a warning of the reader once, however often the files are read.
  void warn(const std::string& path, const std::string& warning) const;
  void add(const SimImmObject& object, ClassObjects* objects);
  // The files a stream of `classNames` must read: those that hold their
  // objects once the dump is indexed, else all.
  std::vector<std::string> filesHolding(const std::set<std::string>& classNames);
  bool load(const ClassObjects& objects, std::string* encoded, std::string* why) const;

  const std::vector<std::string> files_;
  std::mutex mutex_;
  State classState_ = State::kNotRead;
  SimImmClassModel classes_;
  std::string classError_;
  std::vector<FileIndex> index_;  // one for each of files_
  std::condition_variable indexed_;
  std::mutex spoolMutex_;       // appending to the spool
  std::FILE* spool_ = nullptr;  // null: everything stays in memory
  mutable std::mutex warningsMutex_;
  mutable std::set<std::string> warned_;
};

#endif
