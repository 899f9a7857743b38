// The arguments that the modification-file parser builds for one `MoAction`
// and hands to the action for one call. Owns its operations.

#ifndef VOSK_RUNTIME_ACTION_ARGUMENTS_H
#define VOSK_RUNTIME_ACTION_ARGUMENTS_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "runtime/ActionArgumentsIf.h"

class ActionArguments : public ActionArgumentsIf {
 public:
  ActionArguments() = default;

  ActionArguments(const ActionArguments&) = delete;
  ActionArguments& operator=(const ActionArguments&) = delete;

  bool addArgument(const std::string& name, const std::string& value) override;
  bool getArgument(const std::string& name, std::string& value) const override;
  void addOperation(OperationArgumentIf* operation) override;
  Operations& getOperations() override { return operations_; }
  void logArguments() const override;
  std::string argumentsToString() const override;

 private:
  std::map<std::string, std::string> arguments_;
  // The same operations as `operations_`, which the interface hands out.
  std::vector<std::unique_ptr<OperationArgumentIf>> owned_;
  Operations operations_;
};

#endif
