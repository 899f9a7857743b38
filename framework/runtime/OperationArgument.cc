#include "runtime/OperationArgument.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "common/Log.h"

namespace {

// Appends printf-style to a fixed buffer; what does not fit is cut.
class TextBuilder {
 public:
  TextBuilder(char* buffer, size_t size) : buffer_(buffer), size_(size) { buffer_[0] = '\0'; }

  void append(const char* fmt, ...) __attribute__((format(printf, 2, 3))) {
    if (used_ + 1 >= size_) return;
    va_list args;
    va_start(args, fmt);
    int n = std::vsnprintf(buffer_ + used_, size_ - used_, fmt, args);
    va_end(args);
    if (n > 0) used_ = std::min(size_ - 1, used_ + static_cast<size_t>(n));
  }

 private:
  char* buffer_;
  size_t size_;
  size_t used_ = 0;
};

}  // namespace

void OperationArgument::set(FieldId id, const char* text) {
  if (text == nullptr || *text == '\0') return;
  fields_[id].isSet = true;
  fields_[id].value = text;
}

void OperationArgument::setValueFromImmNamespace(const char* text) {
  // An empty namespace is a namespace: class names are then used unprefixed.
  if (text == nullptr) return;
  fields_[kValueFromImmNamespace].isSet = true;
  fields_[kValueFromImmNamespace].value = text;
}

bool OperationArgument::hasRange() const { return isSet(kRangeStart) || isSet(kRangeEnd); }

bool OperationArgument::isValid() const {
  const FieldId sources[] = {kValue, kValueFromAttr, kValueFromTypeRefOnlyInstance, kValueFromBitmapStringAttr,
                             kValueFromSingleAttr};
  int sourceCount = 0;
  for (FieldId source : sources) sourceCount += isSet(source) ? 1 : 0;

  const bool referencedBy = isSet(kValueFromInstanceReferencedBy);
  return isSet(kOperator) && sourceCount == 1 && (!isSet(kStructType) || isSet(kValueFromInstance)) &&
         !(isSet(kValueFromInstance) && isSet(kValueFromMoTypeAnyInstance)) &&
         (!referencedBy || isSet(kValueFromImmNamespace)) &&
         !(referencedBy && (isSet(kValueFromParentInstance) || isSet(kValueFromTypeRefOnlyInstance))) &&
         (!isSet(kValueFromParentInstance) || isSet(kValueFromAttr)) &&
         (!isSet(kValueFromMoTypeAnyChildInstance) || isSet(kValueFromAttr));
}

std::string OperationArgument::toString() const {
  char text[kTextSize];
  TextBuilder builder(text, sizeof text);
  if (hasRange()) {
    builder.append("range: %sto%s", fields_[kRangeStart].value.c_str(), fields_[kRangeEnd].value.c_str());
  }
  builder.append(" => ");
  if (isSet(kOperator)) builder.append("(%s)", fields_[kOperator].value.c_str());

  // The value sources in print order. The bitmap-string source is never
  // printed; the type-reference source keeps the label that log readers know.
  static const struct {
    FieldId id;
    const char* label;
  } kPrinted[] = {
      {kValue, "value"},
      {kValueFromAttr, "valueFromAttr"},
      {kValueFromInstance, "valueFromInstance"},
      {kValueFromParentInstance, "valueFromParentInstance"},
      {kValueFromInstanceReferencedBy, "valueFromInstanceReferencedBy"},
      {kStructType, "structType"},
      {kValueFromMoTypeAnyInstance, "valueFromMoTypeAnyInstance"},
      {kValueFromTypeRefOnlyInstance, "valueFromImmTypeRefOnlyInstance"},
      {kValueFromImmNamespace, "valueFromImmNamespace"},
      {kValueFromSingleAttr, "valueFromSingleAttr"},
      {kValueFromMoTypeAnyChildInstance, "valueFromMoTypeAnyChildInstance"},
  };
  for (const auto& printed : kPrinted) {
    if (!isSet(printed.id)) continue;
    builder.append(" %s: %s", printed.label, fields_[printed.id].value.c_str());
  }
  return text;
}

void OperationArgument::logOperation() const { TAV_LOG(INFO, "%s\n", toString().c_str()); }

namespace {

using Setter = void (OperationArgument::*)(const char*);
struct AttributeSetter {
  const char* name;
  Setter setter;
};
const AttributeSetter kSetters[] = {
    {"rangeStart", &OperationArgument::setRangeStart},
    {"rangeEnd", &OperationArgument::setRangeEnd},
    {"operator", &OperationArgument::setOperator},
    {"value", &OperationArgument::setValue},
    {"valueFromAttr", &OperationArgument::setValueFromAttr},
    {"valueFromInstance", &OperationArgument::setValueFromInstance},
    {"structType", &OperationArgument::setStructType},
    {"valueFromMoTypeAnyInstance", &OperationArgument::setValueFromMoTypeAnyInstance},
    {"valueFromTypeRefOnlyInstance", &OperationArgument::setValueFromTypeRefOnlyInstance},
    {"valueFromParentInstance", &OperationArgument::setValueFromParentInstance},
    {"valueFromBitmapStringAttr", &OperationArgument::setValueFromBitmapStringAttr},
    {"valueFromInstanceReferencedBy", &OperationArgument::setValueFromInstanceReferencedBy},
    {"valueFromImmNamespace", &OperationArgument::setValueFromImmNamespace},
    {"valueFromSingleAttr", &OperationArgument::setValueFromSingleAttr},
    {"valueFromMoTypeAnyChildInstance", &OperationArgument::setValueFromMoTypeAnyChildInstance},
};

}  // namespace

bool OperationArgument::setByName(const char* name, const char* text) {
  for (const AttributeSetter& entry : kSetters) {
    if (std::strcmp(name, entry.name) == 0) {
      (this->*entry.setter)(text);
      return true;
    }
  }
  return false;
}

std::vector<std::string> OperationArgument::attributeNames() {
  std::vector<std::string> names;
  for (const AttributeSetter& entry : kSetters) names.push_back(entry.name);
  return names;
}
