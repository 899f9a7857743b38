#include "PlanCommand.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "JsonText.h"
#include "ScratchFolder.h"
#include "SimImmVersions.h"
#include "client/ModificationFileLookup.h"
#include "env/PlatformEnv.h"

namespace fs = std::filesystem;

namespace modtool {

namespace {

std::string versionText(const SafcImmCtSchemaVersionT_2& version) {
  return std::to_string(version.version) + "_" + std::to_string(version.release) + "_" +
         std::to_string(version.correction);
}

// A file below the node as the author sees it there.
std::string shown(const std::string& file, const std::string& node) {
  const std::string prefix = node + "/";
  return file.compare(0, prefix.size(), prefix) == 0 ? file.substr(prefix.size()) : file;
}

const char* kindName(PathPlan::Kind kind) {
  switch (kind) {
    case PathPlan::Kind::kSameVersion:
      return "same-version";
    case PathPlan::Kind::kNewSchema:
      return "new-schema";
    case PathPlan::Kind::kPath:
      return "path";
    case PathPlan::Kind::kNoPath:
      return "no-path";
  }
  return "";
}

}  // namespace

const char* PlanCommand::usage() {
  return "usage: vosk-modtool plan --node DIR --schema NAME [--from V --to V] [--json]\n"
         "\n"
         "Shows the conversion path the upgrader will take for the schema: the node's modification files\n"
         "(lmhi/<schema>/modification_files/), chained the way the upgrader chains them. Without a path:\n"
         "the versions the chain reaches and the version no file starts at. Files that can never be used\n"
         "(a name without versions, or shadowed by an earlier file of the same from-version) are listed.\n"
         "\n"
         "  --node DIR       the simulated node\n"
         "  --schema NAME    the schema (the load modules' board type)\n"
         "  --from V, --to V versions as V_R_C; by default the node's versions file\n"
         "  --json           one JSON object\n"
         "\n"
         "Exit status: 0 a path exists or none is needed, 1 no path, 2 could not run.\n";
}

std::vector<std::string> PlanCommand::modificationFiles(const std::string& node, const std::string& schema) {
  std::vector<std::string> files;
  // A schema without load modules has no files; the handler would say so on
  // standard error.
  if (!fs::is_directory(fs::path(node) / "lmhi" / schema)) return files;
  // The simulated load-module handler serves the node named by
  // VOSK_SIM_ROOT, and notes refusals below VOSK_SIM_OUT: not in the node.
  ScratchFolder scratch;
  ::setenv("VOSK_SIM_ROOT", node.c_str(), 1);
  ::setenv("VOSK_SIM_OUT", scratch.path().c_str(), 1);
  getModificationFiles(PlatformEnv::instance(), schema, &files);
  return files;
}

bool PlanCommand::versions(const CommandLine& line, std::string* from, std::string* to, std::string* why) {
  SafcImmCtSchemaVersionT_2 fromVersion{};
  SafcImmCtSchemaVersionT_2 toVersion{};
  if (!line.has("--from") || !line.has("--to")) {
    const std::string path = (fs::path(line.value("--node")) / "versions").string();
    switch (SimImmVersions::find(path, line.value("--schema"), &fromVersion, &toVersion, why)) {
      case SimImmVersions::Result::kFound:
        break;
      case SimImmVersions::Result::kNotListed:
        *why = path + " does not list schema " + line.value("--schema") + ": give --from and --to";
        return false;
      case SimImmVersions::Result::kUnreadable:
        return false;
    }
  }
  *from = line.value("--from", versionText(fromVersion));
  *to = line.value("--to", versionText(toVersion));
  return true;
}

int PlanCommand::run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  CommandLine line;
  std::string why;
  if (!line.parse(argc, argv, 2, {"--node", "--schema", "--from", "--to"}, {"--json"}, &why) ||
      (!line.help() && (!line.has("--node") || !line.has("--schema") || !line.operands().empty()))) {
    err << "vosk-modtool plan: " << (why.empty() ? "--node and --schema are needed" : why) << "\n\n" << usage();
    return kExitCouldNotRun;
  }
  if (line.help()) {
    out << usage();
    return kExitClean;
  }
  std::error_code error;
  const std::string node = fs::absolute(line.value("--node"), error).lexically_normal().string();
  const std::string schema = line.value("--schema");
  std::string from;
  std::string to;
  if (!fs::is_directory(node, error)) why = node + " is no folder";
  if (!why.empty() || !versions(line, &from, &to, &why)) {
    err << "vosk-modtool plan: " << why << "\n";
    return kExitCouldNotRun;
  }
  const PathPlan plan = PathPlan::make(modificationFiles(node, schema), from, to);
  out << (line.has("--json") ? toJson(schema, plan) + "\n" : toText(schema, plan, node));
  return plan.kind == PathPlan::Kind::kNoPath ? kExitFound : kExitClean;
}

