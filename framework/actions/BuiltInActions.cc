#include "actions/BuiltInActions.h"

#include "actions/AddArrayElementAction.h"
#include "actions/SetAttributeValueAction.h"
#include "actions/SetStructAttributeValueAction.h"
#include "xml/UpgradeActionIf.h"

std::vector<UpgradeActionIf*> createBuiltInActions() {
  std::vector<UpgradeActionIf*> actions;
  actions.push_back(new SetAttributeValueAction());
  actions.push_back(new AddArrayElementAction());
  actions.push_back(new SetStructAttributeValueAction());
  return actions;
}
