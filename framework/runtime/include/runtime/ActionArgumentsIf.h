// The arguments of one `MoAction` element: named text values from its `Arg`
// elements, and the operations from its `Operation` elements in document
// order. Actions and filters read them; all values stay text.

#ifndef VOSK_RUNTIME_ACTION_ARGUMENTS_IF_H
#define VOSK_RUNTIME_ACTION_ARGUMENTS_IF_H

#include <list>
#include <string>

#include "runtime/OperationArgumentIf.h"

class ActionArgumentsIf {
 public:
  using Operations = std::list<OperationArgumentIf*>;

  virtual ~ActionArgumentsIf() = default;

  // False (and the first value kept) when the name is already present.
  virtual bool addArgument(const std::string& name, const std::string& value) = 0;
  // True and `value` assigned when present; otherwise `value` is untouched.
  virtual bool getArgument(const std::string& name, std::string& value) const = 0;
  // Appends and takes ownership.
  virtual void addOperation(OperationArgumentIf* operation) = 0;
  // In insertion order; the arguments keep ownership.
  virtual Operations& getOperations() = 0;
  // Logs every argument in name order, then every operation.
  virtual void logArguments() const = 0;
  // "name=value" pairs in name order joined by ", " (empty without
  // arguments), in a buffer of the calling thread that its next call
  // overwrites.
  virtual std::string argumentsToString() const = 0;
};

#endif
