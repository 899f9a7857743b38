// An ICTI handler with no model behind it: no class has a group, nothing
// can be added, and every class counts as defined. What parses or validates
// modification files without a conversion session (the parser's own
// validate-only stand-in, the authors' check tool, benchmarks) derives from
// it and says only what becomes of failure reports.

#ifndef VOSK_ICTI_MODEL_FREE_HANDLER_H
#define VOSK_ICTI_MODEL_FREE_HANDLER_H

#include <string>

#include "icti/IctiHandlerIf.h"

class ModelFreeHandler : public IctiHandlerIf {
 public:
  InstanceGroupIf* getInstanceGroup(const std::string&, const std::string&, bool) override { return nullptr; }
  InstanceIf* getTheOnlyInstance(const std::string&, const std::string&) override { return nullptr; }
  InstanceGroupIf* addInstanceGroup(const std::string&) override { return nullptr; }
  bool removeInstanceGroup(const std::string&) override { return false; }
  InstanceGroupIf* getInstanceGroupForLdn(const std::string&) override { return nullptr; }
  bool isAlive() override { return true; }
  bool classDefined(const std::string&) override { return true; }
};

#endif
