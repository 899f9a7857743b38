// The old model of the simulated node: the IMM XML files of imm/old, in name
// order. Shared by all sessions of a process and safe from several threads.
//
// The first read or copy indexes the whole dump in one streaming pass: each
// object is kept compactly (its text, no records) with the other objects of
// its class and its place in its file, so no read or copy parses the dump
// again. A read of a class decodes only that class's objects; a copy merges
// its classes' objects back into file order by their places. Each file is
// indexed on its own: sessions that index at the same time index different
// files at once, and reads and copies decode outside the model's lock, one
// object at a time. The compact objects go to an anonymous spool file in
// runs of about a megabyte a class, so memory stays small however large the
// dump: a read or a copy holds one run and one object for each of its
// classes.

#ifndef VOSK_SIM_SIM_IMM_OLD_MODEL_H
#define VOSK_SIM_SIM_IMM_OLD_MODEL_H

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "SimImmClassModel.h"
#include "SimImmIndexCursor.h"
#include "SimImmSpool.h"
#include "SimImmObject.h"

class SimImmOldModel {
 public:
  explicit SimImmOldModel(std::vector<std::string> files);
  SimImmOldModel(const SimImmOldModel&) = delete;
  SimImmOldModel& operator=(const SimImmOldModel&) = delete;

  // The class definitions, read once. False, with `why` set, when the files
  // do not give them.
  bool classes(const SimImmClassModel** model, std::string* why);

  // Hands each object of `className` to `each`, in file order (none for a
  // class without objects). `each` may refuse an object (false, with `why`
  // set): the walk then stops. False, with `why` set, when refused or when
  // the dump cannot be indexed: it is malformed or holds objects of
  // undefined classes.
  using Each = std::function<bool(const SimImmObject&, std::string* why)>;
  bool objectsOf(const std::string& className, const Each& each, std::string* why);

  // Hands each object of `classNames` to `each` in file order: the files in
  // their order, and within a file the objects of all these classes as the
  // file has them. As objectsOf, but a refusal's `why` is given the object's
  // file in front.
  bool streamObjects(const std::set<std::string>& classNames, const Each& each, std::string* why);

 private:
  enum class State { kNotRead, kIndexing, kRead, kFailed };

  // The index of one file: the objects of each class.
  struct FileIndex {
    State state = State::kNotRead;
    std::string error;
    std::map<std::string, SimImmSpool::Entries> objects;
  };

  // Indexes the files no session indexes yet, then waits for the others.
  // False, with `why` set to the first file's failure, when a file fails.
  // Called with `lock` held; the index is complete and unchanging after.
  bool indexAll(std::unique_lock<std::mutex>* lock, std::string* why);
  bool indexFile(size_t file, FileIndex* index);
  // Reports a warning of the reader once, however often it is met.
  void warn(const std::string& path, const std::string& warning) const;
  // Indexes the dump unless that is done; false, with `why` set, as for
  // objectsOf.
  bool indexed(std::string* why);
  // Hands the objects of `classNames` in the file `file` to `each`, merged
  // by their places.
  bool streamFile(const FileIndex& file, const std::set<std::string>& classNames, const Each& each,
                  std::string* why) const;

  const std::vector<std::string> files_;
  std::mutex mutex_;
  State classState_ = State::kNotRead;
  SimImmClassModel classes_;
  std::string classError_;
  std::vector<FileIndex> index_;  // one for each of files_
  std::condition_variable indexed_;
  SimImmSpool spool_;
  mutable std::mutex warningsMutex_;
  mutable std::set<std::string> warned_;
};

#endif
