#include "RunLog.h"

namespace modtool {

namespace {

// The class in "<prefix><class><end>", or empty.
std::string between(const std::string& text, const std::string& prefix, const std::string& end) {
  if (text.compare(0, prefix.size(), prefix) != 0) return std::string();
  const size_t stop = text.find(end, prefix.size());
  return stop == std::string::npos ? std::string() : text.substr(prefix.size(), stop - prefix.size());
}

bool plainName(const std::string& name) { return !name.empty() && name.find_first_of(" :,") == std::string::npos; }

}  // namespace

RunLog::RunLog(const std::vector<std::string>& records) {
  for (const std::string& record : records) {
    // A schema thread's texts start with "<schema>: ".
    const size_t colon = record.find(": ");
    if (colon == std::string::npos || !plainName(record.substr(0, colon))) continue;
    take(record.substr(0, colon), record.substr(colon + 2));
  }
}

void RunLog::take(const std::string& schema, const std::string& text) {
  SchemaClasses& classes = schemas_[schema];
  struct Pattern {
    const char* prefix;
    const char* end;
    std::set<std::string>* set;
  };
  const Pattern patterns[] = {
      {"Inserting class ", ",", nullptr},
      {"Inserting runtime persistent class ", ",", nullptr},
      {">>>>>>>>>> Database for MO ", " read.", &classes.read},
      {"Remove instance group ", "\n", nullptr},
      {"Adding new instance group ", "\n", nullptr},
      {"Add ", " to IGs to write", &classes.written},
      {"Add ", " to runtime persistent IGs to write", &classes.written},
      {"Add ", " to InstanceGroups to copy", &classes.copied},
  };
  const std::string line = text + "\n";
  for (const Pattern& pattern : patterns) {
    const std::string name = between(line, pattern.prefix, pattern.end);
    if (!plainName(name)) continue;
    classes.known.insert(name);
    if (pattern.set != nullptr) pattern.set->insert(name);
  }
}

const SchemaClasses& RunLog::classesOf(const std::string& schema) const {
  static const SchemaClasses kNone;
  auto found = schemas_.find(schema);
  return found == schemas_.end() ? kNone : found->second;
}

}  // namespace modtool
