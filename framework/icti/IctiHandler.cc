#include "icti/IctiHandler.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "common/Log.h"
#include "icti/DistinguishedName.h"
#include "icti/ImmRecords.h"
#include "icti/InstanceGroup.h"

namespace {

constexpr size_t kFailureTextSize = 700;

std::string identity(Env& env, const char* variable) { return env.variable(variable).value_or("(null)"); }

class ClassNames {
 public:
  ~ClassNames() {
    for (char* name : names_) std::free(name);
  }
  void add(const std::string& name) { names_.push_back(strdup(name.c_str())); }
  int size() const { return static_cast<int>(names_.size()); }
  SaImmClassNameT* terminated() {
    terminated_ = names_;
    terminated_.push_back(nullptr);
    return terminated_.data();
  }

 private:
  std::vector<char*> names_;
  std::vector<char*> terminated_;
};

std::string withoutPrefix(const std::string& immName, const std::string& prefix) {
  return immName.compare(0, prefix.size(), prefix) == 0 ? immName.substr(prefix.size()) : immName;
}

// Fits any three numbers.
constexpr size_t kVersionTextSize = 49;

std::string versionText(const SafcImmCtSchemaVersionT_2& v) {
  char text[kVersionTextSize];
  std::snprintf(text, sizeof text, "%d_%d_%d", static_cast<int>(v.version), static_cast<int>(v.release),
                static_cast<int>(v.correction));
  return text;
}

}  // namespace

IctiHandler::IctiHandler(Env& env, const std::string& schemaName, const std::string& immNs)
    : env_(env), schemaName_(schemaName), immNs_(immNs) {}

IctiHandler::~IctiHandler() = default;

bool IctiHandler::init(const ClassList& configClasses, const ClassList& rtpClasses) {
  implementerName_.clear();
  if (!openSession()) return false;
  readVersions();
  for (const auto& entry : configClasses) {
    TAV_LOG(INFO, "Inserting class %s, rdn attr %s", entry.first.c_str(), entry.second.c_str());
    configClasses_[entry.first] = entry.second;
    listedClasses_.insert(entry.first);
  }
  for (const auto& entry : rtpClasses) {
    TAV_LOG(INFO, "Inserting runtime persistent class %s, rdn attr %s", entry.first.c_str(), entry.second.c_str());
    rtpClasses_[entry.first] = entry.second;
    listedClasses_.insert(entry.first);
  }
  return true;
}

bool IctiHandler::openSession() {
  SaUint32T mode = env_.variable("BT") == "VM" ? 1 : 0;
  for (int attempt = 1; attempt <= kInitAttempts; ++attempt) {
    SaAisErrorT rc = env_.immCtInitialize(&handle_, mode);
    if (rc == SA_AIS_OK) {
      sessionOpen_ = true;
      return true;
    }
    if (rc != SA_AIS_ERR_UNAVAILABLE) {
      TAV_LOG(ERROR, "Failed to init upgrade, error %d, handle value %llu.", rc,
              static_cast<unsigned long long>(handle_));
      return false;
    }
    TAV_LOG(INFO_ABN, "Failed to init upgrade, error %d, handle value %llu. Initialize ICTI attempt: %d out of %d.",
            rc, static_cast<unsigned long long>(handle_), attempt, kInitAttempts);
    if (attempt == kInitAttempts) break;
    // A signal may end the pause early; the rest of it is still waited.
    for (unsigned int left = kInitPauseSeconds; left > 0;) left = env_.sleepSeconds(left);
  }
  return false;
}

void IctiHandler::readVersions() {
  SaAisErrorT rc = env_.immCtReadSchemaVersion(handle_, schemaName_.c_str(), &fromVersion_, &toVersion_);
  versionsRead_ = rc == SA_AIS_OK;
  if (!versionsRead_) {
    failUpgrade(MessageFormatter::plain("Failed to get schema versions for %s, error %d!\n", schemaName_.c_str(), rc).c_str());
  }
}

bool IctiHandler::getSchemaVersions(std::string& from, std::string& to) const {
  if (!versionsRead_) return false;
  from = versionText(fromVersion_);
  to = versionText(toVersion_);
  return true;
}

std::string IctiHandler::getRdn(const std::string& className) {
  TAV_TRACE(TRACE1, "Getting RDN attribute for %s", className.c_str());
  return configClasses_[className];
}

void IctiHandler::setImplementerName(const std::string& implementerName) { implementerName_ = implementerName; }

std::string IctiHandler::immClassName(const std::string& className, const std::string& prefix, bool usePrefix) {
  if (className == kUnprefixedClass) {
    TAV_TRACE(TRACE1, "Found class %s , adding prefix cancelled", className.c_str());
    return className;
  }
  return (usePrefix ? prefix : immNs_) + className;
}

