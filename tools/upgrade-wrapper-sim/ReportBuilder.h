// Builds the text the wrapper prints after a run: the outcome, every rollback
// reason, every call the simulated node refused, what each schema's upgrade
// did, and where the new model files are.

#ifndef VOSK_TOOLS_REPORT_BUILDER_H
#define VOSK_TOOLS_REPORT_BUILDER_H

#include <string>
#include <vector>

#include "RunOutcome.h"
#include "SchemaReport.h"

namespace wrappersim {

struct RunFindings {
  std::vector<std::string> rollbackReasons;
  std::vector<std::string> platformErrors;  // refusals and warnings of the node
  std::vector<SchemaReport> schemas;
  std::vector<std::string> logFiles;
  std::vector<std::string> modelFiles;
  std::vector<std::string> discardedFiles;
};

class ReportBuilder {
 public:
  static std::string build(const RunOutcome& outcome, const RunFindings& findings);

 private:
  static void addSchema(const SchemaReport& schema, const RunFindings& findings, std::string* out);
  static void addPath(const SchemaReport& schema, std::string* out);
  static void addCountedList(const char* title, const std::vector<std::string>& lines, std::string* out);
  static void addFileList(const char* title, const std::vector<std::string>& files, std::string* out);
};

}  // namespace wrappersim

#endif
