#include "actions/CreateMoTypeAction.h"

#include <string>

#include "common/Log.h"

CreateMoTypeAction::CreateMoTypeAction() : UpgradeAction("CreateMoTypeAction", nullptr, {"moTypeName"}) {}

bool CreateMoTypeAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string moTypeName;
  if (args.getArgument("moTypeName", moTypeName)) return true;
  ictiHandler->failUpgrade("validateArgs failed in CreateMoType. Action did not have mandatory value moTypeName.");
  return false;
}

void CreateMoTypeAction::reportMissingInstanceGroup(ActionArgumentsIf& /*args*/, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
}

bool CreateMoTypeAction::validateInstanceGroup(InstanceGroupIf* /*instanceGroup*/) { return true; }

bool CreateMoTypeAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* /*instanceGroup*/,
                                       ActionArgumentsIf& args) {
  std::string moTypeName;
  args.getArgument("moTypeName", moTypeName);
  TAV_LOG(INFO, "moTypeName is %s", moTypeName.c_str());
  if (!requireDefinedClass(ictiHandler, getName(), "moTypeName", moTypeName)) return false;
  // A group that exists already is logged by the handler and kept: the
  // class is there, which is what the action asks for.
  ictiHandler->addInstanceGroup(moTypeName);
  return true;
}