InstanceGroupIf* IctiHandler::getInstanceGroup(const std::string& className, const std::string& prefix,
                                               bool usePrefix) {
  std::string immName = immClassName(className, prefix, usePrefix);
  auto cached = instanceGroupMap_.find(immName);
  if (cached != instanceGroupMap_.end()) {
    TAV_LOG(TRACE1, "Return cached data for MO %s", immName.c_str());
    return cached->second.get();
  }
  if (removedClasses_.count(immName) != 0) {
    TAV_LOG(INFO_ABN, "Class %s was deleted or renamed by an earlier action: it has no instance group any more",
            immName.c_str());
    return nullptr;
  }
  TAV_LOG(INFO, ">>>>>>>>>> Read the database MO %s should be applied on. <<<<<<<<<<", immName.c_str());
  SaAisErrorT rc = SA_AIS_OK;
  return readInstanceGroup(immName, &rc);
}

InstanceGroup* IctiHandler::readInstanceGroup(const std::string& immName, SaAisErrorT* rc) {
  SafcImmCtInstanceGroupT** records = nullptr;
  *rc = env_.immCtReadInstances(handle_, const_cast<char*>(immName.c_str()), &records);
  if (*rc != SA_AIS_OK) {
    TAV_LOG(INFO_ABN, "Failed to read instances for %s, error code %d\n", immName.c_str(), *rc);
    return nullptr;
  }
  std::string rdnAttribute = getRdn(immName);
  // The tool answers with one record for the class; a class without
  // objects may come back as no record at all.
  std::unique_ptr<InstanceGroup>& group = instanceGroupMap_[immName];
  group = records != nullptr && records[0] != nullptr
              ? ImmRecords::readGroup(*records[0], rdnAttribute, immNs_)
              : std::make_unique<InstanceGroup>(immNs_, withoutPrefix(immName, immNs_));
  TAV_LOG(TRACE1, "created %s", immName.c_str());
  SaAisErrorT freed = env_.immCtInstanceGroupsMemoryFree(handle_, records);
  if (freed != SA_AIS_OK) {
    failUpgrade(MessageFormatter::plain("Failed to free memory, error code %d\n", freed).c_str());
    return nullptr;
  }
  TAV_LOG(INFO, ">>>>>>>>>> Database for MO %s read. <<<<<<<<<<", immName.c_str());
  TAV_LOG(INFO, "Class %s: %u instances read", immName.c_str(), group->getNumberOfInstances());
  return group.get();
}

InstanceIf* IctiHandler::getTheOnlyInstance(const std::string& className, const std::string& prefix) {
  InstanceGroupIf* group = getInstanceGroup(className, prefix);
  if (group == nullptr || group->getNumberOfInstances() != 1) return nullptr;
  return group->getFirstInstance();
}

InstanceGroupIf* IctiHandler::addInstanceGroup(const std::string& className) {
  std::string immName = immClassName(className, "", false);
  TAV_LOG(INFO, "Adding new instance group %s", immName.c_str());
  if (instanceGroupMap_.count(immName) != 0) {
    TAV_LOG(INFO_ABN, "Trying to add already existing instance group: %s\n", immName.c_str());
    return nullptr;
  }
  // Unless the class was removed, the old model may have it: its instances
  // are kept, never replaced by an empty group.
  if (removedClasses_.erase(immName) == 0) {
    SaAisErrorT rc = SA_AIS_OK;
    InstanceGroup* old = readInstanceGroup(immName, &rc);
    if (old != nullptr && old->getNumberOfInstances() > 0) {
      TAV_LOG(INFO_ABN, "Trying to add already existing instance group: %s\n", immName.c_str());
      return nullptr;
    }
    if (old != nullptr) return old;
    if (rc == SA_AIS_OK) return nullptr;  // read, but its memory could not be freed: reported
    if (rc != SA_AIS_ERR_NOT_EXIST) {
      failUpgrade(MessageFormatter::plain("Could not read class %s from the old model before creating it, error %d",
                                          immName.c_str(), rc)
                      .c_str());
      return nullptr;
    }
  }
  std::unique_ptr<InstanceGroup>& group = instanceGroupMap_[immName];
  group = std::make_unique<InstanceGroup>(className == kUnprefixedClass ? "" : immNs_, className);
  return group.get();
}

bool IctiHandler::removeInstanceGroup(const std::string& className) {
  std::string immName = immClassName(className, "", false);
  TAV_LOG(INFO, "Remove instance group %s", immName.c_str());
  auto found = instanceGroupMap_.find(immName);
  if (found == instanceGroupMap_.end()) {
    TAV_LOG(INFO_ABN, "ABN: Trying to remove a non existent instance group: %s\n", immName.c_str());
    return false;
  }
  instanceGroupMap_.erase(found);
  removedClasses_.insert(immName);
  return true;
}

