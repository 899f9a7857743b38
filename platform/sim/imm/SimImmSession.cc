#include "SimImmSession.h"

#include "SimImmModelWriter.h"
#include "SimImmWrittenGroup.h"

namespace {

SaAisErrorT refuse(SaAisErrorT code, const std::string& reason, std::string* why) {
  *why = reason;
  return code;
}

// The names of a null-terminated class-name array; false for a null array
// or an empty name.
bool classNameList(SaImmClassNameT* classNames, std::vector<std::string>* names) {
  if (classNames == nullptr) return false;
  for (size_t i = 0; classNames[i] != nullptr; ++i) {
    if (classNames[i][0] == '\0') return false;
    names->push_back(classNames[i]);
  }
  return true;
}

}  // namespace

std::string SimImmSession::schemaName() {
  std::lock_guard<std::mutex> lock(nameMutex_);
  return schemaName_;
}

void SimImmSession::setSchemaName(const std::string& name) {
  std::lock_guard<std::mutex> lock(nameMutex_);
  schemaName_ = name;
}

SaAisErrorT SimImmSession::locate(const std::string& className, const SimImmClass** oldDef, const SimImmClass** newDef,
                                  std::string* why) {
  *oldDef = *newDef = nullptr;
  if (!node_->definition(className, false, oldDef, why)) return SA_AIS_ERR_FAILED_OPERATION;
  if (*oldDef == nullptr && node_->hasNewModel() && !node_->definition(className, true, newDef, why)) {
    return SA_AIS_ERR_FAILED_OPERATION;
  }
  if (*oldDef == nullptr && *newDef == nullptr) {
    return refuse(SA_AIS_ERR_NOT_EXIST, "class " + className + " is defined neither in the old nor in the new model",
                  why);
  }
  return SA_AIS_OK;
}

SaAisErrorT SimImmSession::targetDefinition(const std::string& className, const SimImmClass** cls, std::string* why) {
  return node_->definition(className, node_->hasNewModel(), cls, why) ? SA_AIS_OK : SA_AIS_ERR_FAILED_OPERATION;
}

SaAisErrorT SimImmSession::readInstances(const char* className, SafcImmCtInstanceGroupT*** groups, std::string* why) {
  if (className == nullptr || className[0] == '\0' || groups == nullptr) {
    return refuse(SA_AIS_ERR_INVALID_PARAM, "no class name or no place for the result", why);
  }
  const SimImmClass* oldDef = nullptr;
  const SimImmClass* newDef = nullptr;
  if (SaAisErrorT rc = locate(className, &oldDef, &newDef, why); rc != SA_AIS_OK) return rc;
  auto records = std::make_unique<SimImmReadRecords>(oldDef != nullptr ? *oldDef : *newDef);
  // A refused object is told with the class in front; a dump that cannot be
  // indexed tells its own file and line.
  bool refused = false;
  auto add = [&](const SimImmObject& object, std::string* reason) {
    refused = !records->add(object, reason);
    return !refused;
  };
  if (oldDef != nullptr && !node_->oldModel().objectsOf(className, add, why)) {
    if (refused) *why = "old model, class " + std::string(className) + ": " + *why;
    return SA_AIS_ERR_FAILED_OPERATION;
  }
  std::lock_guard<std::mutex> lock(mutex_);
  *groups = records->finish();
  reads_[*groups] = std::move(records);
  return SA_AIS_OK;
}

SaAisErrorT SimImmSession::freeGroups(SafcImmCtInstanceGroupT** groups, std::string* why) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (reads_.erase(groups) == 0) {
    return refuse(SA_AIS_ERR_INVALID_PARAM, "the groups were not returned by a read of this session or are freed", why);
  }
  return SA_AIS_OK;
}

SaAisErrorT SimImmSession::write(SafcImmCtInstanceGroupT** groups, std::string* why) {
  if (groups == nullptr) return refuse(SA_AIS_ERR_INVALID_PARAM, "no instance groups", why);
  std::vector<std::pair<std::string, SimImmSpool::Entries>> converted;
  std::set<std::string> names;
  for (size_t i = 0; groups[i] != nullptr; ++i) {
    const char* className = groups[i]->className != nullptr ? groups[i]->className : "";
    const SimImmClass* cls = nullptr;
    if (SaAisErrorT rc = targetDefinition(className, &cls, why); rc != SA_AIS_OK) return rc;
    SimImmSpool::Entries objects;
    uint32_t place = 0;
    auto keep = [&](const SimImmObject& object) { spool_.append(place++, object, &objects); };
    if (!SimImmWrittenGroup(cls, node_->hasNewModel()).toObjects(*groups[i], keep, why)) {
      return SA_AIS_ERR_INVALID_PARAM;
    }
    if (!names.insert(className).second) {
      return refuse(SA_AIS_ERR_EXIST, "class " + std::string(className) + " is given twice", why);
    }
    converted.emplace_back(className, std::move(objects));
  }
  std::lock_guard<std::mutex> lock(mutex_);
  for (const std::string& name : names) {
    if (classesGiven_.count(name) != 0) {
      return refuse(SA_AIS_ERR_EXIST, "class " + name + " is already in the new model of this session", why);
    }
  }
  classesGiven_.insert(names.begin(), names.end());
  for (auto& group : converted) written_.push_back(std::move(group));
  return SA_AIS_OK;
}

