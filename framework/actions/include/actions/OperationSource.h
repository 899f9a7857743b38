// Where the value of one `Operation` comes from, resolved against the
// instance model of the running schema: a literal, the values of an
// attribute of this or another instance, a bitmap read as a number, or the
// distinguished name of the only instance of a class. Values come as typed
// values, so they reach their target exactly as their source holds them.
//
// The field combinations that can be judged without instances are checked
// by check(); what can only be judged on an instance (a source instance or
// attribute that is missing) is reported by resolve() through the ICTI
// handler's failUpgrade, with the action's name in front of the text.

#ifndef VOSK_ACTIONS_OPERATION_SOURCE_H
#define VOSK_ACTIONS_OPERATION_SOURCE_H

#include <cstdint>
#include <string>
#include <vector>

#include "icti/AttributeValue.h"
#include "icti/ValueType.h"
#include "icti/IctiHandlerIf.h"
#include "icti/InstanceIf.h"
#include "runtime/OperationArgumentIf.h"

class OperationSource {
 public:
  struct Values {
    // A literal is a string that takes the type of its target.
    std::vector<AttributeValue> values;
    // The IMM value type the values came with; 0 for a literal, which has
    // none of its own.
    ValueType type = ValueType::kNone;
  };

  OperationSource(IctiHandlerIf& ictiHandler, const char* actionName)
      : ictiHandler_(ictiHandler), actionName_(actionName) {}

  // The values of `operation` for `instance`; false (reported) when the
  // source cannot be found or gives no value.
  bool resolve(const OperationArgumentIf& operation, InstanceIf& instance, Values& values);

  // Checks what can be checked without instances: the validity rules of the
  // operation, at most one instance field, the form of
  // valueFromParentInstance and valueFromInstanceReferencedBy. False
  // (reported) otherwise.
  static bool check(const OperationArgumentIf& operation, IctiHandlerIf& ictiHandler, const char* actionName);

  // The distinguished name of the nearest instance of `className` named in
  // `ldn` (the part of `ldn` from that class's RDN on), or empty. RDNs are
  // told apart as DistinguishedName says.
  static std::string ancestorLdn(const std::string& ldn, const std::string& className);

  // Formats the reason and has the handler fail the upgrade with it.
  static void report(IctiHandlerIf& ictiHandler, const char* fmt, ...) __attribute__((format(printf, 2, 3)));

 private:
  InstanceIf* sourceInstance(const OperationArgumentIf& operation, InstanceIf& instance);
  InstanceIf* instanceByLdn(const std::string& ldn, const OperationArgumentIf& operation);
  InstanceIf* parentInstance(const std::string& which, InstanceIf& instance);
  InstanceIf* anyInstance(const std::string& className);
  InstanceIf* anyChildInstance(const std::string& className, InstanceIf& instance);
  InstanceIf* referencingInstance(const OperationArgumentIf& operation, const std::string& reference,
                                  InstanceIf& instance);
  bool attributeValues(const OperationArgumentIf& operation, InstanceIf& source, Values& values);

  IctiHandlerIf& ictiHandler_;
  const char* const actionName_;
};

#endif
