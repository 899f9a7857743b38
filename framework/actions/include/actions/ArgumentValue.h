// The text of a named action argument, or the empty text when the
// `MoAction` does not have it: for failure texts and for arguments that an
// action's validateArgs has already required.

#ifndef VOSK_ACTIONS_ARGUMENT_VALUE_H
#define VOSK_ACTIONS_ARGUMENT_VALUE_H

#include <string>

#include "runtime/ActionArgumentsIf.h"

inline std::string argumentValue(const ActionArgumentsIf& args, const char* name) {
  std::string value;
  args.getArgument(name, value);
  return value;
}

#endif
