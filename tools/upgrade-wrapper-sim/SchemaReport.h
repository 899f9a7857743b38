// What the persistent log tells about the upgrade of one schema.

#ifndef VOSK_TOOLS_SCHEMA_REPORT_H
#define VOSK_TOOLS_SCHEMA_REPORT_H

#include <string>
#include <vector>

namespace wrappersim {

struct ConversionStep {
  enum class State { kNotFinished, kSuccess, kFailure };

  std::string file;
  State state = State::kNotFinished;
};

struct SchemaReport {
  enum class Kind { kUnknown, kSameVersion, kNewSchema, kConversion };
  enum class Result { kNotFinished, kDone, kFailed, kNonUpgradeRestart };

  std::string name;
  std::string fromVersion;  // empty until the versions are logged
  std::string toVersion;
  Kind kind = Kind::kUnknown;
  // The size the upgrader announced for the conversion path; -1 when none was.
  long announcedPathSize = -1;
  std::vector<ConversionStep> path;  // in processing order
  Result result = Result::kNotFinished;
  std::string timing;  // the "Upgrade done in ..." text, empty when absent
};

}  // namespace wrappersim

#endif
