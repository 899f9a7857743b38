// The `Operation` elements of one value action applied to one attribute:
// the operator table, the choice of the values an operation changes (whole
// assignment, or each value in the range and admitted by the filter), the
// creation of an absent attribute, and the check of every value against
// the attribute's type before the attribute is touched.
//
// Operators: "=" "+" "-" "*" "/" "<<" ">>" "&" "|" "^". Failures are
// reported through the ICTI handler's failUpgrade with the action's name in
// front of the text; the instance is then left as it was by the failing
// operation (earlier operations of the same action stay applied).

#ifndef VOSK_ACTIONS_VALUE_OPERATIONS_H
#define VOSK_ACTIONS_VALUE_OPERATIONS_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "actions/OperationSource.h"
#include "icti/IctiHandlerIf.h"
#include "xml/ActionArgumentsIf.h"
#include "xml/FilterIf.h"

class ValueOperations {
 public:
  // Says whether the value at a position may be changed.
  using PositionFilter = std::function<bool(uint32_t index)>;

  ValueOperations(IctiHandlerIf& ictiHandler, const char* actionName, ActionArgumentsIf& args)
      : ictiHandler_(ictiHandler), actionName_(actionName), args_(args), source_(ictiHandler, actionName) {}

  // Checks every operation of `args` (operator in the table, or "=" only
  // when `assignOnly`; no range when `rangeAllowed` is false; the source
  // rules of OperationSource::check) and the `type` argument, which aborts
  // the process when it is not a type name. False (reported) otherwise.
  static bool check(ActionArgumentsIf& args, IctiHandlerIf& ictiHandler, const char* actionName, bool assignOnly,
                    bool rangeAllowed);

  // Applies the operations in order to attribute `name` of `target`, the
  // sources resolved against `owner`. "=" without a range replaces all
  // values when `wholeAssignment` is set; every other operation changes
  // the existing values admitted by `admits` and its range.
  bool apply(InstanceIf& owner, InstanceIf& target, const std::string& name, const PositionFilter& admits,
             bool wholeAssignment);

  // The attribute `name` of `target`; created when absent, with the `type`
  // argument or else `sourceType` (0: none). Null (reported) when it cannot
  // be created or is a byte buffer, which takes no text.
  AttributeInternalIf* textAttribute(InstanceIf& target, const std::string& name, uint32_t sourceType);
  // True when every text fits the attribute's type; otherwise reported.
  bool allFit(AttributeInternalIf& attribute, const std::vector<std::string>& texts, const std::string& ldn);

  // Whether the filter admits the instance: some position of attribute
  // `name` admitted (position 0 when it has none). `admitted` is false
  // when the instance is to be skipped, which is logged ("Filter does not
  // apply"); the result is false (reported)
  // when the filter's old value does not fit the attribute's type.
  bool admits(InstanceIf& instance, const std::string& name, FilterIf& filter, bool& admitted);

  OperationSource& source() { return source_; }

 private:
  struct Operator;
  static const Operator* findOperator(const std::string& text);
  static bool definedFor(const Operator& op, uint32_t type);

  bool applyOne(const OperationArgumentIf& operation, InstanceIf& owner, InstanceIf& target, const std::string& name,
                const PositionFilter& admits, bool wholeAssignment);
  bool assignAll(InstanceIf& target, const std::string& name, const OperationSource::Values& values);
  bool changeEach(const Operator& op, const OperationArgumentIf& operation, AttributeInternalIf& attribute,
                  const std::string& value, const std::string& ldn, const PositionFilter& admits);
  bool operandFits(const Operator& op, AttributeInternalIf& attribute, const std::string& value,
                   const std::string& ldn);
  bool reportMisfit(AttributeInternalIf& attribute, const std::string& value, const std::string& ldn);

  IctiHandlerIf& ictiHandler_;
  const char* const actionName_;
  ActionArgumentsIf& args_;
  OperationSource source_;
};

#endif
