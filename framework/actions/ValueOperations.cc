#include "actions/ValueOperations.h"

#include "common/Log.h"
#include "icti/ValueText.h"
#include "icti/ValueType.h"
#include "runtime/AttributeTypes.h"
#include "runtime/UpgradeAction.h"

namespace {

// A value for a message: its text, or its size for a byte buffer.
std::string describe(const AttributeValue& value) {
  std::string text;
  if (value.toText(&text)) return text;
  return "(" + std::to_string(value.data().size()) + " bytes)";
}

}  // namespace

// What an operator does and to which types it applies.
struct ValueOperations::Operator {
  enum Kind { kAssign, kAdd, kArithmetic, kDivide, kShift, kBitwise };
  const char* text;
  Kind kind;
  bool (AttributeIf::*change)(uint32_t index, const char* value);
};

bool ValueOperations::definedFor(const Operator& op, ValueType type) {
  switch (op.kind) {
    case Operator::kAssign:
      return true;
    case Operator::kAdd:  // strings append
      return ValueText::isNumber(type) || type == ValueType::kString;
    case Operator::kArithmetic:
    case Operator::kDivide:
      return ValueText::isNumber(type);
    case Operator::kShift:
    case Operator::kBitwise:
      return ValueText::integerWidth(type) != 0;
  }
  return false;
}

const ValueOperations::Operator* ValueOperations::findOperator(const std::string& text) {
  static const Operator kOperators[] = {
      {"=", Operator::kAssign, &AttributeIf::setValueAtIndex},
      {"+", Operator::kAdd, &AttributeIf::addIntegerAtIndex},
      {"-", Operator::kArithmetic, &AttributeIf::substractIntegerAtIndex},
      {"*", Operator::kArithmetic, &AttributeIf::multiplyAtIndex},
      {"/", Operator::kDivide, &AttributeIf::divideAtIndex},
      {"<<", Operator::kShift, &AttributeIf::bitwiseLeftShiftAtIndex},
      {">>", Operator::kShift, &AttributeIf::bitwiseRightShiftAtIndex},
      {"&", Operator::kBitwise, &AttributeIf::bitwiseAndAtIndex},
      {"|", Operator::kBitwise, &AttributeIf::bitwiseOrAtIndex},
      {"^", Operator::kBitwise, &AttributeIf::bitwiseXorAtIndex},
  };
  for (const Operator& op : kOperators) {
    if (text == op.text) return &op;
  }
  return nullptr;
}

bool ValueOperations::check(ActionArgumentsIf& args, IctiHandlerIf& ictiHandler, const char* actionName,
                            bool assignOnly, bool rangeAllowed) {
  std::string typeName;
  if (args.getArgument("type", typeName) && AttributeTypes::attributeTypeFromText(typeName) == ValueType::kNone) {
    OperationSource::report(ictiHandler, "%s: type %s is no attribute type", actionName, typeName.c_str());
    return false;
  }
  for (OperationArgumentIf* operation : args.getOperations()) {
    if (!OperationSource::check(*operation, ictiHandler, actionName)) return false;
    const std::string text = operation->toString();
    bool isSet = false;
    std::string opText;
    operation->getOperator(isSet, opText);
    if (findOperator(opText) == nullptr || (assignOnly && opText != "=")) {
      OperationSource::report(ictiHandler, "%s: unsupported operator %s in operation %s", actionName, opText.c_str(),
                              text.c_str());
      return false;
    }
    if (!rangeAllowed && operation->hasRange()) {
      OperationSource::report(ictiHandler, "%s: operation %s takes no range", actionName, text.c_str());
      return false;
    }
  }
  return true;
}

bool ValueOperations::admits(InstanceIf& instance, const std::string& name, FilterIf& filter) {
  AttributeInternalIf* attribute = instance.getAttribute(name);
  uint32_t count = attribute == nullptr ? 0 : attribute->getNumberOfValues();
  bool admitted = false;
  for (uint32_t i = 0; i < (count == 0 ? 1 : count) && !admitted; ++i) admitted = filter.applies(instance, i);
  if (!admitted) TAV_TRACE(INFO, "Filter does not apply");
  return admitted;
}

