#include "ModelRules.h"

#include <set>

#include "icti/ValueText.h"
#include "parser/Spelling.h"

namespace modtool {

namespace {

using Model = ClassCatalog::Model;
using Severity = Diagnostic::Severity;

// The `name` argument of these actions is an attribute of the `Mo` class.
const std::set<std::string> kAttributeActions = {
    "AddAttributeAction",    "RemoveAttributeAction",    "RenameAttributeAction",        "SetAttributeValueAction",
    "AddArrayElementAction", "RemoveArrayElementAction", "SetStructAttributeValueAction"};

// Arguments that name classes; a trailing '#' stands for a number.
const std::vector<std::string> kClassArguments = {"moTypeName",  "childType",   "structType",
                                                  "structType#", "descendant#", "referringMoType#"};

bool isClassArgument(const std::string& name) {
  for (const std::string& pattern : kClassArguments) {
    if (pattern.back() != '#') {
      if (name == pattern) return true;
      continue;
    }
    const std::string stem = pattern.substr(0, pattern.size() - 1);
    if (name.size() > stem.size() && name.compare(0, stem.size(), stem) == 0 &&
        name.find_first_not_of("0123456789", stem.size()) == std::string::npos) {
      return true;
    }
  }
  return false;
}

bool removesClass(const std::string& action) {
  return action == "DeleteMoTypeAction" || action == "RenameMoTypeAction";
}

// Whether `text` is a value of IMM type `type`, as the actions convert it.
bool fits(int type, const std::string& text) {
  const ValueType code = static_cast<ValueType>(type);
  if (ValueText::integerWidth(code) != 0) {
    long long signedValue;
    unsigned long long unsignedValue;
    return ValueText::isSignedInteger(code) ? ValueText::parseSigned(code, text, signedValue)
                                            : ValueText::parseUnsigned(code, text, unsignedValue);
  }
  if (ValueText::isFloating(code)) {
    float f;
    double d;
    return ValueText::typeName(code) == std::string("SA_FLOAT_T") ? ValueText::parseFloat(text, f)
                                                                  : ValueText::parseDouble(text, d);
  }
  if (std::string(ValueText::typeName(code)) == "SA_NAME_T") return text.size() <= 599;
  if (std::string(ValueText::typeName(code)) == "SA_ANY_T") return false;
  return true;
}

}  // namespace

Diagnostics ModelRules::judge(const std::vector<std::pair<long, std::string>>& mos,
                              const std::vector<ActionSite>& sites) {
  found_.clear();
  for (const auto& mo : mos) judgeMoClass(mo.first, mo.second);
  for (size_t i = 0; i < sites.size(); ++i) {
    const ActionSite& site = sites[i];
    judgeSequence(site, i == 0 ? nullptr : &sites[i - 1]);
    judgeClassArguments(site);
    judgeAttributes(site);
    judgeRenameTargets(site);
    judgeDelete(site);
    judgeValues(site);
  }
  return found_;
}

Severity ModelRules::unknownSeverity() const { return catalog_.complete() ? Severity::kError : Severity::kWarning; }

void ModelRules::atAction(const ActionSite& site, Severity severity, const std::string& text) {
  found_.push_back({file_, site.line, locator_.column(site.line, "MoAction"), severity, text});
}

void ModelRules::atArg(const ActionSite& site, const std::string& argName, Severity severity, const std::string& text) {
  const long line = locator_.argLine(site.line, argName, false);
  if (line == 0) return atAction(site, severity, text);
  found_.push_back({file_, line, locator_.column(line, "Arg"), severity, text});
}

void ModelRules::judgeSequence(const ActionSite& site, const ActionSite* previous) {
  // Sites come in document order: the one before, in the same `Mo`, decides,
  // and a chain of followers is reported once, at its first action.
  if (previous == nullptr || previous->moLine != site.moLine || !removesClass(previous->action)) return;
  atAction(site, Severity::kError,
           site.action + " follows " + previous->action + " of " + site.className +
               " in the same Mo: the class is gone by then and the action fails; move it into a Mo before line " +
               std::to_string(previous->line));
}

void ModelRules::judgeMoClass(long line, const std::string& className) {
  if (className.empty() || !catalog_.unknownClass(className)) return;
  const std::string text = "Mo " + className + " names a class that " + catalog_.definesNot() +
                           Spelling::suggestion(className, catalog_.classNames());
  found_.push_back({file_, line, locator_.column(line, "Mo"), unknownSeverity(), text});
}

void ModelRules::judgeClassArguments(const ActionSite& site) {
  for (const auto& arg : site.args) {
    if (!isClassArgument(arg.first) || !catalog_.unknownClass(arg.second)) continue;
    atArg(site, arg.first, unknownSeverity(),
          site.action + ": " + arg.first + " " + arg.second + " is a class that " + catalog_.definesNot() +
              Spelling::suggestion(arg.second, catalog_.classNames()));
  }
}

void ModelRules::judgeAttributes(const ActionSite& site) {
  if (kAttributeActions.count(site.action) == 0) return;
  const std::string* name = site.arg("name");
  // An attribute that is added must be one of the new model. One that is
  // removed or renamed away is judged only with the old model: the new one
  // rightly lacks it. The others may be in either.
  const bool goesAway = site.action == "RemoveAttributeAction" || site.action == "RenameAttributeAction";
  if (name != nullptr && site.action == "AddAttributeAction") {
    judgeAdded(site, *name);
  } else if (name != nullptr && (!goesAway || catalog_.has(Model::kOld)) &&
             catalog_.unknownAttribute(site.className, *name)) {
    atArg(site, "name", unknownSeverity(),
          site.action + ": " + catalog_.definesNot() + " attribute " + *name + " of " + site.className +
              Spelling::suggestion(*name, catalog_.attributeNames(site.className)));
  }
  const std::string* structType = site.arg("structType");
  const std::string* structAttribute = site.arg("structAttribute");
  if (structType != nullptr && structAttribute != nullptr && catalog_.unknownAttribute(*structType, *structAttribute)) {
    atArg(site, "structAttribute", unknownSeverity(),
          site.action + ": " + catalog_.definesNot() + " attribute " + *structAttribute + " of struct " + *structType +
              Spelling::suggestion(*structAttribute, catalog_.attributeNames(*structType)));
  }
}

void ModelRules::judgeAdded(const ActionSite& site, const std::string& name) {
  const SimImmClass* cls = catalog_.find(Model::kNew, site.className);
  if (cls == nullptr || cls->find(name) != nullptr || catalog_.introduced(site.className, name)) return;
  atArg(site, "name", Severity::kError,
        "AddAttributeAction: the new model does not define attribute " + name + " of " + site.className +
            ": the values it adds do not fit the new schema" +
            Spelling::suggestion(name, catalog_.attributeNames(site.className)));
}

void ModelRules::judgeRenameTargets(const ActionSite& site) {
  const std::string* newName = site.arg("newName");
  if (newName == nullptr || !catalog_.has(Model::kNew)) return;
  if (site.action == "RenameMoTypeAction" && catalog_.find(Model::kNew, *newName) == nullptr) {
    atArg(site, "newName", Severity::kError,
          "RenameMoTypeAction: the new model does not define class " + *newName +
              ", the target of the rename; its instances would not fit the new schema" +
              Spelling::suggestion(*newName, catalog_.classNames()));
  }
  const SimImmClass* cls = catalog_.find(Model::kNew, site.className);
  if (site.action == "RenameAttributeAction" && cls != nullptr && cls->find(*newName) == nullptr) {
    atArg(site, "newName", Severity::kError,
          "RenameAttributeAction: the new model does not define attribute " + *newName + " of " + site.className +
              ", the target of the rename" + Spelling::suggestion(*newName, catalog_.attributeNames(site.className)));
  }
}

void ModelRules::judgeDelete(const ActionSite& site) {
  const std::string* name = site.arg("name");
  const SimImmClass* cls = catalog_.find(Model::kNew, site.className);
  if (site.action == "RemoveAttributeAction" && name != nullptr && cls != nullptr && cls->find(*name) != nullptr) {
    atArg(site, "name", Severity::kWarning,
          "RemoveAttributeAction: the new model still defines attribute " + *name + " of " + site.className +
              ": its values are lost; remove the action, or the attribute from the new model");
  }
  if (site.action != "DeleteMoTypeAction" || catalog_.find(Model::kNew, site.className) == nullptr) return;
  atAction(site, Severity::kWarning,
           "DeleteMoTypeAction: the new model still defines class " + site.className +
               ": it stays empty and every instance of the old model is lost; remove the action, or the class from "
               "the new model");
}

void ModelRules::judgeValues(const ActionSite& site) {
  const std::string* name = site.arg("name");
  if (name == nullptr || kAttributeActions.count(site.action) == 0) return;
  const std::string* structType = site.arg("structType");
  const std::string* structAttribute = site.arg("structAttribute");
  const bool onStruct = site.action == "SetStructAttributeValueAction" && structType && structAttribute;
  const SimImmAttrDef* target =
      onStruct ? catalog_.attribute(*structType, *structAttribute) : catalog_.attribute(site.className, *name);
  const SimImmAttrDef* filtered = catalog_.attribute(site.className, *name);
  if (filtered != nullptr && site.arg("oldAttributeValue") != nullptr) {
    judgeValue(site, "oldAttributeValue", locator_.argLine(site.line, "oldAttributeValue", false),
               *site.arg("oldAttributeValue"), *filtered);
  }
  if (target == nullptr) return;
  const std::string* type = site.arg("type");
  const std::string modelType = ValueText::typeName(static_cast<ValueType>(target->type));
  if (type != nullptr && *type != modelType) {
    atArg(site, "type", Severity::kError,
          site.action + ": type " + *type + " does not fit attribute " + target->name +
              ", which the model defines as " + modelType + "; write " + modelType);
    return;
  }
  if (site.arg("elementValue") != nullptr) {
    judgeValue(site, "elementValue", locator_.argLine(site.line, "elementValue", false), *site.arg("elementValue"),
               *target);
  }
  for (size_t i = 0; i < site.operations.size(); ++i) {
    const OperationTexts& operation = site.operations[i];
    const long line = locator_.operationLine(site.line, i);
    if (operation.value) judgeValue(site, "Operation value", line, *operation.value, *target);
    if (operation.rangeStart) judgeValue(site, "Operation rangeStart", line, *operation.rangeStart, *target);
    if (operation.rangeEnd) judgeValue(site, "Operation rangeEnd", line, *operation.rangeEnd, *target);
  }
}

void ModelRules::judgeValue(const ActionSite& site, const std::string& what, long line, const std::string& text,
                            const SimImmAttrDef& def) {
  if (fits(def.type, text)) return;
  const std::string message = site.action + ": " + what + " " + text + " is no " +
                              ValueText::typeName(static_cast<ValueType>(def.type)) + " value of attribute " + def.name;
  if (line == 0) return atAction(site, Severity::kError, message);
  found_.push_back({file_, line, locator_.column(line, ""), Severity::kError, message});
}

}  // namespace modtool
