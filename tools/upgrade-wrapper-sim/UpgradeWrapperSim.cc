#include "UpgradeWrapperSim.h"

#include <unistd.h>

#include <filesystem>

#include "ChildEnvironment.h"
#include "ChildProcess.h"
#include "OutputFolder.h"
#include "ReportBuilder.h"
#include "RunSupervisor.h"
#include "UpgradeLogParser.h"
#include "WrapperSocket.h"

namespace fs = std::filesystem;

namespace wrappersim {

namespace {

const char kProgramName[] = "vosk-oam-upgrader";

RunFindings findingsIn(const OutputFolder& folder) {
  RunFindings findings;
  findings.rollbackReasons = folder.rollbackReasons();
  findings.platformErrors = folder.platformErrors();
  UpgradeLogParser parser;
  parser.add(folder.readLog());
  findings.schemas = parser.schemas(findings.rollbackReasons);
  findings.logFiles = folder.logFiles();
  findings.modelFiles = folder.modelFiles();
  findings.discardedFiles = folder.discardedFiles();
  return findings;
}

}  // namespace

UpgradeWrapperSim::UpgradeWrapperSim(std::string selfPath, std::vector<std::string> environment, std::ostream& out,
                                     std::ostream& err)
    : selfPath_(std::move(selfPath)), environment_(std::move(environment)), out_(out), err_(err) {}

std::string UpgradeWrapperSim::defaultProgram(const std::string& selfPath) {
  fs::path here = fs::path(selfPath).parent_path();
  const fs::path candidates[] = {
      here / kProgramName,
      here / ".." / "voskOamUpgrader" / kProgramName,
      here / ".." / "voskOamUpgrader" / "src" / kProgramName,
  };
  for (const fs::path& candidate : candidates) {
    if (::access(candidate.c_str(), X_OK) == 0) return candidate.lexically_normal().string();
  }
  return "";
}

int UpgradeWrapperSim::fail(const std::string& reason) {
  err_ << "upgrade-wrapper-sim: " << reason << "\n";
  return kSetupFailed;
}

int UpgradeWrapperSim::run(const WrapperOptions& options) {
  std::string program = options.program.empty() ? defaultProgram(selfPath_) : options.program;
  if (program.empty()) return fail(std::string("no ") + kProgramName + " found near " + selfPath_ + "; give --program");

  OutputFolder folder(options.outFolder());
  std::string error;
  if (!folder.prepare(options.node, &error)) return fail(error);
  WrapperSocket socket;
  if (!socket.listen(options.socketPath(), &error)) return fail(error);

  ChildEnvironment environment(environment_, options);
  ChildProcess child;
  if (!child.start(program, options.programArguments(), environment.entries(), &error)) return fail(error);

  RunSupervisor::LineSink forward;
  if (options.verbose) forward = [this](const std::string& line) { out_ << "[upgrader] " << line << std::endl; };
  RunOutcome outcome = RunSupervisor(&socket, &child, forward).supervise(options.timeoutSeconds);
  child.stop(kStopGraceMs);
  if (folder.rollbackRequested()) outcome.noteRollbackRequest();

  out_ << ReportBuilder::build(outcome, findingsIn(folder)) << std::flush;
  return outcome.wrapperExitStatus();
}

}  // namespace wrappersim
