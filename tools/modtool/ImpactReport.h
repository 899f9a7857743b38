// The impact of a dry run, per schema and class: objects in the old model,
// read, written, copied, created, removed and renamed; attributes added,
// removed and renamed; values changed, with the first examples; and every
// change that loses data. Built from the old model, the new model files the
// run produced, and what the upgrader logged about each schema's classes.

#ifndef VOSK_TOOLS_MODTOOL_IMPACT_REPORT_H
#define VOSK_TOOLS_MODTOOL_IMPACT_REPORT_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "ImmModel.h"
#include "ModelDiff.h"
#include "RunLog.h"

namespace modtool {

struct ClassImpact {
  static constexpr size_t kExamples = 3;

  std::string name;
  long before = 0;  // objects in the old model
  long after = 0;   // objects in the new model
  long read = 0;
  long written = 0;
  long copied = 0;
  long created = 0;
  long removed = 0;
  long renamed = 0;                             // objects that moved to another name or class
  std::set<std::string> renamedTo;              // classes, when not this one
  std::map<std::string, long> attributesAdded;  // name -> objects
  std::map<std::string, long> attributesRemoved;
  std::map<std::string, std::string> attributesRenamed;  // old name -> new name
  long valuesChanged = 0;
  std::vector<std::string> examples;  // "<dn>: <attr>: <before> -> <after>"
  std::vector<std::string> losses;

  bool changed() const;
};

struct SchemaImpact {
  std::string name;
  std::string fromVersion;
  std::string toVersion;
  std::string kind;       // "conversion", "same version", "new schema"
  std::string result;     // "done", "failed", ...
  bool compared = false;  // false: no classes were compared (see note)
  std::string note;
  std::vector<ClassImpact> classes;  // by name

  long total(long ClassImpact::*count) const;
};

class ImpactReport {
 public:
  // The classes of one schema whose new model is `now`, against `old`.
  static std::vector<ClassImpact> compare(const ImmModel& old, const ImmModel& now, const SchemaClasses& classes);

  std::string outcome;  // the wrapper's outcome line
  bool succeeded = false;
  std::vector<std::string> rollbackReasons;
  std::vector<SchemaImpact> schemas;

  // Without the rollback reasons: the wrapper's report tells them, with
  // their context, after a failed run.
  std::string toText() const;
  std::string toJson() const;

 private:
  static void addChange(const ObjectChange& change, std::map<std::string, ClassImpact>* classes);
  static void findAttributeRenames(const std::vector<ObjectChange>& changes,
                                   std::map<std::string, ClassImpact>* classes);
  static void noteLosses(ClassImpact* impact);
};

}  // namespace modtool

#endif
