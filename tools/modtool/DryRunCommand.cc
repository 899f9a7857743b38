#include "DryRunCommand.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "DiffCommand.h"
#include "HtmlPage.h"
#include "ModelFiles.h"
#include "OutputFolder.h"
#include "ScratchFolder.h"
#include "UpgradeLogParser.h"
#include "UpgradeWrapperSim.h"
#include "WrapperOptions.h"

namespace fs = std::filesystem;

namespace modtool {

namespace {

// Marks a scratch folder as this tool's, so a later run may empty it.
const char kScratchMark[] = ".vosk-modtool-dry-run";

const char* kindText(wrappersim::SchemaReport::Kind kind) {
  switch (kind) {
    case wrappersim::SchemaReport::Kind::kSameVersion:
      return "same version";
    case wrappersim::SchemaReport::Kind::kNewSchema:
      return "new schema";
    case wrappersim::SchemaReport::Kind::kConversion:
      return "conversion";
    case wrappersim::SchemaReport::Kind::kUnknown:
      break;
  }
  return "versions not read";
}

const char* resultText(wrappersim::SchemaReport::Result result) {
  switch (result) {
    case wrappersim::SchemaReport::Result::kDone:
      return "done";
    case wrappersim::SchemaReport::Result::kFailed:
      return "failed";
    case wrappersim::SchemaReport::Result::kNonUpgradeRestart:
      return "not an upgrade";
    case wrappersim::SchemaReport::Result::kNotFinished:
      break;
  }
  return "not finished";
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

// `text` with every path into the scratch copy of the node turned into the
// same path in the node: the copy is gone when the author reads them.
std::string relocated(std::string text, const std::string& copy, const std::string& node) {
  for (size_t at = text.find(copy); at != std::string::npos; at = text.find(copy, at + node.size())) {
    text.replace(at, copy.size(), node);
  }
  return text;
}

}  // namespace

const char* DryRunCommand::usage() {
  return "usage: vosk-modtool dry-run --package DIR --node DIR [--schema NAME] [--out DIR] [--expect MODEL.xml]\n"
         "                            [--html FILE] [--json] [--program PATH]\n"
         "\n"
         "Runs the real upgrade on a scratch copy of the simulated node (the node is never written) and\n"
         "prints its impact per schema and class: objects in the old model, read, written, copied,\n"
         "created, removed and renamed; attributes added, removed and renamed; values changed with the\n"
         "first examples; and every change that loses data. A failed upgrade also prints the wrapper's\n"
         "report with the causes and their places.\n"
         "\n"
         "  --package DIR    the upgrade package (WPK_PATH)\n"
         "  --node DIR       the simulated node\n"
         "  --schema NAME    report this schema only\n"
         "  --out DIR        keep the scratch folder here (node copy in node/, the run in run/)\n"
         "  --expect FILE    compare the new model of the schema (--schema, or the file's name without\n"
         "                   .xml) with an approved one; differences exit 1\n"
         "  --html FILE      also write the report as one self-contained HTML page\n"
         "  --json           one JSON object\n"
         "  --program PATH   the upgrader to run (by default the one built beside this tool)\n"
         "\n"
         "Exit status: 0 the upgrade succeeds (and matches --expect), 1 it fails or differs, 2 could\n"
         "not run.\n";
}

bool DryRunCommand::prepareScratch(const std::string& scratch, const std::string& node, std::string* why) {
  std::error_code error;
  const std::string inside = wrappersim::WrapperOptions::absolutePath(scratch) + "/";
  if (inside.compare(0, node.size() + 1, node + "/") == 0) {
    *why = "the scratch folder " + scratch + " lies in the node, which is never written";
    return false;
  }
  if (fs::exists(scratch, error) && !fs::is_empty(scratch, error)) {
    if (!fs::exists(fs::path(scratch) / kScratchMark, error)) {
      *why = scratch + " is not empty and no scratch folder of an earlier dry run";
      return false;
    }
    fs::remove_all(scratch, error);
  }
  fs::create_directories(scratch, error);
  std::ofstream(fs::path(scratch) / kScratchMark).put('\n');
  const fs::path copy = fs::path(scratch) / "node";
  fs::create_directories(copy, error);
  // A node's own out/ holds results of earlier runs, not the node.
  for (fs::directory_iterator it(node, error), end; !error && it != end; it.increment(error)) {
    if (it->path().filename() == "out") continue;
    fs::copy(it->path(), copy / it->path().filename(), fs::copy_options::recursive, error);
    if (error) break;
  }
  if (error) *why = "cannot copy " + node + " to " + copy.string() + ": " + error.message();
  return !error;
}

ImpactReport DryRunCommand::impactOf(const std::string& runFolder, const std::string& nodeCopy,
                                     const std::string& schema, Progress* progress, std::string* why) {
  ImpactReport report;
  wrappersim::OutputFolder folder(runFolder);
  report.rollbackReasons = folder.rollbackReasons();
  wrappersim::UpgradeLogParser parser;
  parser.add(folder.readLog());
  const RunLog runLog(parser.records());
  std::vector<std::string> oldFiles;
  ImmModel old;
  if (!ModelFiles::oldModel(nodeCopy, &oldFiles, why) || !old.read(oldFiles, progress, why)) return report;
  for (const wrappersim::SchemaReport& schemaReport : parser.schemas(report.rollbackReasons)) {
    if (!schema.empty() && schemaReport.name != schema) continue;
    SchemaImpact impact{schemaReport.name,
                        schemaReport.fromVersion,
                        schemaReport.toVersion,
                        kindText(schemaReport.kind),
                        resultText(schemaReport.result),
                        false,
                        "",
                        {}};
    if (schemaReport.kind == wrappersim::SchemaReport::Kind::kSameVersion) {
      impact.note = "carried over by the platform unchanged: no modification file is read";
    } else if (schemaReport.result != wrappersim::SchemaReport::Result::kDone) {
      impact.note = "no new model: the node rolls back (see the upgrade report below)";
    } else {
      ImmModel now;
      if (!now.read({(fs::path(runFolder) / "model" / (schemaReport.name + ".xml")).string()}, progress, why)) {
        return report;
      }
      impact.classes = ImpactReport::compare(old, now, runLog.classesOf(schemaReport.name));
      impact.compared = true;
    }
    report.schemas.push_back(std::move(impact));
  }
  return report;
}

int DryRunCommand::compareWithExpected(const CommandLine& line, const std::string& runFolder, std::ostream& out,
                                       std::ostream& err) {
  const std::string expected = line.value("--expect");
  const std::string schema = line.value("--schema", fs::path(expected).stem().string());
  ImmModel approved;
  ImmModel now;
  Progress progress;
  std::string why;
  if (!approved.read({expected}, &progress, &why) ||
      !now.read({(fs::path(runFolder) / "model" / (schema + ".xml")).string()}, &progress, &why)) {
    err << "vosk-modtool dry-run: cannot compare with " << expected << ": " << why << "\n";
    return kExitCouldNotRun;
  }
  progress.done();
  const ModelDiff diff = ModelDiff::compare(approved, now, {});
  if (diff.changes.empty()) return kExitClean;
  out << "The new model of " << schema << " differs from " << expected << ":\n" << DiffCommand::toText(diff);
  return kExitFound;
}

int DryRunCommand::run(int argc, const char* const* argv, const std::string& selfPath,
                       const std::vector<std::string>& environment, std::ostream& out, std::ostream& err) {
  CommandLine line;
  std::string why;
  if (!line.parse(argc, argv, 2, {"--package", "--node", "--schema", "--out", "--expect", "--html", "--program"},
                  {"--json"}, &why) ||
      (!line.help() && (!line.has("--package") || !line.has("--node") || !line.operands().empty()))) {
    err << "vosk-modtool dry-run: " << (why.empty() ? "--package and --node are needed" : why) << "\n\n" << usage();
    return kExitCouldNotRun;
  }
  if (line.help()) {
    out << usage();
    return kExitClean;
  }
  const std::string node = wrappersim::WrapperOptions::absolutePath(line.value("--node"));
  ScratchFolder temporary;
  const std::string scratch = line.has("--out") ? line.value("--out") : temporary.path();
  std::error_code error;
  if (!fs::is_directory(node, error)) why = node + " is no folder";
  if (!why.empty() || scratch.empty() || !prepareScratch(scratch, node, &why)) {
    err << "vosk-modtool dry-run: " << (why.empty() ? "cannot make a scratch folder" : why) << "\n";
    return kExitCouldNotRun;
  }
  wrappersim::WrapperOptions options;
  options.program = line.value("--program");
  options.package = line.value("--package");
  options.node = (fs::path(scratch) / "node").string();
  options.out = (fs::path(scratch) / "run").string();
  Progress progress;
  progress.update("upgrading on a copy of the node", 0);
  std::ostringstream wrapperReport;
  std::ostringstream wrapperErrors;
  const int status = wrappersim::UpgradeWrapperSim(selfPath, environment, wrapperReport, wrapperErrors).run(options);
  ImpactReport report;
  if (status != wrappersim::UpgradeWrapperSim::kSetupFailed) {
    report = impactOf(options.out, options.node, line.value("--schema"), &progress, &why);
  }
  progress.done();
  int result = status == 0 ? kExitClean : kExitFound;
  if (status == wrappersim::UpgradeWrapperSim::kSetupFailed || !why.empty()) {
    err << "vosk-modtool dry-run: " << (why.empty() ? wrapperErrors.str() : why + "\n");
    result = kExitCouldNotRun;
  } else {
    report.outcome = firstLine(wrapperReport.str());
    report.succeeded = status == 0;
    for (std::string& reason : report.rollbackReasons) reason = relocated(reason, options.node, node);
    out << (line.has("--json") ? report.toJson() + "\n" : report.toText());
    if (status != 0 && !line.has("--json")) {
      out << "Upgrade report:\n" << relocated(wrapperReport.str(), options.node, node);
    }
    if (line.has("--html") && !HtmlPage::write(report, line.value("--html"), &why)) {
      err << "vosk-modtool dry-run: " << why << "\n";
      result = kExitCouldNotRun;
    }
    if (result == kExitClean && line.has("--expect")) result = compareWithExpected(line, options.out, out, err);
  }
  return result;
}

}  // namespace modtool