bool ValueOperations::changeable(InstanceIf& target, const std::string& name) {
  if (!UpgradeAction::isNamingAttribute(target, name)) return true;
  OperationSource::report(ictiHandler_,
                          "%s: attribute %s names %s: its value is the instance's name and is not changed here",
                          actionName_, name.c_str(), target.getLdn().c_str());
  return false;
}

bool ValueOperations::apply(InstanceIf& owner, InstanceIf& target, const std::string& name,
                            const PositionFilter& admits, bool wholeAssignment) {
  if (!changeable(target, name)) return false;
  for (OperationArgumentIf* operation : args_.getOperations()) {
    if (!applyOne(*operation, owner, target, name, admits, wholeAssignment)) return false;
  }
  return true;
}

bool ValueOperations::applyOne(const OperationArgumentIf& operation, InstanceIf& owner, InstanceIf& target,
                               const std::string& name, const PositionFilter& admits, bool wholeAssignment) {
  bool isSet = false;
  std::string opText;
  operation.getOperator(isSet, opText);
  const Operator* op = findOperator(opText);
  OperationSource::Values values;
  if (op == nullptr || !source_.resolve(operation, owner, values)) return false;
  if (op->kind == Operator::kAssign && !operation.hasRange() && wholeAssignment) {
    return assignAll(target, name, values);
  }
  const std::string ldn = target.getLdn();
  AttributeInternalIf* attribute = target.getAttribute(name);
  if (attribute == nullptr || attribute->getNumberOfValues() == 0) {
    TAV_TRACE(INFO, "%s: %s has no value in attribute %s, nothing to change", actionName_, ldn.c_str(), name.c_str());
    return true;
  }
  if (values.values.size() != 1) {
    OperationSource::report(ictiHandler_, "%s: operator %s needs one value, the source gives %zu", actionName_,
                            op->text, values.values.size());
    return false;
  }
  return changeEach(*op, operation, *attribute, values.values.front(), ldn, admits);
}

bool ValueOperations::assignAll(InstanceIf& target, const std::string& name, const OperationSource::Values& values) {
  const std::string ldn = target.getLdn();
  AttributeInternalIf* attribute = targetAttribute(target, name, values.type);
  std::vector<AttributeValue> converted;
  if (attribute == nullptr || !convertAll(*attribute, values.values, ldn, converted)) return false;
  while (attribute->getNumberOfValues() > 0) attribute->eraseValueAtIndex(0);
  for (const AttributeValue& value : converted) attribute->addValue(value);
  TAV_TRACE(INFO, "%s: %s of %s set to %zu value(s)", actionName_, name.c_str(), ldn.c_str(), converted.size());
  return true;
}

bool ValueOperations::changeEach(const Operator& op, const OperationArgumentIf& operation,
                                 AttributeInternalIf& attribute, const AttributeValue& value, const std::string& ldn,
                                 const PositionFilter& admits) {
  std::string operand;
  if (!operandText(op, attribute, value, ldn, operand)) return false;
  bool hasStart = false, hasEnd = false;
  std::string start, end;
  operation.getRangeStart(hasStart, start);
  operation.getRangeEnd(hasEnd, end);
  if (hasStart && !AttributeValue::fits(attribute.getType(), start)) return reportMisfit(attribute, start, ldn);
  if (hasEnd && !AttributeValue::fits(attribute.getType(), end)) return reportMisfit(attribute, end, ldn);
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    bool inRange = !(hasStart && attribute.lessThanAtIndex(i, start.c_str())) &&
                   !(hasEnd && attribute.greaterThanAtIndex(i, end.c_str()));
    if (!inRange || !admits(i)) continue;
    if (!(attribute.*op.change)(i, operand.c_str())) {
      OperationSource::report(ictiHandler_, "%s: operator %s failed at index %u of attribute %s on %s", actionName_,
                              op.text, i, attribute.getName().c_str(), ldn.c_str());
      return false;
    }
    TAV_TRACE(INFO, "%s: %s[%u] of %s %s %s", actionName_, attribute.getName().c_str(), i, ldn.c_str(), op.text,
            operand.c_str());
  }
  return true;
}

