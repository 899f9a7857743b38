// The framework's own upgrade actions, one fresh object of each, in the
// order in which a schema's driver registers them.

#ifndef VOSK_ACTIONS_BUILT_IN_ACTIONS_H
#define VOSK_ACTIONS_BUILT_IN_ACTIONS_H

#include <memory>
#include <vector>

#include "runtime/UpgradeActionIf.h"

std::vector<std::unique_ptr<UpgradeActionIf>> createBuiltInActions();

#endif
