#include "DiffCommand.h"

#include "CommandLine.h"
#include "JsonText.h"
#include "Progress.h"

namespace modtool {

namespace {

const char* kindName(ObjectChange::Kind kind) {
  switch (kind) {
    case ObjectChange::Kind::kAdded:
      return "added";
    case ObjectChange::Kind::kRemoved:
      return "removed";
    case ObjectChange::Kind::kChanged:
      return "changed";
    case ObjectChange::Kind::kRenamed:
      return "renamed";
  }
  return "";
}

const char* kindName(AttributeChange::Kind kind) {
  switch (kind) {
    case AttributeChange::Kind::kAdded:
      return "added";
    case AttributeChange::Kind::kRemoved:
      return "removed";
    case AttributeChange::Kind::kChanged:
      return "changed";
  }
  return "";
}

std::string valuesJson(const std::vector<SimImmValue>& values) {
  std::vector<std::string> texts;
  for (const SimImmValue& value : values) texts.push_back(value.text);
  return JsonText::quotedArray(texts);
}

}  // namespace

const char* DiffCommand::usage() {
  return "usage: vosk-modtool diff OLD.xml NEW.xml [--json]\n"
         "\n"
         "Compares two IMM XML models object by object (by dn): a summary first, then the objects added\n"
         "(+), removed (-) and changed (~), each changed one with its attributes added, removed and given\n"
         "other values.\n"
         "\n"
         "  --json   one JSON object\n"
         "\n"
         "Exit status: 0 the same objects, 1 differences, 2 could not run.\n";
}

int DiffCommand::run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  CommandLine line;
  std::string why;
  if (!line.parse(argc, argv, 2, {}, {"--json"}, &why) || (!line.help() && line.operands().size() != 2)) {
    err << "vosk-modtool diff: " << (why.empty() ? "two model files are needed" : why) << "\n\n" << usage();
    return kExitCouldNotRun;
  }
  if (line.help()) {
    out << usage();
    return kExitClean;
  }
  ImmModel before;
  ImmModel after;
  Progress progress;
  if (!before.read({line.operands()[0]}, &progress, &why) || !after.read({line.operands()[1]}, &progress, &why)) {
    progress.done();
    err << "vosk-modtool diff: " << why << "\n";
    return kExitCouldNotRun;
  }
  progress.done();
  const ModelDiff diff = ModelDiff::compare(before, after, {true, {}});
  out << (line.has("--json") ? toJson(diff) + "\n" : toText(diff));
  return diff.changes.empty() ? kExitClean : kExitFound;
}

std::string DiffCommand::summary(const ModelDiff& diff) {
  std::string text = std::to_string(diff.beforeCount) + " objects before, " + std::to_string(diff.afterCount) +
                     " after: " + std::to_string(diff.count(ObjectChange::Kind::kAdded)) + " added, " +
                     std::to_string(diff.count(ObjectChange::Kind::kRemoved)) + " removed, " +
                     std::to_string(diff.count(ObjectChange::Kind::kChanged)) + " changed, ";
  const long renamed = diff.count(ObjectChange::Kind::kRenamed);
  if (renamed > 0) text += std::to_string(renamed) + " renamed, ";
  return text + std::to_string(diff.unchanged) + " unchanged";
}

std::string DiffCommand::changeText(const ObjectChange& change) {
  const SimImmObject& object = change.either();
  std::string text;
  switch (change.kind) {
    case ObjectChange::Kind::kAdded:
      text = "+ " + object.dn + " (" + object.className + ")\n";
      break;
    case ObjectChange::Kind::kRemoved:
      text = "- " + object.dn + " (" + object.className + ")\n";
      break;
    case ObjectChange::Kind::kChanged:
      text = "~ " + object.dn + " (" + object.className + ")\n";
      if (change.before->className != change.after->className) {
        text += "    class: " + change.before->className + " -> " + change.after->className + "\n";
      }
      break;
    case ObjectChange::Kind::kRenamed:
      text = "> " + change.before->dn + " -> " + change.after->dn + " (" + change.before->className + " -> " +
             change.after->className + ")\n";
      break;
  }
  for (const AttributeChange& attribute : change.attributes) {
    switch (attribute.kind) {
      case AttributeChange::Kind::kAdded:
        text += "    + " + attribute.name + " = " + ModelDiff::valuesText(attribute.after) + "\n";
        break;
      case AttributeChange::Kind::kRemoved:
        text += "    - " + attribute.name + " = " + ModelDiff::valuesText(attribute.before) + "\n";
        break;
      case AttributeChange::Kind::kChanged:
        text += "    " + attribute.name + ": " + ModelDiff::valuesText(attribute.before) + " -> " +
                ModelDiff::valuesText(attribute.after) + "\n";
        break;
    }
  }
  return text;
}

std::string DiffCommand::changeJson(const ObjectChange& change) {
  std::vector<std::string> attributes;
  for (const AttributeChange& attribute : change.attributes) {
    attributes.push_back(JsonText::object({{"name", JsonText::quote(attribute.name)},
                                           {"kind", JsonText::quote(kindName(attribute.kind))},
                                           {"before", valuesJson(attribute.before)},
                                           {"after", valuesJson(attribute.after)}}));
  }
  return JsonText::object({{"kind", JsonText::quote(kindName(change.kind))},
                           {"dn", JsonText::quote(change.either().dn)},
                           {"class", JsonText::quote(change.either().className)},
                           {"newDn", JsonText::quote(change.after != nullptr ? change.after->dn : "")},
                           {"newClass", JsonText::quote(change.after != nullptr ? change.after->className : "")},
                           {"attributes", JsonText::array(attributes)}});
}

std::string DiffCommand::toText(const ModelDiff& diff) {
  std::string text = "Summary: " + summary(diff) + "\n";
  for (const ObjectChange& change : diff.changes) text += changeText(change);
  return text;
}

std::string DiffCommand::toJson(const ModelDiff& diff) {
  std::vector<std::string> changes;
  for (const ObjectChange& change : diff.changes) changes.push_back(changeJson(change));
  return JsonText::object({{"before", std::to_string(diff.beforeCount)},
                           {"after", std::to_string(diff.afterCount)},
                           {"added", std::to_string(diff.count(ObjectChange::Kind::kAdded))},
                           {"removed", std::to_string(diff.count(ObjectChange::Kind::kRemoved))},
                           {"changed", std::to_string(diff.count(ObjectChange::Kind::kChanged))},
                           {"renamed", std::to_string(diff.count(ObjectChange::Kind::kRenamed))},
                           {"unchanged", std::to_string(diff.unchanged)},
                           {"changes", JsonText::array(changes)}});
}

}  // namespace modtool
