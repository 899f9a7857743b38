// Reads the records of the upgrader's persistent log and gathers, per schema,
// what its upgrade thread reported: versions, kind of upgrade, the modification
// files it was given and where their chain broke, the conversion path with the
// result of each file and the first failure reason recorded while the file was
// processed, final result and timing.
//
// A record reads "[YYYY-MM-DD hh:mm:ss] NNNNNNNNNN SV text"; a line that does
// not start like that continues the text of the record before it (texts may
// hold line ends). A schema thread's texts start with "<schema>: ". Schemas
// come in the order of the upgrader's "for schemas" list, then in the order
// they first appear.

#ifndef VOSK_TOOLS_UPGRADE_LOG_PARSER_H
#define VOSK_TOOLS_UPGRADE_LOG_PARSER_H

#include <string>
#include <vector>

#include "SchemaReport.h"

namespace wrappersim {

class UpgradeLogParser {
 public:
  // Takes log text in chronological order; may be called once per file.
  void add(const std::string& logText);

  // `rollbackReasons` are the node's rollback file: a failure reason whose
  // log record was cut at the stream's record size is taken whole from there.
  std::vector<SchemaReport> schemas(const std::vector<std::string>& rollbackReasons) const;

  // The texts of all records so far, in order.
  const std::vector<std::string>& records() const { return records_; }

 private:
  std::vector<std::string> records_;
};

}  // namespace wrappersim

#endif