SaAisErrorT SimImmSession::copy(SaImmClassNameT* classNames, std::string* why) {
  std::vector<std::string> names;
  if (!classNameList(classNames, &names)) return refuse(SA_AIS_ERR_INVALID_PARAM, "no class names", why);
  std::vector<std::pair<std::string, const SimImmClass*>> fromOld;
  for (const std::string& name : names) {
    const SimImmClass* oldDef = nullptr;
    const SimImmClass* newDef = nullptr;
    if (SaAisErrorT rc = locate(name, &oldDef, &newDef, why); rc != SA_AIS_OK) return rc;
    if (oldDef == nullptr) continue;
    // A class that the new definitions no longer have (deleted or renamed by
    // the upgrade) is dropped by the conversion, not copied.
    const SimImmClass* target = oldDef;
    if (SaAisErrorT rc = targetDefinition(name, &target, why); rc != SA_AIS_OK) return rc;
    if (target != nullptr) fromOld.emplace_back(name, oldDef);
  }
  std::lock_guard<std::mutex> lock(mutex_);
  std::set<std::string> unique;
  for (const std::string& name : names) {
    if (classesGiven_.count(name) != 0 || !unique.insert(name).second) {
      return refuse(SA_AIS_ERR_EXIST, "class " + name + " is given twice to the new model of this session", why);
    }
  }
  classesGiven_.insert(names.begin(), names.end());
  copied_.insert(copied_.end(), fromOld.begin(), fromOld.end());
  return SA_AIS_OK;
}

SaAisErrorT SimImmSession::waitForClasses(SaImmClassNameT* classNames, std::string* why) {
  std::vector<std::string> names;
  if (!classNameList(classNames, &names)) return refuse(SA_AIS_ERR_INVALID_PARAM, "no class names", why);
  for (const std::string& name : names) {
    const SimImmClass* oldDef = nullptr;
    const SimImmClass* newDef = nullptr;
    if (SaAisErrorT rc = locate(name, &oldDef, &newDef, why); rc != SA_AIS_OK) return rc;
  }
  return SA_AIS_OK;
}

bool SimImmSession::hasContent() {
  std::lock_guard<std::mutex> lock(mutex_);
  return !classesGiven_.empty();
}

SaAisErrorT SimImmSession::writeModel(const std::string& path, std::string* why) {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<const SimImmClass*> definitions;
  if (SaAisErrorT rc = modelDefinitions(&definitions, why); rc != SA_AIS_OK) return rc;
  SimImmModelWriter writer(path);
  if (!writer.open(why)) return SA_AIS_ERR_NO_RESOURCES;
  for (const SimImmClass* cls : definitions) writer.writeClass(*cls);
  SaAisErrorT rc = SA_AIS_OK;
  if (!writeWritten(&writer, why)) {
    rc = SA_AIS_ERR_NO_RESOURCES;
  } else if (!copyObjects(&writer, why)) {
    rc = SA_AIS_ERR_FAILED_OPERATION;
  }
  if (rc != SA_AIS_OK) {
    std::string ignored;
    writer.close(&ignored);
    return rc;
  }
  return writer.close(why) ? SA_AIS_OK : SA_AIS_ERR_NO_RESOURCES;
}

bool SimImmSession::writeWritten(SimImmModelWriter* writer, std::string* why) {
  for (const auto& group : written_) {
    SimImmIndexCursor cursor = spool_.cursor(group.second, group.first);
    while (cursor.next()) writer->writeObject(cursor.object());
    if (!cursor.error().empty()) {
      *why = cursor.error();
      return false;
    }
  }
  return true;
}

SaAisErrorT SimImmSession::modelDefinitions(std::vector<const SimImmClass*>* definitions, std::string* why) {
  std::vector<std::string> classNames;
  for (const auto& group : written_) classNames.push_back(group.first);
  for (const auto& cls : copied_) classNames.push_back(cls.first);
  for (const std::string& name : classNames) {
    const SimImmClass* cls = nullptr;
    if (SaAisErrorT rc = targetDefinition(name, &cls, why); rc != SA_AIS_OK) return rc;
    if (cls != nullptr) definitions->push_back(cls);
  }
  return SA_AIS_OK;
}

bool SimImmSession::copyObjects(SimImmModelWriter* writer, std::string* why) {
  // A copied object must pass what a read of its class would ask of it, so
  // it is checked against the old definition it was made for.
  const std::map<std::string, const SimImmClass*> oldDefinitions(copied_.begin(), copied_.end());
  std::set<std::string> classNames;
  for (const auto& cls : copied_) classNames.insert(cls.first);
  return node_->oldModel().streamObjects(
      classNames,
      [&](const SimImmObject& object, std::string* reason) {
        if (!SimImmReadRecords::fits(*oldDefinitions.at(object.className), object, reason)) {
          *reason = "class " + object.className + ": " + *reason;
          return false;
        }
        writer->writeObject(object);
        return true;
      },
      why);
}
