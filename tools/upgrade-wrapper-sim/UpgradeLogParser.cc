#include "UpgradeLogParser.h"

#include <cctype>
#include <cstdlib>
#include <map>

namespace wrappersim {

namespace {

// "[YYYY-MM-DD hh:mm:ss] NNNNNNNNNN SV " in front of every record's text.
const size_t kTextStart = 36;

bool startsWith(const std::string& text, const char* prefix, std::string* rest = nullptr) {
  size_t length = std::char_traits<char>::length(prefix);
  if (text.compare(0, length, prefix) != 0) return false;
  if (rest != nullptr) *rest = text.substr(length);
  return true;
}

bool endsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

// True when `text` is `prefix`, a part, then `suffix`; the part goes to `middle`.
bool between(const std::string& text, const char* prefix, const std::string& suffix, std::string* middle) {
  std::string rest;
  if (!startsWith(text, prefix, &rest) || !endsWith(rest, suffix)) return false;
  *middle = rest.substr(0, rest.size() - suffix.size());
  return true;
}

bool isDigits(const std::string& line, size_t from, size_t count) {
  for (size_t i = from; i < from + count; ++i) {
    if (!std::isdigit(static_cast<unsigned char>(line[i]))) return false;
  }
  return true;
}

// The record's text, or false when the line does not start a record.
bool recordText(const std::string& line, std::string* text) {
  if (line.size() < kTextStart - 1 || line[0] != '[' || line[20] != ']' || line[21] != ' ' || line[32] != ' ' ||
      !isDigits(line, 1, 4) || !isDigits(line, 22, 10) || !std::isupper(static_cast<unsigned char>(line[33])) ||
      !std::isupper(static_cast<unsigned char>(line[34]))) {
    return false;
  }
  if (line.size() > kTextStart - 1 && line[kTextStart - 1] != ' ') return false;
  *text = line.size() > kTextStart ? line.substr(kTextStart) : std::string();
  return true;
}

// Splits "<schema>: <message>"; a schema name holds no blank and no colon.
bool splitSchemaMessage(const std::string& text, std::string* name, std::string* message) {
  size_t colon = text.find(": ");
  if (colon == 0 || colon == std::string::npos) return false;
  if (text.find_first_of(" \t", 0) < colon) return false;
  *name = text.substr(0, colon);
  *message = text.substr(colon + 2);
  return true;
}

// Splits "<from> to <to>".
bool splitVersions(const std::string& text, std::string* from, std::string* to) {
  size_t separator = text.find(" to ");
  if (separator == std::string::npos) return false;
  *from = text.substr(0, separator);
  *to = text.substr(separator + 4);
  return true;
}

// "<path> takes the schema from <from> to <to>", "<path> is ignored: <why>" or
// "<path> (from <from> to <to>) is never used: <why>".
bool readCandidate(const std::string& text, CandidateFile* candidate) {
  static const char kIgnored[] = " is ignored: ";
  static const char kVersions[] = " (from ";
  static const char kNeverUsed[] = ") is never used: ";
  static const char kTakes[] = " takes the schema from ";
  size_t at = text.find(kIgnored);
  if (at != std::string::npos) {
    candidate->use = CandidateFile::Use::kIgnored;
    candidate->file = text.substr(0, at);
    candidate->why = text.substr(at + sizeof kIgnored - 1);
    return true;
  }
  at = text.find(kNeverUsed);
  size_t open = at == std::string::npos ? std::string::npos : text.rfind(kVersions, at);
  if (open != std::string::npos) {
    candidate->use = CandidateFile::Use::kNeverUsed;
    candidate->file = text.substr(0, open);
    candidate->why = text.substr(at + sizeof kNeverUsed - 1);
    size_t versions = open + sizeof kVersions - 1;
    return splitVersions(text.substr(versions, at - versions), &candidate->fromVersion, &candidate->toVersion);
  }
  at = text.rfind(kTakes);
  if (at == std::string::npos) return false;
  candidate->file = text.substr(0, at);
  return splitVersions(text.substr(at + sizeof kTakes - 1), &candidate->fromVersion, &candidate->toVersion);
}

// The reason of a failure request, "UPGRADE FAIL: Application identity: ...,
// wpkRevision = <revision>. <reason>", on one line as the node keeps it.
std::string failureReason(const std::string& request) {
  size_t identity = request.find("wpkRevision = ");
  size_t end = identity == std::string::npos ? std::string::npos : request.find(". ", identity);
  std::string reason = end == std::string::npos ? request : request.substr(end + 2);
  for (char& c : reason) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  while (!reason.empty() && reason.back() == ' ') reason.pop_back();
  return reason;
}

// The log cuts a record at the stream's record size; the node keeps each
// request whole. A cause that matches no request is taken as the start of one.
std::string wholeReason(const std::string& cause, const std::vector<std::string>& requests) {
  std::string longer;
  for (const std::string& request : requests) {
    std::string reason = failureReason(request);
    if (reason == cause) return cause;
    if (longer.empty() && reason.compare(0, cause.size(), cause) == 0) longer = reason;
  }
  return longer.empty() ? cause : longer;
}

// The candidate files and why no conversion path exists; false when the text
// is none of these messages.
bool applyPathMessage(const std::string& message, SchemaReport* report) {
  PathBreak& pathBreak = report->pathBreak;
  if (between(message, "A modfile with from-version ", " could not be found", &pathBreak.missingVersion) ||
      between(message, "A modfile, ", ", was found more than once in the upgrade path", &pathBreak.repeatedFile)) {
    return true;
  }
  std::string rest;
  if (startsWith(message, "Modification file ", &rest)) {
    CandidateFile candidate;
    if (!readCandidate(rest, &candidate)) return false;
    report->candidates.push_back(candidate);
  } else if (startsWith(message, "Could not calculate Conversion Path between versions from: ", &rest)) {
    pathBreak.from = rest.substr(0, rest.find(" and to: "));
  } else if (startsWith(message, "Conversion path size: ", &rest)) {
    report->kind = SchemaReport::Kind::kConversion;
    report->announcedPathSize = std::strtol(rest.c_str(), nullptr, 10);
  } else {
    return false;
  }
  return true;
}

// The files of the path, their results and the failure reasons recorded while
// each was processed; false when the text is none of these messages.
bool applyStepMessage(const std::string& message, SchemaReport* report) {
  std::string rest;
  if (startsWith(message, "Processing of modification file ", &rest)) {
    size_t was = rest.rfind(" was a ");
    if (was == std::string::npos) return false;
    std::string file = rest.substr(0, was);
    ConversionStep::State state =
        rest.substr(was + 7) == "SUCCESS" ? ConversionStep::State::kSuccess : ConversionStep::State::kFailure;
    for (auto step = report->path.rbegin(); step != report->path.rend(); ++step) {
      if (step->file == file && step->state == ConversionStep::State::kNotFinished) {
        step->state = state;
        return true;
      }
    }
    report->path.push_back(ConversionStep{file, state, ""});
  } else if (startsWith(message, "Processing modification file ", &rest)) {
    report->path.push_back(ConversionStep{rest, ConversionStep::State::kNotFinished, ""});
  } else if (startsWith(message, "UPGRADE FAIL: ")) {
    ConversionStep* open = report->path.empty() ? nullptr : &report->path.back();
    if (open != nullptr && open->state == ConversionStep::State::kNotFinished && open->cause.empty()) {
      open->cause = failureReason(message);
    }
  } else {
    return false;
  }
  return true;
}

// Applies one schema thread message; false when the text is none of the
// messages the report uses.
bool applyMessage(const std::string& message, SchemaReport* report) {
  std::string rest;
  if (applyPathMessage(message, report) || applyStepMessage(message, report)) return true;
  if (message == "UPGRADE STARTING" || message == "Starting upgrade.") return true;
  if (message == "Non-upgrade restart, nothing to do.") {
    report->result = SchemaReport::Result::kNonUpgradeRestart;
  } else if (startsWith(message, "Upgrading from (ver_rel_corr): ", &rest)) {
    return splitVersions(rest, &report->fromVersion, &report->toVersion);
  } else if (startsWith(message, "Same from and to-version (")) {
    report->kind = SchemaReport::Kind::kSameVersion;
  } else if (startsWith(message, "New IMM schema ") && endsWith(message, " introduced through upgrade")) {
    report->kind = SchemaReport::Kind::kNewSchema;
  } else if (startsWith(message, "Upgrade done in ")) {
    report->timing = message;
  } else if (message == "UPGRADE IS DONE") {
    report->result = SchemaReport::Result::kDone;
  } else if (startsWith(message, "Upgrade of ") && message.find(" failed. No signal is sent") != std::string::npos) {
    report->result = SchemaReport::Result::kFailed;
  } else {
    return false;
  }
  return true;
}

// The schemas met so far, in report order.
class SchemaTable {
 public:
  void addRecord(const std::string& text);
  std::vector<SchemaReport> reports() const;