std::string PlanCommand::toText(const std::string& schema, const PathPlan& plan, const std::string& node) {
  std::string text = "Schema " + schema + ": " + plan.from + " -> " + plan.to + "\n";
  switch (plan.kind) {
    case PathPlan::Kind::kSameVersion:
      text += "Same version: no modification file is read; the platform carries the schema over.\n";
      break;
    case PathPlan::Kind::kNewSchema:
      text +=
          "New schema (no version in force): no file starts at 0_0_0, so no file is read and the\n"
          "schema's new model is empty.\n";
      break;
    case PathPlan::Kind::kPath:
      text += "Conversion path (" + std::to_string(plan.steps.size()) + " file(s)):\n";
      break;
    case PathPlan::Kind::kNoPath:
      text += "No conversion path. The chain reaches:\n";
      break;
  }
  for (size_t i = 0; i < plan.steps.size(); ++i) {
    const PlanStep& step = plan.steps[i];
    text += "  " + std::to_string(i + 1) + ". " + step.from + " -> " + step.to + "  " + shown(step.file, node) + "\n";
  }
  if (!plan.missingVersion.empty()) {
    text += "Missing: no file starts at " + plan.missingVersion + " (a file modification_" + plan.missingVersion +
            "_to_<version>.xml)\n";
  }
  if (!plan.repeatedFile.empty()) {
    text += "Cycle: the chain comes back to " + shown(plan.repeatedFile, node) + "\n";
  }
  if (!plan.unusable.empty()) text += "Never used:\n";
  for (const UnusableFile& file : plan.unusable) text += "  " + shown(file.file, node) + ": " + file.why + "\n";
  if (!plan.offPath.empty()) text += "Not used by this upgrade:\n";
  for (const std::string& file : plan.offPath) text += "  " + shown(file, node) + "\n";
  return text;
}

std::string PlanCommand::toJson(const std::string& schema, const PathPlan& plan) {
  std::vector<std::string> steps;
  for (const PlanStep& step : plan.steps) {
    steps.push_back(JsonText::object({{"file", JsonText::quote(step.file)},
                                      {"from", JsonText::quote(step.from)},
                                      {"to", JsonText::quote(step.to)}}));
  }
  std::vector<std::string> unusable;
  for (const UnusableFile& file : plan.unusable) {
    unusable.push_back(JsonText::object({{"file", JsonText::quote(file.file)}, {"why", JsonText::quote(file.why)}}));
  }
  return JsonText::object({{"schema", JsonText::quote(schema)},
                           {"from", JsonText::quote(plan.from)},
                           {"to", JsonText::quote(plan.to)},
                           {"kind", JsonText::quote(kindName(plan.kind))},
                           {"steps", JsonText::array(steps)},
                           {"missingVersion", JsonText::quote(plan.missingVersion)},
                           {"repeatedFile", JsonText::quote(plan.repeatedFile)},
                           {"neverUsed", JsonText::array(unusable)},
                           {"notUsed", JsonText::quotedArray(plan.offPath)}});
}

}  // namespace modtool
