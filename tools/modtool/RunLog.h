// What the upgrader's persistent log tells about the classes of each schema:
// the classes that belong to it (its class file's, those it read, added or
// removed), those it wrote and those it had the platform copy.

#ifndef VOSK_TOOLS_MODTOOL_RUN_LOG_H
#define VOSK_TOOLS_MODTOOL_RUN_LOG_H

#include <map>
#include <set>
#include <string>
#include <vector>

namespace modtool {

struct SchemaClasses {
  std::set<std::string> known;  // every class the schema's thread named
  std::set<std::string> read;
  std::set<std::string> written;
  std::set<std::string> copied;
};

class RunLog {
 public:
  // `records`: the log's texts in order, as UpgradeLogParser gives them.
  explicit RunLog(const std::vector<std::string>& records);

  // The classes of `schema`; empty when the log never names it.
  const SchemaClasses& classesOf(const std::string& schema) const;

 private:
  void take(const std::string& schema, const std::string& text);

  std::map<std::string, SchemaClasses> schemas_;
};

}  // namespace modtool

#endif
