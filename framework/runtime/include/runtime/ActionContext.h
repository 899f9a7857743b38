// The running call of one action, handed explicitly to the action's step
// for each instance. An action object keeps no per-call state (one object
// serves every `MoAction` of its name, on every schema thread at once), so
// whatever a step needs besides the instance comes from here.

#ifndef VOSK_RUNTIME_ACTION_CONTEXT_H
#define VOSK_RUNTIME_ACTION_CONTEXT_H

#include "icti/IctiHandlerIf.h"
#include "icti/InstanceGroupIf.h"
#include "runtime/ActionArgumentsIf.h"
#include "runtime/FilterIf.h"

struct ActionContext {
  IctiHandlerIf& handler;
  ActionArgumentsIf& args;
  // The instance filter over `args`.
  FilterIf& filter;
  // The group being visited; null for an action that may run without one.
  InstanceGroupIf* group;
  // The other group the step fills or reads: the new class of a rename, the
  // child or struct class of a create or remove. Null for the others.
  InstanceGroupIf* targetGroup;
};

// An action's step for one instance.
using InstanceOperation = bool (*)(InstanceIf& instance, ActionContext& context);

#endif
