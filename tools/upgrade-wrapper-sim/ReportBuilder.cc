#include "ReportBuilder.h"

namespace wrappersim {

namespace {

const char* kindText(SchemaReport::Kind kind) {
  switch (kind) {
    case SchemaReport::Kind::kSameVersion:
      return " (same version)";
    case SchemaReport::Kind::kNewSchema:
      return " (new schema)";
    case SchemaReport::Kind::kConversion:
      return " (conversion)";
    case SchemaReport::Kind::kUnknown:
      break;
  }
  return "";
}

const char* resultText(SchemaReport::Result result) {
  switch (result) {
    case SchemaReport::Result::kDone:
      return "done";
    case SchemaReport::Result::kFailed:
      return "failed";
    case SchemaReport::Result::kNonUpgradeRestart:
      return "non-upgrade restart, nothing to do";
    case SchemaReport::Result::kNotFinished:
      break;
  }
  return "not finished";
}

const char* stepText(ConversionStep::State state) {
  switch (state) {
    case ConversionStep::State::kSuccess:
      return "SUCCESS";
    case ConversionStep::State::kFailure:
      return "FAILURE";
    case ConversionStep::State::kNotFinished:
      break;
  }
  return "not finished";
}

std::string candidateText(const CandidateFile& candidate) {
  std::string versions = candidate.fromVersion + " -> " + candidate.toVersion;
  switch (candidate.use) {
    case CandidateFile::Use::kIgnored:
      return candidate.file + ": ignored: " + candidate.why;
    case CandidateFile::Use::kNeverUsed:
      return candidate.file + ": " + versions + ", never used: " + candidate.why;
    case CandidateFile::Use::kTaken:
      break;
  }
  return candidate.file + ": " + versions;
}

std::string pathBreakText(const PathBreak& pathBreak) {
  std::string chain = "none, the chain from " + pathBreak.from;
  if (!pathBreak.repeatedFile.empty()) return chain + " takes " + pathBreak.repeatedFile + " twice";
  return chain + " breaks at " + pathBreak.missingVersion + ": no file starts there";
}

// Why a file of the path did not succeed; empty for a success. The upgrader
// reports every file after a failed one as FAILURE, even one during which
// nothing asked for a rollback.
std::string stepExplanation(const ConversionStep& step, bool earlierFailed) {
  if (!step.cause.empty()) return "cause: " + step.cause;
  if (step.state != ConversionStep::State::kFailure) return "";
  return earlierFailed ? "not applied: an earlier file failed" : "cause: none in the log";
}

std::string baseName(const std::string& path) {
  size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The file of `files` named <schema>.xml, or empty.
std::string schemaFile(const std::string& schema, const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (baseName(file) == schema + ".xml") return file;
  }
  return "";
}

}  // namespace

std::string ReportBuilder::build(const RunOutcome& outcome, const RunFindings& findings) {
  std::string out = outcome.describe() + "\n";
  if (!findings.rollbackReasons.empty()) {
    addCountedList("Rollback reasons", findings.rollbackReasons, &out);
  } else if (outcome.rollsBack()) {
    out += "Rollback reasons: none recorded\n";
  }
  // The node records what it refused and, as warnings, what it took though
  // it is likely a mistake.
  std::vector<std::string> refused, warnings;
  for (const std::string& line : findings.platformErrors) {
    (line.find("] warning: ") != std::string::npos ? warnings : refused).push_back(line);
  }
  if (!refused.empty()) addCountedList("Refused by the simulated node", refused, &out);
  if (!warnings.empty()) addCountedList("Warnings of the simulated node", warnings, &out);

  if (findings.schemas.empty()) {
    out += "Schemas: none in the persistent log\n";
  } else {
    out += "Schemas (" + std::to_string(findings.schemas.size()) + "):\n";
    for (const SchemaReport& schema : findings.schemas) addSchema(schema, findings, &out);
  }
  addFileList("Persistent log", findings.logFiles, &out);
  addFileList("Model files", findings.modelFiles, &out);
  addFileList("Discarded model files", findings.discardedFiles, &out);
  return out;
}

void ReportBuilder::addSchema(const SchemaReport& schema, const RunFindings& findings, std::string* out) {
  *out += "  " + schema.name + "\n";
  if (!schema.fromVersion.empty() || !schema.toVersion.empty()) {
    *out += "    versions: " + schema.fromVersion + " -> " + schema.toVersion + kindText(schema.kind) + "\n";
  }
  if (!schema.candidates.empty()) {
    *out += "    modification files found (" + std::to_string(schema.candidates.size()) + "):\n";
    for (const CandidateFile& candidate : schema.candidates) *out += "      " + candidateText(candidate) + "\n";
  }
  if (schema.kind == SchemaReport::Kind::kConversion || !schema.path.empty()) addPath(schema, out);
  *out += std::string("    result: ") + resultText(schema.result) + "\n";
  if (!schema.timing.empty()) *out += "    timing: " + schema.timing + "\n";

  std::string model = schemaFile(schema.name, findings.modelFiles);
  std::string discarded = schemaFile(schema.name, findings.discardedFiles);
  if (!model.empty()) *out += "    new model: " + model + "\n";
  if (!discarded.empty()) *out += "    discarded model: " + discarded + "\n";
  if (model.empty() && discarded.empty()) *out += "    new model: none written\n";
}

void ReportBuilder::addPath(const SchemaReport& schema, std::string* out) {
  if (!schema.pathBreak.missingVersion.empty() || !schema.pathBreak.repeatedFile.empty()) {
    *out += "    conversion path: " + pathBreakText(schema.pathBreak) + "\n";
  } else if (schema.announcedPathSize >= 0) {
    *out += "    conversion path: " + std::to_string(schema.announcedPathSize) + " modification files\n";
  } else {
    *out += "    conversion path: size not logged\n";
  }
  bool earlierFailed = false;
  for (size_t i = 0; i < schema.path.size(); ++i) {
    const ConversionStep& step = schema.path[i];
    std::string number = "      " + std::to_string(i + 1) + ". ";
    *out += number + step.file + ": " + stepText(step.state) + "\n";
    std::string explanation = stepExplanation(step, earlierFailed);
    if (!explanation.empty()) *out += std::string(number.size(), ' ') + explanation + "\n";
    earlierFailed = earlierFailed || step.state == ConversionStep::State::kFailure;
  }
}

void ReportBuilder::addCountedList(const char* title, const std::vector<std::string>& lines, std::string* out) {
  *out += std::string(title) + " (" + std::to_string(lines.size()) + "):\n";
  for (const std::string& line : lines) *out += "  " + line + "\n";
}

void ReportBuilder::addFileList(const char* title, const std::vector<std::string>& files, std::string* out) {
  if (files.empty()) {
    *out += std::string(title) + ": none\n";
    return;
  }
  *out += std::string(title) + ":\n";
  for (const std::string& file : files) *out += "  " + file + "\n";
}

}  // namespace wrappersim