InstanceGroupIf* IctiHandler::getInstanceGroupForLdn(const std::string& ldn) {
  std::string firstRdn = DistinguishedName::firstRdn(ldn);
  size_t idPos = firstRdn.find("Id=");
  std::string className = idPos == std::string::npos ? firstRdn.substr(0, firstRdn.find('=')) : firstRdn.substr(0, idPos);
  if (!className.empty()) className[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(className[0])));
  TAV_TRACE(TRACE1, "Fetching instanceGroup for classname: %s", className.c_str());
  return getInstanceGroup(className);
}

void IctiHandler::failUpgrade(const char* message) {
  ++failureCount_;
  std::string reason = message;
  if (!failureContext_.empty()) reason += " (" + failureContext_ + ")";
  char text[kFailureTextSize];
  std::snprintf(text, sizeof text,
                "UPGRADE FAIL: Application identity: wmtName = %s, wmtNumber = %s, wmtRevision = %s, "
                "wpkRevision = %s. %s",
                identity(env_, "WMT_NAME").c_str(), identity(env_, "WMT_NO").c_str(), identity(env_, "WMT_REV").c_str(),
                identity(env_, "WPK_REV").c_str(), reason.c_str());
  TAV_LOG(ERROR, "%s", text);
  // Without a session the request goes out with the null handle: the node
  // may still take it, and a refusal must not end the other schemas' runs.
  SaAisErrorT rc = env_.immCtFailUpgrade(sessionOpen_ ? handle_ : 0, text);
  if (rc == SA_AIS_OK) return;
  TAV_LOG(ERROR, "Failed to trigger rollback. Error: %d, handle value: %llu.", rc,
          static_cast<unsigned long long>(handle_));
  if (rc == SA_AIS_ERR_BAD_HANDLE && sessionOpen_) {
    TAV_LOG(ERROR, "The program will be aborted.");
    std::abort();
  }
}

bool IctiHandler::isAlive() { return true; }

bool IctiHandler::classDefined(const std::string& className) {
  const std::string immName = immClassName(className, "", false);
  if (instanceGroupMap_.count(immName) != 0 || removedClasses_.count(immName) != 0 ||
      listedClasses_.count(immName) != 0) {
    return true;
  }
  if (undefinedClasses_.count(immName) != 0) return false;
  SaAisErrorT rc = SA_AIS_OK;
  readInstanceGroup(immName, &rc);
  if (rc != SA_AIS_ERR_NOT_EXIST) return true;
  undefinedClasses_.insert(immName);
  return false;
}

void IctiHandler::splitRuntimePersistentGroups() {
  TAV_LOG(INFO, "Finalize RTP classes write, instanceGroupMap.size() %d: ,instanceGroupMapRTP.size() %d: ",
          static_cast<int>(instanceGroupMap_.size()), static_cast<int>(instanceGroupMapRTP_.size()));
  for (const auto& rtpClass : rtpClasses_) {
    auto found = instanceGroupMap_.find(rtpClass.first);
    if (found == instanceGroupMap_.end()) continue;
    instanceGroupMapRTP_[found->first] = std::move(found->second);
    instanceGroupMap_.erase(found);
  }
  TAV_LOG(INFO, "RTP classes write after split, instanceGroupMap.size() %d: , instanceGroupMapRTP.size() %d: ",
          static_cast<int>(instanceGroupMap_.size()), static_cast<int>(instanceGroupMapRTP_.size()));
  TAV_LOG(INFO, "RTP classes write runtimePersistentToWrite %d: ", static_cast<int>(instanceGroupMapRTP_.size()));
}

bool IctiHandler::writeCopyClasses() { return handOverClasses() && callFinalize(); }

