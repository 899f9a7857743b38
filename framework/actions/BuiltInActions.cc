#include "actions/BuiltInActions.h"

#include "actions/CreateChildInstanceAction.h"
#include "actions/CreateChildStructAction.h"
#include "actions/RemoveArrayElementAction.h"
#include "actions/RemoveChildInstanceAction.h"
#include "actions/RenameENodeBFunctionIdAction.h"
#include "xml/UpgradeActionIf.h"

std::vector<UpgradeActionIf*> createBuiltInActions() {
  std::vector<UpgradeActionIf*> actions;
  actions.push_back(new CreateChildInstanceAction());
  actions.push_back(new RemoveChildInstanceAction());
  actions.push_back(new CreateChildStructAction());
  actions.push_back(new RemoveArrayElementAction());
  actions.push_back(new RenameENodeBFunctionIdAction());
  return actions;
}
