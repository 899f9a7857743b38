// What the persistent log tells about the upgrade of one schema.

#ifndef VOSK_TOOLS_SCHEMA_REPORT_H
#define VOSK_TOOLS_SCHEMA_REPORT_H

#include <string>
#include <vector>

namespace wrappersim {

// A modification file the upgrader was given for the schema, and what it made
// of the file before it chained the conversion path.
struct CandidateFile {
  enum class Use { kTaken, kIgnored, kNeverUsed };

  std::string file;
  Use use = Use::kTaken;
  std::string fromVersion;  // empty for an ignored file
  std::string toVersion;
  std::string why;  // why an ignored or never used file cannot serve, as logged
};

// Where the chain of modification files broke when no conversion path exists;
// all empty when none broke.
struct PathBreak {
  std::string from;            // the version the chain started at
  std::string missingVersion;  // the version no file starts at, or
  std::string repeatedFile;    // the file the chain would have taken twice
};

struct ConversionStep {
  enum class State { kNotFinished, kSuccess, kFailure };

  std::string file;
  State state = State::kNotFinished;
  // The first failure reason the schema's thread recorded while the file was
  // processed, on one line; empty when none was.
  std::string cause;
};

struct SchemaReport {
  enum class Kind { kUnknown, kSameVersion, kNewSchema, kConversion };
  enum class Result { kNotFinished, kDone, kFailed, kNonUpgradeRestart };

  std::string name;
  std::string fromVersion;  // empty until the versions are logged
  std::string toVersion;
  Kind kind = Kind::kUnknown;
  std::vector<CandidateFile> candidates;  // in the order the upgrader was given them
  PathBreak pathBreak;
  // The size the upgrader announced for the conversion path; -1 when none was.
  long announcedPathSize = -1;
  std::vector<ConversionStep> path;  // in processing order
  Result result = Result::kNotFinished;
  std::string timing;  // the "Upgrade done in ..." text, empty when absent
};

}  // namespace wrappersim

#endif