 private:
  void noteSchemaList(const std::string& names);
  SchemaReport& schema(const std::string& name);

  std::vector<std::string> order_;
  std::map<std::string, SchemaReport> schemas_;
};

std::vector<SchemaReport> SchemaTable::reports() const {
  std::vector<SchemaReport> result;
  for (const std::string& name : order_) result.push_back(schemas_.at(name));
  return result;
}

void SchemaTable::addRecord(const std::string& text) {
  static const char kListMarker[] = ", for schemas: ";
  std::string rest;
  if (startsWith(text, "Starting upgrader: ", &rest) && rest.rfind(kListMarker) != std::string::npos) {
    noteSchemaList(rest.substr(rest.rfind(kListMarker) + sizeof kListMarker - 1));
    return;
  }
  std::string name;
  std::string message;
  if (!splitSchemaMessage(text, &name, &message)) return;
  auto known = schemas_.find(name);
  SchemaReport scratch;
  scratch.name = name;
  SchemaReport* report = known != schemas_.end() ? &known->second : &scratch;
  if (applyMessage(message, report) && report == &scratch) schema(name) = scratch;
}

void SchemaTable::noteSchemaList(const std::string& names) {
  size_t start = 0;
  while (start < names.size()) {
    size_t end = names.find(' ', start);
    if (end == std::string::npos) end = names.size();
    if (end > start) schema(names.substr(start, end - start));
    start = end + 1;
  }
}

SchemaReport& SchemaTable::schema(const std::string& name) {
  auto found = schemas_.find(name);
  if (found != schemas_.end()) return found->second;
  order_.push_back(name);
  SchemaReport& report = schemas_[name];
  report.name = name;
  return report;
}

}  // namespace

void UpgradeLogParser::add(const std::string& logText) {
  size_t start = 0;
  while (start < logText.size()) {
    size_t end = logText.find('\n', start);
    if (end == std::string::npos) end = logText.size();
    std::string line = logText.substr(start, end - start);
    start = end + 1;
    std::string text;
    if (recordText(line, &text)) {
      records_.push_back(text);
    } else if (!records_.empty()) {
      records_.back() += "\n" + line;
    }
  }
}

std::vector<SchemaReport> UpgradeLogParser::schemas(const std::vector<std::string>& rollbackReasons) const {
  SchemaTable table;
  for (const std::string& text : records_) table.addRecord(text);
  std::vector<SchemaReport> reports = table.reports();
  for (SchemaReport& report : reports) {
    for (ConversionStep& step : report.path) {
      if (!step.cause.empty()) step.cause = wholeReason(step.cause, rollbackReasons);
    }
  }
  return reports;
}

}  // namespace wrappersim
