// One session of the simulated conversion tool: what it has read (records
// out until freed) and the new model it collects (written objects, copied
// classes) until it is finalized into one IMM XML file. Its calls lock the
// session, so a session may be used from any thread.

#ifndef VOSK_SIM_SIM_IMM_SESSION_H
#define VOSK_SIM_SIM_IMM_SESSION_H

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "SimImmNode.h"
#include "SimImmObject.h"
#include "SimImmReadRecords.h"
#include "SimImmSpool.h"
#include "safcImmCt.h"

class SimImmModelWriter;

class SimImmSession {
 public:
  SimImmSession(std::shared_ptr<SimImmNode> node, std::string outDir)
      : node_(std::move(node)), outDir_(std::move(outDir)) {}

  SimImmNode& node() { return *node_; }
  const std::string& outDir() const { return outDir_; }

  // The schema whose model the session converts; empty until set.
  std::string schemaName();
  void setSchemaName(const std::string& name);

  // Each call returns its result code and, unless it is SA_AIS_OK, sets `why`.
  SaAisErrorT readInstances(const char* className, SafcImmCtInstanceGroupT*** groups, std::string* why);
  SaAisErrorT freeGroups(SafcImmCtInstanceGroupT** groups, std::string* why);
  SaAisErrorT write(SafcImmCtInstanceGroupT** groups, std::string* why);
  SaAisErrorT copy(SaImmClassNameT* classNames, std::string* why);
  SaAisErrorT waitForClasses(SaImmClassNameT* classNames, std::string* why);

  // Whether anything was written or copied.
  bool hasContent();
  // Writes the collected model to `path` as IMM XML: the definitions of its
  // classes, the written objects, then the copied ones streamed from the old
  // model. A copied object that a read of its class would refuse fails the
  // call (SA_AIS_ERR_FAILED_OPERATION), `why` naming its file, line and dn;
  // the file is then incomplete.
  SaAisErrorT writeModel(const std::string& path, std::string* why);

 private:
  // Where a class is defined: in the old model, only in the new one, or
  // nowhere (the result is then SA_AIS_ERR_NOT_EXIST).
  SaAisErrorT locate(const std::string& className, const SimImmClass** oldDef, const SimImmClass** newDef,
                     std::string* why);
  // The definition a written or copied class is checked against and
  // written out with: the new model's when there is one.
  SaAisErrorT targetDefinition(const std::string& className, const SimImmClass** cls, std::string* why);
  // The definitions the model file starts with.
  SaAisErrorT modelDefinitions(std::vector<const SimImmClass*>* definitions, std::string* why);
  // Writes the written groups' objects into `writer`; false, with `why`
  // set, when the spool cannot be read.
  bool writeWritten(SimImmModelWriter* writer, std::string* why);
  // Streams the copied classes' objects into `writer`, checking each.
  bool copyObjects(SimImmModelWriter* writer, std::string* why);

  const std::shared_ptr<SimImmNode> node_;
  const std::string outDir_;
  std::mutex nameMutex_;  // apart, so that asking the name never waits for a long call
  std::string schemaName_;
  std::mutex mutex_;
  std::map<SafcImmCtInstanceGroupT**, std::unique_ptr<SimImmReadRecords>> reads_;
  // Class name and objects of each written group, kept in the spool.
  std::vector<std::pair<std::string, SimImmSpool::Entries>> written_;
  SimImmSpool spool_;
  std::vector<std::pair<std::string, const SimImmClass*>> copied_;  // name, old definition
  std::set<std::string> classesGiven_;  // written or copied
};

#endif
