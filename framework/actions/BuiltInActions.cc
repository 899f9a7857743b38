#include "actions/BuiltInActions.h"

#include "xml/UpgradeActionIf.h"

std::vector<UpgradeActionIf*> createBuiltInActions() {
  std::vector<UpgradeActionIf*> actions;
  return actions;
}
