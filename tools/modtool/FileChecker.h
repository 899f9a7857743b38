// Checks one modification file the way `check` does: the upgrader's own
// parser in validate-only mode, with the built-in actions judging their
// arguments, then the model rules over what the parser handed them. XML that
// does not read is reported with libxml2's own place and text.

#ifndef VOSK_TOOLS_MODTOOL_FILE_CHECKER_H
#define VOSK_TOOLS_MODTOOL_FILE_CHECKER_H

#include <string>
#include <vector>

#include "ActionSite.h"
#include "ClassCatalog.h"
#include "Diagnostic.h"
#include "FailureCollector.h"
#include "SourceLocator.h"

namespace modtool {

class FileChecker {
 public:
  // `catalog` learns what each checked file introduces, for the files after
  // it: check the files of a chain in path order.
  explicit FileChecker(ClassCatalog* catalog) : catalog_(*catalog) {}

  // The findings for `file`, ordered by line.
  Diagnostics check(const std::string& file);

 private:
  void checkName(const std::string& file, Diagnostics* found) const;
  Diagnostic fromFailure(const std::string& file, const CollectedFailure& failure, const SourceLocator& locator) const;

  // Classes created or renamed to, attributes added or renamed to.
  void learn(const std::vector<ActionSite>& sites);

  ClassCatalog& catalog_;
};

}  // namespace modtool

#endif