bool IctiHandler::handOverClasses() {
  struct timespec start = env_.monotonicNow();
  if (!implementerName_.empty()) splitRuntimePersistentGroups();

  ImmRecords toWrite;
  ImmRecords rtpToWrite;
  ClassNames toCopy;
  bool recordsBuilt = true;
  for (const auto& configClass : configClasses_) {
    auto cached = instanceGroupMap_.find(configClass.first);
    if (removedClasses_.count(configClass.first) != 0) {
      TAV_LOG(INFO, "Class %s was deleted or renamed: neither written nor copied", configClass.first.c_str());
    } else if (cached != instanceGroupMap_.end()) {
      TAV_LOG(TRACE1, "Add %s to IGs to write", configClass.first.c_str());
      TAV_LOG(INFO, "Class %s: %u instances to write", configClass.first.c_str(),
              cached->second->getNumberOfInstances());
      recordsBuilt = built(toWrite, *cached->second) && recordsBuilt;
    } else {
      TAV_LOG(TRACE1, "Add %s to InstanceGroups to copy", configClass.first.c_str());
      toCopy.add(configClass.first);
    }
  }
  for (const auto& rtpClass : rtpClasses_) {
    auto cached = instanceGroupMapRTP_.find(rtpClass.first);
    if (cached == instanceGroupMapRTP_.end()) continue;
    TAV_LOG(TRACE1, "Add %s to runtime persistent IGs to write", rtpClass.first.c_str());
    TAV_LOG(INFO, "Class %s: %u runtime persistent instances to write", rtpClass.first.c_str(),
            cached->second->getNumberOfInstances());
    recordsBuilt = built(rtpToWrite, *cached->second) && recordsBuilt;
  }
  struct timespec tablesDone = env_.monotonicNow();
  tablesMs_ = Env::millisecondsBetween(start, tablesDone);
  writeCount_ = toWrite.size();
  copyCount_ = toCopy.size();
  rtpCount_ = rtpToWrite.size();

  bool written = recordsBuilt;
  if (toWrite.size() > 0) {
    TAV_LOG(INFO, "Write instances to CS.");
    written = checked(env_.immCtWriteInstances(handle_, toWrite.terminated()),
                      "Write instances init failed, SaAisErrorT = %d");
  }
  struct timespec writeDone = env_.monotonicNow();
  writeMs_ = Env::millisecondsBetween(tablesDone, writeDone);
  if (rtpToWrite.size() > 0) {
    TAV_LOG(INFO, "Write runtime persistent instances to CS with implmenterName: %s ", implementerName_.c_str());
    written = checked(env_.immCtWriteRtInstances(handle_, const_cast<char*>(implementerName_.c_str()),
                                                 rtpToWrite.terminated()),
                      "Write RTP instances failed, SaAisErrorT = %d") &&
              written;
  }
  struct timespec copyStart = env_.monotonicNow();
  if (toCopy.size() > 0) {
    TAV_LOG(INFO, "Copy instances to CS.");
    written = checked(env_.immCtCopyInstances(handle_, toCopy.terminated()),
                      "Copy instances init failed, SaAisErrorT = %d") &&
              written;
  }
  copyMs_ = Env::millisecondsBetween(copyStart, env_.monotonicNow());
  // A model that could not be written whole must not take effect.
  return written;
}

bool IctiHandler::built(ImmRecords& records, const InstanceGroup& group) {
  if (records.add(group)) return true;
  failUpgrade(MessageFormatter::plain("Out of memory building the records of %s for writing",
                                      group.getImmClassName().c_str())
                  .c_str());
  return false;
}

bool IctiHandler::checked(SaAisErrorT rc, const char* failureFormat) {
  if (rc == SA_AIS_OK) return true;
  failUpgrade(MessageFormatter::plain(failureFormat, rc).c_str());
  return false;
}

bool IctiHandler::writeIntroducedClasses() { return writeCachedGroups() && callFinalize(); }

bool IctiHandler::writeCachedGroups() {
  struct timespec start = env_.monotonicNow();
  ImmRecords toWrite;
  bool recordsBuilt = true;
  for (const auto& configClass : configClasses_) {
    auto cached = instanceGroupMap_.find(configClass.first);
    if (cached != instanceGroupMap_.end()) recordsBuilt = built(toWrite, *cached->second) && recordsBuilt;
  }
  writeCount_ = toWrite.size();
  bool written =
      recordsBuilt && checked(env_.immCtWriteInstances(handle_, toWrite.terminated()), "Write instances init failed, SaAisErrorT = %d");
  introduceMs_ = Env::millisecondsBetween(start, env_.monotonicNow());
  return written;
}

bool IctiHandler::callFinalize() {
  TAV_LOG(INFO, "IctiHandler::callFinalize()");
  struct timespec start = env_.monotonicNow();
  SaAisErrorT rc = env_.immCtFinalize(handle_);
  struct timespec end = env_.monotonicNow();
  TAV_LOG(INFO,
          "icti finalize %d ms, tables %d ms, writeClasses %d ms size %d, copyClasses %d ms, size %d, "
          "writeRTPClasses size %d, introduce %d ms",
          Env::millisecondsBetween(start, end), tablesMs_, writeMs_, writeCount_, copyMs_, copyCount_, rtpCount_,
          introduceMs_);
  if (rc != SA_AIS_OK) {
    TAV_LOG(ERROR, "Finalize failed, SaAisErrorT = %d", rc);
    return false;
  }
  // The session is over: a later failure request goes out without it.
  sessionOpen_ = false;
  return true;
}
