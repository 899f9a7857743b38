#include "actions/DeleteMoTypeAction.h"

#include "common/Log.h"

DeleteMoTypeAction::DeleteMoTypeAction() : UpgradeAction("DeleteMoTypeAction", nullptr, {"name"}) {}

bool DeleteMoTypeAction::execute(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                 ActionArgumentsIf& /*args*/) {
  TAV_TRACE(TRACE1, "DeleteMoTypeAction::execute()");
  requireHandler(ictiHandler);
  if (instanceGroup == nullptr) {
    TAV_LOG(INFO,
            "DeleteMoTypeAction::execute(): trying to delete a MO Type that does not exist. This is not a failure so "
            "continue.");
    return true;
  }
  return ictiHandler->removeInstanceGroup(instanceGroup->getClassName());
}

bool DeleteMoTypeAction::validateArgs(ActionArgumentsIf& /*args*/, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  return true;
}

void DeleteMoTypeAction::reportMissingInstanceGroup(ActionArgumentsIf& /*args*/, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
}
