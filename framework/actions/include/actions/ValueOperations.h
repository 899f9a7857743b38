// The `Operation` elements of one value action applied to one attribute:
// the operator table, the choice of the values an operation changes (whole
// assignment, or each value in the range and admitted by the filter), the
// creation of an absent attribute, and the check of every value against
// the attribute's type before the attribute is touched.
//
// Operators: "=" "+" "-" "*" "/" "<<" ">>" "&" "|" "^". Values reach the
// attribute as typed values (an operator's operand in its exact text). The
// naming attribute of an instance is never changed: its value is the
// instance's name. Failures are reported through the ICTI handler's
// failUpgrade with the action's name in front of the text; the instance is
// then left as it was by the failing operation (earlier operations of the
// same action stay applied).

#ifndef VOSK_ACTIONS_VALUE_OPERATIONS_H
#define VOSK_ACTIONS_VALUE_OPERATIONS_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "actions/OperationSource.h"
#include "icti/IctiHandlerIf.h"
#include "runtime/ActionArgumentsIf.h"
#include "runtime/FilterIf.h"

class ValueOperations {
 public:
  // Says whether the value at a position may be changed.
  using PositionFilter = std::function<bool(uint32_t index)>;

  ValueOperations(IctiHandlerIf& ictiHandler, const char* actionName, ActionArgumentsIf& args)
      : ictiHandler_(ictiHandler), actionName_(actionName), args_(args), source_(ictiHandler, actionName) {}

  // Checks every operation of `args` (operator in the table, or "=" only
  // when `assignOnly`; no range when `rangeAllowed` is false; the source
  // rules of OperationSource::check) and the `type` argument, which must
  // name a type. False (reported) otherwise.
  static bool check(ActionArgumentsIf& args, IctiHandlerIf& ictiHandler, const char* actionName, bool assignOnly,
                    bool rangeAllowed);

  // Applies the operations in order to attribute `name` of `target`, the
  // sources resolved against `owner`. "=" without a range replaces all
  // values when `wholeAssignment` is set; every other operation changes
  // the existing values admitted by `admits` and its range.
  bool apply(InstanceIf& owner, InstanceIf& target, const std::string& name, const PositionFilter& admits,
             bool wholeAssignment);

  // The attribute `name` of `target` that values go to; created when
  // absent, with the `type` argument or else `sourceType` (0: none). Null
  // (reported) when it cannot be created or names the instance.
  AttributeInternalIf* targetAttribute(InstanceIf& target, const std::string& name, ValueType sourceType);
  // `values` converted to the attribute's type, in order; false (reported)
  // when one does not fit.
  bool convertAll(AttributeInternalIf& attribute, const std::vector<AttributeValue>& values, const std::string& ldn,
                  std::vector<AttributeValue>& converted);

  // Whether the filter admits the instance: some position of attribute
  // `name` admitted (position 0 when it has none). An instance to skip is
  // logged ("Filter does not apply").
  bool admits(InstanceIf& instance, const std::string& name, FilterIf& filter);

  OperationSource& source() { return source_; }

 private:
  struct Operator;
  static const Operator* findOperator(const std::string& text);
  static bool definedFor(const Operator& op, ValueType type);

  bool applyOne(const OperationArgumentIf& operation, InstanceIf& owner, InstanceIf& target, const std::string& name,
                const PositionFilter& admits, bool wholeAssignment);
  // False (reported) when `name` is the naming attribute of `target`.
  bool changeable(InstanceIf& target, const std::string& name);
  bool assignAll(InstanceIf& target, const std::string& name, const OperationSource::Values& values);
  bool changeEach(const Operator& op, const OperationArgumentIf& operation, AttributeInternalIf& attribute,
                  const AttributeValue& value, const std::string& ldn, const PositionFilter& admits);
  // The operand's text for the operator on the attribute; false (reported)
  // when the operator does not take it.
  bool operandText(const Operator& op, AttributeInternalIf& attribute, const AttributeValue& value,
                   const std::string& ldn, std::string& text);
  bool reportMisfit(AttributeInternalIf& attribute, const std::string& value, const std::string& ldn);

  IctiHandlerIf& ictiHandler_;
  const char* const actionName_;
  ActionArgumentsIf& args_;
  OperationSource source_;
};

#endif
