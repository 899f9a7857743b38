#include "actions/BuiltInActions.h"

#include "actions/AddArrayElementAction.h"
#include "actions/AddAttributeAction.h"
#include "actions/CreateChildInstanceAction.h"
#include "actions/CreateChildStructAction.h"
#include "actions/CreateMoTypeAction.h"
#include "actions/DeleteMoTypeAction.h"
#include "actions/RemoveArrayElementAction.h"
#include "actions/RemoveAttributeAction.h"
#include "actions/RemoveChildInstanceAction.h"
#include "actions/RenameAttributeAction.h"
#include "actions/RenameENodeBFunctionIdAction.h"
#include "actions/RenameMoTypeAction.h"
#include "actions/SetAttributeValueAction.h"
#include "actions/SetStructAttributeValueAction.h"
#include "runtime/UpgradeActionIf.h"

std::vector<UpgradeActionIf*> createBuiltInActions() {
  std::vector<UpgradeActionIf*> actions;
  actions.push_back(new AddAttributeAction());
  actions.push_back(new RemoveAttributeAction());
  actions.push_back(new CreateChildInstanceAction());
  actions.push_back(new RemoveChildInstanceAction());
  actions.push_back(new DeleteMoTypeAction());
  actions.push_back(new CreateMoTypeAction());
  actions.push_back(new CreateChildStructAction());
  actions.push_back(new SetAttributeValueAction());
  actions.push_back(new RenameMoTypeAction());
  actions.push_back(new RenameAttributeAction());
  actions.push_back(new AddArrayElementAction());
  actions.push_back(new RemoveArrayElementAction());
  actions.push_back(new RenameENodeBFunctionIdAction());
  actions.push_back(new SetStructAttributeValueAction());
  return actions;
}
