#include "ImpactReport.h"

#include <cstdio>

#include "JsonText.h"

namespace modtool {

namespace {

using Kind = ObjectChange::Kind;

ClassImpact& impactOf(const std::string& name, std::map<std::string, ClassImpact>* classes) {
  ClassImpact& impact = (*classes)[name];
  impact.name = name;
  return impact;
}

std::string countedNames(const std::map<std::string, long>& names, const char* sign) {
  std::string text;
  for (const auto& entry : names) {
    text += std::string(text.empty() ? "" : ", ") + sign + entry.first + " (" + std::to_string(entry.second) + ")";
  }
  return text;
}

std::string row(const std::string& name, const std::vector<std::string>& cells) {
  char text[64];
  std::string line = "    ";
  std::snprintf(text, sizeof text, "%-28s", name.c_str());
  line += text;
  for (const std::string& cell : cells) {
    std::snprintf(text, sizeof text, "%9s", cell.c_str());
    line += text;
  }
  return line + "\n";
}

// The attribute changes, first examples and losses of a class, if any.
std::string details(const ClassImpact& c) {
  std::string attributes = countedNames(c.attributesAdded, "+");
  const std::string removed = countedNames(c.attributesRemoved, "-");
  attributes += (attributes.empty() || removed.empty() ? "" : ", ") + removed;
  for (const auto& entry : c.attributesRenamed) {
    attributes += (attributes.empty() ? "" : ", ") + entry.first + " -> " + entry.second;
  }
  for (const std::string& to : c.renamedTo)
    attributes += (attributes.empty() ? "" : ", ") + std::string("class -> ") + to;
  if (attributes.empty() && c.examples.empty() && c.losses.empty()) return std::string();
  std::string text = "  " + c.name + ":" + (attributes.empty() ? "" : " " + attributes) + "\n";
  for (const std::string& example : c.examples) text += "      e.g. " + example + "\n";
  for (const std::string& loss : c.losses) text += "    ! loses data: " + loss + "\n";
  return text;
}

std::string jsonCounts(const std::map<std::string, long>& names) {
  std::vector<std::pair<std::string, std::string>> members;
  for (const auto& entry : names) members.emplace_back(entry.first, std::to_string(entry.second));
  return JsonText::object(members);
}

}  // namespace

bool ClassImpact::changed() const {
  return before != after || created + removed + renamed + valuesChanged != 0 || !attributesAdded.empty() ||
         !attributesRemoved.empty() || !attributesRenamed.empty();
}

long SchemaImpact::total(long ClassImpact::*count) const {
  long sum = 0;
  for (const ClassImpact& impact : classes) sum += impact.*count;
  return sum;
}

std::vector<ClassImpact> ImpactReport::compare(const ImmModel& old, const ImmModel& now, const SchemaClasses& classes) {
  // Old objects count when the schema's thread named their class, or the
  // new model has it: the old model may hold other schemas' objects too.
  ModelDiff::Options options;
  options.pairRenames = true;
  options.inScope = [&classes, &now](const std::string& name) {
    return classes.known.count(name) != 0 || now.classes().count(name) != 0;
  };
  const ModelDiff diff = ModelDiff::compare(old, now, options);
  std::map<std::string, ClassImpact> impacts;
  for (const auto& entry : old.objects()) {
    if (options.inScope(entry.second.className)) ++impactOf(entry.second.className, &impacts).before;
  }
  for (const auto& entry : now.objects()) {
    ClassImpact& impact = impactOf(entry.second.className, &impacts);
    ++impact.after;
    impact.written += classes.written.count(impact.name);
    impact.copied += classes.copied.count(impact.name);
  }
  for (auto& entry : impacts) {
    if (classes.read.count(entry.first) != 0) entry.second.read = entry.second.before;
  }
  for (const ObjectChange& change : diff.changes) addChange(change, &impacts);
  findAttributeRenames(diff.changes, &impacts);
  std::vector<ClassImpact> result;
  for (auto& entry : impacts) {
    noteLosses(&entry.second);
    result.push_back(std::move(entry.second));
  }
  return result;
}

void ImpactReport::addChange(const ObjectChange& change, std::map<std::string, ClassImpact>* classes) {
  ClassImpact& impact = impactOf(change.either().className, classes);
  switch (change.kind) {
    case Kind::kAdded:
      ++impact.created;
      return;
    case Kind::kRemoved:
      ++impact.removed;
      return;
    case Kind::kRenamed:
      ++impact.renamed;
      if (change.after->className != impact.name) impact.renamedTo.insert(change.after->className);
      break;
    case Kind::kChanged:
      break;
  }
  for (const AttributeChange& attribute : change.attributes) {
    switch (attribute.kind) {
      case AttributeChange::Kind::kAdded:
        ++impact.attributesAdded[attribute.name];
        break;
      case AttributeChange::Kind::kRemoved:
        ++impact.attributesRemoved[attribute.name];
        break;
      case AttributeChange::Kind::kChanged:
        ++impact.valuesChanged;
        if (impact.examples.size() < ClassImpact::kExamples) {
          impact.examples.push_back(change.after->dn + ": " + attribute.name + ": " +
                                    ModelDiff::valuesText(attribute.before) + " -> " +
                                    ModelDiff::valuesText(attribute.after));
        }
        break;
    }
  }
}

void ImpactReport::findAttributeRenames(const std::vector<ObjectChange>& changes,
                                        std::map<std::string, ClassImpact>* classes) {
  // A removed and an added attribute of one object with the same values is a
  // rename when every object of the class that lost the one gained the other.
  std::map<std::pair<std::string, std::pair<std::string, std::string>>, long> together;
  for (const ObjectChange& change : changes) {
    for (const AttributeChange& removed : change.attributes) {
      if (removed.kind != AttributeChange::Kind::kRemoved) continue;
      for (const AttributeChange& added : change.attributes) {
        if (added.kind == AttributeChange::Kind::kAdded && added.after == removed.before) {
          ++together[{change.before->className, {removed.name, added.name}}];
        }
      }
    }
  }
  for (const auto& entry : together) {
    ClassImpact& impact = (*classes)[entry.first.first];
    const std::string& from = entry.first.second.first;
    const std::string& to = entry.first.second.second;
    if (impact.attributesRemoved[from] != entry.second || impact.attributesAdded[to] != entry.second) continue;
    impact.attributesRenamed[from] = to;
    impact.attributesRemoved.erase(from);
    impact.attributesAdded.erase(to);
  }
}

void ImpactReport::noteLosses(ClassImpact* impact) {
  if (impact->removed > 0) impact->losses.push_back(std::to_string(impact->removed) + " object(s) removed");
  for (const auto& entry : impact->attributesRemoved) {
    impact->losses.push_back("attribute " + entry.first + " dropped with its values (" + std::to_string(entry.second) +
                             " objects)");
  }
}

std::string ImpactReport::toText() const {
  std::string text = outcome + "\n";
  for (const SchemaImpact& schema : schemas) {
    text += "Schema " + schema.name + ": " + schema.fromVersion + " -> " + schema.toVersion + " (" + schema.kind +
            "), " + schema.result + "\n";
    if (!schema.note.empty()) text += "  " + schema.note + "\n";
    if (!schema.compared) continue;
    text += "  objects: " + std::to_string(schema.total(&ClassImpact::before)) + " old, " +
            std::to_string(schema.total(&ClassImpact::after)) + " new\n";
    text += row("class", {"old", "read", "written", "copied", "created", "removed", "renamed", "values"});
    long quiet = 0;
    for (const ClassImpact& c : schema.classes) {
      if (!c.changed()) {
        ++quiet;
        continue;
      }
      text += row(c.name, {std::to_string(c.before), std::to_string(c.read), std::to_string(c.written),
                           std::to_string(c.copied), std::to_string(c.created), std::to_string(c.removed),
                           std::to_string(c.renamed), std::to_string(c.valuesChanged)});
    }
    text += "    (and " + std::to_string(quiet) + " classes without changes)\n";
    for (const ClassImpact& c : schema.classes) text += details(c);
  }
  return text;
}

std::string ImpactReport::toJson() const {
  std::vector<std::string> schemaItems;
  for (const SchemaImpact& schema : schemas) {
    std::vector<std::string> classItems;
    for (const ClassImpact& c : schema.classes) {
      std::vector<std::pair<std::string, std::string>> renamed;
      for (const auto& entry : c.attributesRenamed) renamed.emplace_back(entry.first, JsonText::quote(entry.second));
      classItems.push_back(
          JsonText::object({{"class", JsonText::quote(c.name)},
                            {"old", std::to_string(c.before)},
                            {"new", std::to_string(c.after)},
                            {"read", std::to_string(c.read)},
                            {"written", std::to_string(c.written)},
                            {"copied", std::to_string(c.copied)},
                            {"created", std::to_string(c.created)},
                            {"removed", std::to_string(c.removed)},
                            {"renamed", std::to_string(c.renamed)},
                            {"renamedTo", JsonText::quotedArray({c.renamedTo.begin(), c.renamedTo.end()})},
                            {"attributesAdded", jsonCounts(c.attributesAdded)},
                            {"attributesRemoved", jsonCounts(c.attributesRemoved)},
                            {"attributesRenamed", JsonText::object(renamed)},
                            {"valuesChanged", std::to_string(c.valuesChanged)},
                            {"examples", JsonText::quotedArray(c.examples)},
                            {"losses", JsonText::quotedArray(c.losses)}}));
    }
    schemaItems.push_back(JsonText::object({{"schema", JsonText::quote(schema.name)},
                                            {"from", JsonText::quote(schema.fromVersion)},
                                            {"to", JsonText::quote(schema.toVersion)},
                                            {"kind", JsonText::quote(schema.kind)},
                                            {"result", JsonText::quote(schema.result)},
                                            {"compared", schema.compared ? "true" : "false"},
                                            {"note", JsonText::quote(schema.note)},
                                            {"classes", JsonText::array(classItems)}}));
  }
  return JsonText::object({{"outcome", JsonText::quote(outcome)},
                           {"succeeded", succeeded ? "true" : "false"},
                           {"rollbackReasons", JsonText::quotedArray(rollbackReasons)},
                           {"schemas", JsonText::array(schemaItems)}});
}

}  // namespace modtool
