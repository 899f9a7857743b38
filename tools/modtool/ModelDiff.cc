#include "ModelDiff.h"

#include <map>

namespace modtool {

namespace {

const std::vector<SimImmValue>* valuesOf(const SimImmObject& object, const std::string& name) {
  for (const SimImmAttrValues& attr : object.attrs) {
    if (attr.name == name) return &attr.values;
  }
  return nullptr;
}

// The RDN values of a name, in order, without their attribute names; with
// `keepFirst`, the first RDN's attribute name in front.
std::string rdnValues(const std::string& dn, bool keepFirst) {
  std::string values;
  std::string rest = dn;
  if (keepFirst) values = dn.substr(0, dn.find('=')) + '\n';
  while (!rest.empty()) {
    std::string attr;
    std::string value;
    std::string parent;
    if (!SimImmObject::splitDn(rest, &attr, &value, &parent)) return dn;
    values += value + '\n';
    rest = parent;
  }
  return values;
}

}  // namespace

ModelDiff ModelDiff::compare(const ImmModel& before, const ImmModel& after, const Options& options) {
  ModelDiff diff;
  auto inScope = [&options](const SimImmObject& object) {
    return !options.inScope || options.inScope(object.className);
  };
  std::vector<ObjectChange> added;
  for (const auto& entry : before.objects()) {
    if (!inScope(entry.second)) continue;
    ++diff.beforeCount;
    auto found = after.objects().find(entry.first);
    if (found == after.objects().end() || !inScope(found->second)) {
      diff.changes.push_back({ObjectChange::Kind::kRemoved, &entry.second, nullptr, {}});
      continue;
    }
    std::vector<AttributeChange> attributes = attributeChanges(entry.second, found->second);
    if (attributes.empty() && entry.second.className == found->second.className) {
      ++diff.unchanged;
      continue;
    }
    diff.changes.push_back({ObjectChange::Kind::kChanged, &entry.second, &found->second, std::move(attributes)});
  }
  for (const auto& entry : after.objects()) {
    if (!inScope(entry.second)) continue;
    ++diff.afterCount;
    auto found = before.objects().find(entry.first);
    if (found == before.objects().end() || !inScope(found->second)) {
      diff.changes.push_back({ObjectChange::Kind::kAdded, nullptr, &entry.second, {}});
    }
  }
  // Objects whose class keeps its naming attribute pair first, so that
  // siblings with the same RDN value ("...Id=1") do not stand in the way.
  if (options.pairRenames) diff.pairRenames(true);
  if (options.pairRenames) diff.pairRenames(false);
  return diff;
}

std::vector<AttributeChange> ModelDiff::attributeChanges(const SimImmObject& before, const SimImmObject& after) {
  std::vector<AttributeChange> changes;
  for (const SimImmAttrValues& attr : before.attrs) {
    const std::vector<SimImmValue>* now = valuesOf(after, attr.name);
    if (now == nullptr) {
      changes.push_back({AttributeChange::Kind::kRemoved, attr.name, attr.values, {}});
    } else if (*now != attr.values) {
      changes.push_back({AttributeChange::Kind::kChanged, attr.name, attr.values, *now});
    }
  }
  for (const SimImmAttrValues& attr : after.attrs) {
    if (valuesOf(before, attr.name) == nullptr) {
      changes.push_back({AttributeChange::Kind::kAdded, attr.name, {}, attr.values});
    }
  }
  return changes;
}

void ModelDiff::pairRenames(bool keepFirst) {
  // Only a name that one removed and one added object share pairs them.
  std::map<std::string, std::vector<size_t>> removed;
  std::map<std::string, std::vector<size_t>> added;
  for (size_t i = 0; i < changes.size(); ++i) {
    if (changes[i].kind == ObjectChange::Kind::kRemoved)
      removed[rdnValues(changes[i].before->dn, keepFirst)].push_back(i);
    if (changes[i].kind == ObjectChange::Kind::kAdded) added[rdnValues(changes[i].after->dn, keepFirst)].push_back(i);
  }
  std::vector<bool> merged(changes.size(), false);
  for (const auto& entry : removed) {
    auto match = added.find(entry.first);
    if (entry.second.size() != 1 || match == added.end() || match->second.size() != 1) continue;
    ObjectChange& change = changes[entry.second[0]];
    change.kind = ObjectChange::Kind::kRenamed;
    change.after = changes[match->second[0]].after;
    change.attributes = attributeChanges(*change.before, *change.after);
    merged[match->second[0]] = true;
  }
  std::vector<ObjectChange> kept;
  for (size_t i = 0; i < changes.size(); ++i) {
    if (!merged[i]) kept.push_back(std::move(changes[i]));
  }
  changes.swap(kept);
}

long ModelDiff::count(ObjectChange::Kind kind) const {
  long n = 0;
  for (const ObjectChange& change : changes) n += change.kind == kind;
  return n;
}

std::string ModelDiff::valuesText(const std::vector<SimImmValue>& values) {
  // One line per change: line ends inside a value are shown escaped.
  auto shown = [](const SimImmValue& value) {
    std::string text;
    for (char c : value.text) text += c == '\n' ? std::string("\\n") : std::string(1, c);
    return text;
  };
  if (values.size() == 1) return shown(values[0]);
  std::string text = "[";
  for (size_t i = 0; i < values.size(); ++i) text += (i == 0 ? "" : ", ") + shown(values[i]);
  return text + "]";
}

}  // namespace modtool