bool ValueOperations::operandText(const Operator& op, AttributeInternalIf& attribute, const AttributeValue& value,
                                  const std::string& ldn, std::string& text) {
  const ValueType type = attribute.getType();
  const std::string name = attribute.getName();
  if (type == ValueType::kAny) {
    OperationSource::report(ictiHandler_, "%s: attribute %s of type SA_ANY_T on %s takes no text value", actionName_,
                            name.c_str(), ldn.c_str());
    return false;
  }
  if (!definedFor(op, type)) {
    OperationSource::report(ictiHandler_, "%s: operator %s is not defined for attribute %s of type %s on %s",
                            actionName_, op.text, name.c_str(), ValueText::typeName(type), ldn.c_str());
    return false;
  }
  AttributeValue operand;
  if (op.kind == Operator::kShift) {
    if (!value.convertTo(ValueType::kInt64, &operand) || operand.asSigned() < 0 ||
        operand.asSigned() >= static_cast<long long>(ValueText::integerWidth(type))) {
      OperationSource::report(ictiHandler_, "%s: shift count %s is out of range for attribute %s of type %s on %s",
                              actionName_, describe(value).c_str(), name.c_str(), ValueText::typeName(type),
                              ldn.c_str());
      return false;
    }
  } else if (!value.convertTo(type, &operand)) {
    return reportMisfit(attribute, describe(value), ldn);
  }
  if (op.kind == Operator::kDivide && operand.isZero()) {
    OperationSource::report(ictiHandler_, "%s: division by zero on attribute %s of %s", actionName_, name.c_str(),
                            ldn.c_str());
    return false;
  }
  return operand.toText(&text);
}

bool ValueOperations::reportMisfit(AttributeInternalIf& attribute, const std::string& value, const std::string& ldn) {
  OperationSource::report(ictiHandler_, "%s: value %s does not fit attribute %s of type %s on %s", actionName_,
                          value.c_str(), attribute.getName().c_str(), ValueText::typeName(attribute.getType()),
                          ldn.c_str());
  return false;
}

bool ValueOperations::convertAll(AttributeInternalIf& attribute, const std::vector<AttributeValue>& values,
                                 const std::string& ldn, std::vector<AttributeValue>& converted) {
  converted.resize(values.size());
  for (size_t i = 0; i < values.size(); ++i) {
    if (!values[i].convertTo(attribute.getType(), &converted[i])) return reportMisfit(attribute, describe(values[i]), ldn);
  }
  return true;
}

AttributeInternalIf* ValueOperations::targetAttribute(InstanceIf& target, const std::string& name,
                                                      ValueType sourceType) {
  if (!changeable(target, name)) return nullptr;
  AttributeInternalIf* attribute = target.getAttribute(name);
  if (attribute != nullptr) return attribute;
  std::string typeName;
  ValueType type = args_.getArgument("type", typeName) ? AttributeTypes::attributeTypeFromText(typeName) : sourceType;
  if (type == ValueType::kNone || !target.addAttribute(name, type, &attribute) || attribute == nullptr) {
    OperationSource::report(ictiHandler_, "%s: attribute %s is missing on %s and no type is given to create it",
                            actionName_, name.c_str(), target.getLdn().c_str());
    return nullptr;
  }
  TAV_TRACE(INFO, "%s: created attribute %s of type %s on %s", actionName_, name.c_str(), ValueText::typeName(type),
          target.getLdn().c_str());
  return attribute;
}
