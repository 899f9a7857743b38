#include "client/UpgradeHandler.h"

#include "actions/BuiltInActions.h"
#include "common/Log.h"
#include "icti/IctiHandler.h"
#include "parser/UpgradePathCalculator.h"
#include "parser/XmlHandler.h"
#include "runtime/UpgradeActionIf.h"

std::atomic<int> UpgType{0};

namespace {

constexpr const char* kNewSchemaVersion = "0_0_0";
constexpr const char* kCreatingFile = "modification_0_0_0";

}  // namespace

UpgradeHandler::UpgradeHandler(const std::string& schemaName, const std::string& schemaPath,
                               const std::vector<std::string>& modificationFiles, const std::string& immNs,
                               const std::vector<UpgradeActionIf*>& clientActions, IctiHandler* ictiHandler,
                               XmlHandler* parser, Env& env)
    : schemaName_(schemaName),
      schemaPath_(schemaPath),
      modificationFiles_(modificationFiles),
      immNs_(immNs),
      ictiHandler_(ictiHandler),
      parser_(parser),
      env_(env),
      builtInActions_(createBuiltInActions()) {
  for (const std::unique_ptr<UpgradeActionIf>& action : builtInActions_) parser_->addAction(action.get());
  for (UpgradeActionIf* action : clientActions) parser_->addAction(action);
  MessageFormatter::setPrefix(schemaName_.c_str());
}

bool UpgradeHandler::isUpgradeRestart(Env& env) {
  return env.variable("RESTART_TYPE") == "UPGRADE" || env.variable("RESTART_TYPE_3") == "DYNAMIC_UPGRADE";
}

bool UpgradeHandler::upgrade() {
  if (!isUpgradeRestart(env_)) {
    TAV_LOG(INFO, "Non-upgrade restart, nothing to do.");
    return true;
  }
  TAV_LOG(INFO, "Starting upgrade.");
  struct timespec t0 = env_.monotonicNow();
  TAV_LOG(INFO, "Running with schemaName: '%s', schemaPath: '%s', and IMM ns: '%s'", schemaName_.c_str(),
          schemaPath_.c_str(), immNs_.c_str());
  bool opened = loadClasses();
  struct timespec t1 = env_.monotonicNow();
  if (!opened) {
    ictiHandler_->failUpgrade(
        MessageFormatter::plain("Could not init ICTI session for schemaName: \"%s\"", schemaName_.c_str()).c_str());
    return failureEnd();
  }
  std::string from, to;
  if (!readVersions(from, to)) return failureEnd();
  TAV_LOG(INFO, "Upgrading from (ver_rel_corr): %s to %s", from.c_str(), to.c_str());

  int upgradeType = 2;
  bool isNew = from == kNewSchemaVersion;
  if (from == to) {
    TAV_LOG(INFO, "Same from and to-version (%s) for %s", from.c_str(), schemaName_.c_str());
    upgradeType = 0;
  } else if (isNew && !hasCreatingFile()) {
    TAV_LOG(INFO, "New IMM schema %s introduced through upgrade", schemaName_.c_str());
    upgradeType = 1;
  } else if (!convert(from, to)) {
    return failureEnd();
  }

  struct timespec t2 = env_.monotonicNow();
  TAV_LOG(INFO,
          "Call write/copy classes, finalize and wait. If no 'Upgrade done' seen in this log check SwmInternal log.");
  // Whatever asked for a rollback on the way has failed the schema: its
  // model is not finalized, so nothing of it takes effect.
  if (ictiHandler_->failureCount() > 0 || !finalize(upgradeType) || ictiHandler_->failureCount() > 0) {
    return failureEnd();
  }
  TAV_LOG(INFO, "Successfully finalized ICTI write. Upgrade complete.");
  struct timespec t3 = env_.monotonicNow();
  TAV_LOG_ONLY(PersistentLog::kSeverityInfo,
               "Upgrade done in %d ms (icti init took %d ms, actions took %d ms, finalize took %d ms, UpgType=%d )",
               Env::millisecondsBetween(t0, t3), Env::millisecondsBetween(t0, t1), Env::millisecondsBetween(t1, t2),
               Env::millisecondsBetween(t2, t3), UpgType.load(std::memory_order_relaxed));
  return true;
}

bool UpgradeHandler::loadClasses() {
  IctiHandler::ClassList classes = parser_->getImmClasses(schemaPath_.c_str(), "SA_CONFIG");
  IctiHandler::ClassList runtimeClasses = parser_->getImmClasses(schemaPath_.c_str(), "SA_RUNTIME");
  classes.insert(classes.end(), runtimeClasses.begin(), runtimeClasses.end());
  if (classes.empty()) TAV_LOG(INFO, "No MO-classes parsed from %s ", schemaPath_.c_str());
  return ictiHandler_->init(classes, runtimeClasses);
}

bool UpgradeHandler::readVersions(std::string& from, std::string& to) {
  if (!ictiHandler_->getSchemaVersions(from, to)) {
    ictiHandler_->failUpgrade(
        MessageFormatter::plain("Could not read schemaVersion for schemaName: \"%s\"", schemaName_.c_str()).c_str());
    ictiHandler_->failUpgrade(
        MessageFormatter::plain("Failed to get from and to version for schemaName: \"%s\"", schemaName_.c_str())
            .c_str());
    return false;
  }
  return true;
}

bool UpgradeHandler::hasCreatingFile() const {
  for (const std::string& file : modificationFiles_) {
    if (file.find(kCreatingFile) != std::string::npos) return true;
  }
  return false;
}

bool UpgradeHandler::convert(const std::string& from, const std::string& to) {
  std::vector<std::string> path = UpgradePathCalculator().calculatePath(modificationFiles_, from, to);
  if (path.empty()) {
    TAV_LOG(INFO_ABN, "Could not calculate Conversion Path between versions from: %s and to: %s", from.c_str(),
            to.c_str());
    ictiHandler_->failUpgrade("Unable to find a conversion path");
  }
  TAV_LOG(INFO, "Conversion path size: %u modification files", static_cast<unsigned>(path.size()));
  return !path.empty() && processPath(path);
}

bool UpgradeHandler::processPath(const std::vector<std::string>& path) {
  bool result = true;
  for (const std::string& file : path) {
    TAV_LOG(INFO, "Processing modification file %s", file.c_str());
    const int failuresBefore = ictiHandler_->failureCount();
    // A file whose actions asked for a rollback has failed, whatever the
    // actions returned.
    if (!parser_->parseModificationFile(file.c_str(), false) || ictiHandler_->failureCount() != failuresBefore) {
      ictiHandler_->failUpgrade(
          MessageFormatter::plain("Failed to process modification file %s", file.c_str()).c_str());
      result = false;
    }
    TAV_LOG(INFO, "Processing of modification file %s was a %s", file.c_str(), result ? "SUCCESS" : "FAILURE");
  }
  return result;
}

bool UpgradeHandler::finalize(int upgradeType) {
  UpgType.store(upgradeType, std::memory_order_relaxed);
  switch (upgradeType) {
    case 0:
      return ictiHandler_->callFinalize();
    case 1:
      return ictiHandler_->writeIntroducedClasses();
    default:
      return ictiHandler_->writeCopyClasses();
  }
}

bool UpgradeHandler::failureEnd() {
  ictiHandler_->failUpgrade("Final Fail");
  return false;
}
