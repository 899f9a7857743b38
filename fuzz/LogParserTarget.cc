// Fuzz target: the upgrader's persistent log as the wrapper reads it after a
// run, and the report it builds from it. The input is split at form feeds:
// every part but the last is one log file, the last part's lines are the
// node's rollback reasons.

#include <string>
#include <vector>

#include "FuzzInput.h"
#include "ReportBuilder.h"
#include "UpgradeLogParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  const std::string input(reinterpret_cast<const char*>(data), size);
  wrappersim::UpgradeLogParser parser;
  size_t start = 0;
  for (size_t end; (end = input.find('\f', start)) != std::string::npos; start = end + 1) {
    parser.add(input.substr(start, end - start));
  }
  wrappersim::RunFindings findings;
  for (size_t end; start < input.size(); start = end + 1) {
    end = input.find('\n', start);
    if (end == std::string::npos) end = input.size();
    findings.rollbackReasons.push_back(input.substr(start, end - start));
  }
  findings.schemas = parser.schemas(findings.rollbackReasons);
  wrappersim::ReportBuilder::build(wrappersim::RunOutcome{}, findings);
  return 0;
}
