// A small radio node held in memory, for running modification files with
// the real actions: the conversion session's side of the parser
// (IctiHandlerIf) over real instance groups, with no platform behind it.
// Its classes and attribute names are those of the example node, so that
// the example's modification files and the fuzz dictionary find them.
//
// Like a conversion session, it reads a class's group once (from the fixed
// model), never again after the group was removed, and lets a class without
// instances be created.

#ifndef VOSK_FUZZ_FUZZ_MODEL_H
#define VOSK_FUZZ_FUZZ_MODEL_H

#include <map>
#include <memory>
#include <set>
#include <string>

#include "icti/IctiHandlerIf.h"
#include "icti/InstanceGroup.h"

class FuzzModel : public IctiHandlerIf {
 public:
  FuzzModel();

  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                    bool usePrefix = false) override;
  InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) override;
  InstanceGroupIf* addInstanceGroup(const std::string& className) override;
  bool removeInstanceGroup(const std::string& className) override;
  InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) override;
  void failUpgrade(const char* message) override;
  bool isAlive() override { return true; }
  void setFailureContext(const std::string& /*context*/) override {}
  int failureCount() const override { return failures_; }
  bool classDefined(const std::string& className) override;

  // Builds the write record of every group the model holds, as a session
  // does at its end, and frees it again.
  void writeAll() const;

 private:
  // The group of the class in the fixed model, or null when it has no
  // instances there.
  std::unique_ptr<InstanceGroup> readOld(const std::string& className) const;

  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
  std::set<std::string> removed_;
  int failures_ = 0;
};

#endif
