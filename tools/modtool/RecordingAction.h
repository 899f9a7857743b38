// Stands in for a built-in action while `check` validates a file: it lets
// the real action validate its arguments, and keeps what the parser handed
// it (an ActionSite) for the rules that need the models. The real action
// stays the judge of its own arguments; nothing is executed.

#ifndef VOSK_TOOLS_MODTOOL_RECORDING_ACTION_H
#define VOSK_TOOLS_MODTOOL_RECORDING_ACTION_H

#include <string>
#include <vector>

#include "ActionSite.h"
#include "FailureCollector.h"
#include "runtime/UpgradeActionIf.h"

namespace modtool {

class RecordingAction : public UpgradeActionIf {
 public:
  // Neither is owned. `collector` tells where the parser stands.
  RecordingAction(UpgradeActionIf* action, const FailureCollector* collector, std::string file,
                  std::vector<ActionSite>* sites)
      : action_(action), collector_(collector), file_(std::move(file)), sites_(sites) {}

  // Never called: the parser only validates when it is given these.
  bool execute(IctiHandlerIf*, InstanceGroupIf*, ActionArgumentsIf&) override { return false; }
  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) override;
  const char* getName() const override { return action_->getName(); }
  std::vector<std::string> argumentNames() const override { return action_->argumentNames(); }

 private:
  void record(ActionArgumentsIf& args) const;

  UpgradeActionIf* action_;
  const FailureCollector* collector_;
  std::string file_;
  std::vector<ActionSite>* sites_;
};

}  // namespace modtool

#endif
