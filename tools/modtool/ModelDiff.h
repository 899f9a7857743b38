// Two IMM models compared object by object: objects added, removed and
// changed (by dn), and per changed object the attributes added, removed and
// given other values. Optionally, a removed and an added object whose names
// hold the same RDN values in the same order are taken as one object
// renamed (renaming a class or a naming attribute changes an RDN attribute's
// name, in the object's name and in every descendant's), when no other
// object's name holds the same values.

#ifndef VOSK_TOOLS_MODTOOL_MODEL_DIFF_H
#define VOSK_TOOLS_MODTOOL_MODEL_DIFF_H

#include <functional>
#include <string>
#include <vector>

#include "ImmModel.h"

namespace modtool {

struct AttributeChange {
  enum class Kind { kAdded, kRemoved, kChanged };

  Kind kind = Kind::kChanged;
  std::string name;
  std::vector<SimImmValue> before;
  std::vector<SimImmValue> after;
};

struct ObjectChange {
  enum class Kind { kAdded, kRemoved, kChanged, kRenamed };

  Kind kind = Kind::kChanged;
  const SimImmObject* before = nullptr;  // null when added
  const SimImmObject* after = nullptr;   // null when removed
  std::vector<AttributeChange> attributes;

  const SimImmObject& either() const { return before != nullptr ? *before : *after; }
};

class ModelDiff {
 public:
  struct Options {
    bool pairRenames = false;
    // Which classes count; unset: all.
    std::function<bool(const std::string& className)> inScope;
  };

  // The models must outlive the diff.
  static ModelDiff compare(const ImmModel& before, const ImmModel& after, const Options& options);

  std::vector<ObjectChange> changes;  // removed and changed by the old dn, then added
  long beforeCount = 0;
  long afterCount = 0;
  long unchanged = 0;

  long count(ObjectChange::Kind kind) const;
  // A value list as text: one value as it is, several in brackets.
  static std::string valuesText(const std::vector<SimImmValue>& values);

 private:
  static std::vector<AttributeChange> attributeChanges(const SimImmObject& before, const SimImmObject& after);
  // `keepFirst`: the first RDN's attribute name must match too.
  void pairRenames(bool keepFirst);
};

}  // namespace modtool

#endif
