// One value operation of an action, read from an `Operation` element of a
// modification file: which old values it applies to (a range), what it does
// (an operator) and where the new value comes from (a literal or one of the
// value sources). Every field is optional text; a getter copies out whether
// it was given and its text.

#ifndef VOSK_RUNTIME_OPERATION_ARGUMENT_IF_H
#define VOSK_RUNTIME_OPERATION_ARGUMENT_IF_H

#include <string>

class OperationArgumentIf {
 public:
  virtual ~OperationArgumentIf() = default;

  virtual void getRangeStart(bool& isSet, std::string& value) const = 0;
  virtual void getRangeEnd(bool& isSet, std::string& value) const = 0;
  virtual void getValue(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromAttr(bool& isSet, std::string& value) const = 0;
  virtual void getOperator(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromInstance(bool& isSet, std::string& value) const = 0;
  virtual void getStructType(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromParentInstance(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromInstanceReferencedBy(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromBitmapStringAttr(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromMoTypeAnyInstance(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromTypeRefOnlyInstance(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromImmNamespace(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromSingleAttr(bool& isSet, std::string& value) const = 0;
  virtual void getValueFromMoTypeAnyChildInstance(bool& isSet, std::string& value) const = 0;

  // True when the given fields form a usable combination: an operator and
  // exactly one value source, with the sources' companions present.
  virtual bool isValid() const = 0;
  // True when rangeStart or rangeEnd is given.
  virtual bool hasRange() const = 0;
  // Logs toString() at information level.
  virtual void logOperation() const = 0;
  // A one-line description, in a buffer of the calling thread (512 bytes,
  // longer texts are cut) that its next call overwrites.
  virtual std::string toString() const = 0;
  virtual void setStructType(const char* text) = 0;
};

#endif
