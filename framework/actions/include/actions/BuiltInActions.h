// The framework's own upgrade actions, one fresh object of each, in the
// order in which a schema's driver registers them.

#ifndef VOSK_ACTIONS_BUILT_IN_ACTIONS_H
#define VOSK_ACTIONS_BUILT_IN_ACTIONS_H

#include <vector>

class UpgradeActionIf;

// The caller owns the actions and deletes them through UpgradeActionIf.
std::vector<UpgradeActionIf*> createBuiltInActions();

#endif
