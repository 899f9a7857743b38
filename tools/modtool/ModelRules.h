// The rules of `check` that need more than one `MoAction` or the models:
// an action after a delete or rename of its class in the same `Mo`, class
// and attribute names that no model defines, rename targets the new model
// lacks, removals of classes and attributes the new model keeps, and types and literal
// values that do not fit the attribute they go into.
//
// Severity follows what the upgrade would do: a name that neither given
// model defines, when both were given, and a value that cannot be converted
// fail the upgrade (errors); with one model only, or where the upgrade runs
// but loses or misplaces data, they are warnings.

#ifndef VOSK_TOOLS_MODTOOL_MODEL_RULES_H
#define VOSK_TOOLS_MODTOOL_MODEL_RULES_H

#include <string>
#include <vector>

#include "ActionSite.h"
#include "ClassCatalog.h"
#include "Diagnostic.h"
#include "SourceLocator.h"

namespace modtool {

class ModelRules {
 public:
  ModelRules(const std::string& file, const ClassCatalog& catalog, const SourceLocator& locator)
      : file_(file), catalog_(catalog), locator_(locator) {}

  // The findings for the `Mo` elements (SourceLocator::mos) and the sites of
  // one file, in document order.
  Diagnostics judge(const std::vector<std::pair<long, std::string>>& mos, const std::vector<ActionSite>& sites);

 private:
  void judgeSequence(const ActionSite& site, const ActionSite* previous);
  void judgeMoClass(long line, const std::string& className);
  void judgeClassArguments(const ActionSite& site);
  void judgeAttributes(const ActionSite& site);
  // `name`, added to the site's class, against the new model.
  void judgeAdded(const ActionSite& site, const std::string& name);
  void judgeRenameTargets(const ActionSite& site);
  void judgeDelete(const ActionSite& site);
  void judgeValues(const ActionSite& site);
  // `line`: of the element that holds the value; 0 for the action's.
  void judgeValue(const ActionSite& site, const std::string& what, long line, const std::string& text,
                  const SimImmAttrDef& def);

  void atAction(const ActionSite& site, Diagnostic::Severity severity, const std::string& text);
  void atArg(const ActionSite& site, const std::string& argName, Diagnostic::Severity severity,
             const std::string& text);
  // Unknown by both given models: an error; by the one given: a warning.
  Diagnostic::Severity unknownSeverity() const;

  const std::string file_;
  const ClassCatalog& catalog_;
  const SourceLocator& locator_;
  Diagnostics found_;
};

}  // namespace modtool

#endif
