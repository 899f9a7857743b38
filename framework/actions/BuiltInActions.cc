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

std::vector<std::unique_ptr<UpgradeActionIf>> createBuiltInActions() {
  std::vector<std::unique_ptr<UpgradeActionIf>> actions;
  actions.push_back(std::make_unique<AddAttributeAction>());
  actions.push_back(std::make_unique<RemoveAttributeAction>());
  actions.push_back(std::make_unique<CreateChildInstanceAction>());
  actions.push_back(std::make_unique<RemoveChildInstanceAction>());
  actions.push_back(std::make_unique<DeleteMoTypeAction>());
  actions.push_back(std::make_unique<CreateMoTypeAction>());
  actions.push_back(std::make_unique<CreateChildStructAction>());
  actions.push_back(std::make_unique<SetAttributeValueAction>());
  actions.push_back(std::make_unique<RenameMoTypeAction>());
  actions.push_back(std::make_unique<RenameAttributeAction>());
  actions.push_back(std::make_unique<AddArrayElementAction>());
  actions.push_back(std::make_unique<RemoveArrayElementAction>());
  actions.push_back(std::make_unique<RenameENodeBFunctionIdAction>());
  actions.push_back(std::make_unique<SetStructAttributeValueAction>());
  return actions;
}
