// The model files of one simulated node: the old model (imm/old/*.xml), the
// optional new class definitions (imm/new/*.xml) and the versions file.
// Sessions of one process share a node, and with it the index of the old
// model, as long as the model files stay the same (names, sizes, times).

#ifndef VOSK_SIM_SIM_IMM_NODE_H
#define VOSK_SIM_SIM_IMM_NODE_H

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "SimImmClassModel.h"
#include "SimImmOldModel.h"

class SimImmNode {
 public:
  // The node below `root`.
  static std::shared_ptr<SimImmNode> forRoot(const std::string& root);

  SimImmNode(const std::string& root, std::vector<std::string> oldFiles, std::vector<std::string> newFiles,
             bool hasNewModel);

  SimImmOldModel& oldModel() { return oldModel_; }

  // Whether imm/new exists: written instances are then checked against it.
  bool hasNewModel() const { return hasNewModel_; }

  // The definitions of the new model (empty without one), read once.
  bool newClasses(const SimImmClassModel** model, std::string* why);

  // The definition a class has in the old (`fromNew` false) or new model;
  // null when it has none there. False, with `why` set, when the model's
  // files cannot be read.
  bool definition(const std::string& className, bool fromNew, const SimImmClass** cls, std::string* why);

  const std::string& versionsPath() const { return versionsPath_; }

 private:
  const std::string versionsPath_;
  SimImmOldModel oldModel_;
  const std::vector<std::string> newFiles_;
  const bool hasNewModel_;
  std::mutex mutex_;
  bool newRead_ = false;
  bool newOk_ = false;
  SimImmClassModel newClasses_;
  std::string newError_;
};

#endif
