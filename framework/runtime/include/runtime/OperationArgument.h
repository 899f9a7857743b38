// The operation arguments of one `Operation` element. A setter given a null
// pointer or an empty text leaves its field as it was, except
// setValueFromImmNamespace, for which an empty namespace is meaningful and
// marks the field given. A later call replaces an earlier value.

#ifndef VOSK_RUNTIME_OPERATION_ARGUMENT_H
#define VOSK_RUNTIME_OPERATION_ARGUMENT_H

#include <string>
#include <vector>

#include "runtime/OperationArgumentIf.h"

class OperationArgument : public OperationArgumentIf {
 public:
  OperationArgument() = default;

  void getRangeStart(bool& isSet, std::string& value) const override { get(kRangeStart, isSet, value); }
  void getRangeEnd(bool& isSet, std::string& value) const override { get(kRangeEnd, isSet, value); }
  void getValue(bool& isSet, std::string& value) const override { get(kValue, isSet, value); }
  void getValueFromAttr(bool& isSet, std::string& value) const override { get(kValueFromAttr, isSet, value); }
  void getOperator(bool& isSet, std::string& value) const override { get(kOperator, isSet, value); }
  void getValueFromInstance(bool& isSet, std::string& value) const override {
    get(kValueFromInstance, isSet, value);
  }
  void getStructType(bool& isSet, std::string& value) const override { get(kStructType, isSet, value); }
  void getValueFromParentInstance(bool& isSet, std::string& value) const override {
    get(kValueFromParentInstance, isSet, value);
  }
  void getValueFromInstanceReferencedBy(bool& isSet, std::string& value) const override {
    get(kValueFromInstanceReferencedBy, isSet, value);
  }
  void getValueFromBitmapStringAttr(bool& isSet, std::string& value) const override {
    get(kValueFromBitmapStringAttr, isSet, value);
  }
  void getValueFromMoTypeAnyInstance(bool& isSet, std::string& value) const override {
    get(kValueFromMoTypeAnyInstance, isSet, value);
  }
  void getValueFromTypeRefOnlyInstance(bool& isSet, std::string& value) const override {
    get(kValueFromTypeRefOnlyInstance, isSet, value);
  }
  void getValueFromImmNamespace(bool& isSet, std::string& value) const override {
    get(kValueFromImmNamespace, isSet, value);
  }
  void getValueFromSingleAttr(bool& isSet, std::string& value) const override {
    get(kValueFromSingleAttr, isSet, value);
  }
  void getValueFromMoTypeAnyChildInstance(bool& isSet, std::string& value) const override {
    get(kValueFromMoTypeAnyChildInstance, isSet, value);
  }

  bool isValid() const override;
  bool hasRange() const override;
  void logOperation() const override;
  std::string toString() const override;
  void setStructType(const char* text) override { set(kStructType, text); }

  void setRangeStart(const char* text) { set(kRangeStart, text); }
  void setRangeEnd(const char* text) { set(kRangeEnd, text); }
  void setValue(const char* text) { set(kValue, text); }
  void setValueFromAttr(const char* text) { set(kValueFromAttr, text); }
  void setValueFromInstance(const char* text) { set(kValueFromInstance, text); }
  void setValueFromParentInstance(const char* text) { set(kValueFromParentInstance, text); }
  void setValueFromInstanceReferencedBy(const char* text) { set(kValueFromInstanceReferencedBy, text); }
  void setValueFromBitmapStringAttr(const char* text) { set(kValueFromBitmapStringAttr, text); }
  void setOperator(const char* text) { set(kOperator, text); }
  void setValueFromMoTypeAnyInstance(const char* text) { set(kValueFromMoTypeAnyInstance, text); }
  void setValueFromTypeRefOnlyInstance(const char* text) { set(kValueFromTypeRefOnlyInstance, text); }
  void setValueFromImmNamespace(const char* text);
  void setValueFromSingleAttr(const char* text) { set(kValueFromSingleAttr, text); }
  void setValueFromMoTypeAnyChildInstance(const char* text) { set(kValueFromMoTypeAnyChildInstance, text); }

  // Sets the field that an `Operation` element's attribute of this name
  // stands for ("rangeStart", "valueFromAttr", ...), by the setter rules
  // above. False, and nothing set, for any other name.
  bool setByName(const char* name, const char* text);
  // The attribute names setByName takes.
  static std::vector<std::string> attributeNames();

  static constexpr size_t kTextSize = 512;

 private:
  enum FieldId {
    kRangeStart,
    kRangeEnd,
    kValue,
    kValueFromAttr,
    kValueFromInstance,
    kValueFromParentInstance,
    kValueFromInstanceReferencedBy,
    kValueFromBitmapStringAttr,
    kOperator,
    kStructType,
    kValueFromMoTypeAnyInstance,
    kValueFromTypeRefOnlyInstance,
    kValueFromImmNamespace,
    kValueFromSingleAttr,
    kValueFromMoTypeAnyChildInstance,
    kFieldCount
  };

  struct Field {
    bool isSet = false;
    std::string value;
  };

  void get(FieldId id, bool& isSet, std::string& value) const {
    isSet = fields_[id].isSet;
    value = fields_[id].value;
  }
  void set(FieldId id, const char* text);
  bool isSet(FieldId id) const { return fields_[id].isSet; }

  Field fields_[kFieldCount];
};

#endif
