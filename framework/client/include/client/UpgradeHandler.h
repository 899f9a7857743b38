// Drives the upgrade of one schema on its schema thread: decides whether
// this restart upgrades at all, opens the conversion session, learns the
// schema's versions, picks the kind of upgrade, runs the modification files
// of the conversion path, finalizes and reports the timings. Every failure
// is reported through the ICTI handler, which has the node roll back, and
// then once more as "Final Fail".

#ifndef VOSK_CLIENT_UPGRADE_HANDLER_H
#define VOSK_CLIENT_UPGRADE_HANDLER_H

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "env/Env.h"
#include "runtime/UpgradeActionIf.h"

class IctiHandler;
class XmlHandler;

// The kind of the last finalized upgrade of any schema thread: 0 equal
// versions, 1 a new schema, 2 a conversion. Shared by all schema threads;
// the last writer wins.
extern std::atomic<int> UpgType;

class UpgradeHandler {
 public:
  // Registers the built-in actions and then `clientActions` with `parser`,
  // and makes the calling thread's messages begin with the schema name.
  // `env` gives the restart type and the clock of the timing report.
  UpgradeHandler(const std::string& schemaName, const std::string& schemaPath,
                 const std::vector<std::string>& modificationFiles, const std::string& immNs,
                 const std::vector<UpgradeActionIf*>& clientActions, IctiHandler* ictiHandler, XmlHandler* parser,
                 Env& env);

  UpgradeHandler(const UpgradeHandler&) = delete;
  UpgradeHandler& operator=(const UpgradeHandler&) = delete;

  // True for success, also when there is nothing to do.
  [[nodiscard]] bool upgrade();

  // True when RESTART_TYPE is "UPGRADE" or RESTART_TYPE_3 "DYNAMIC_UPGRADE".
  static bool isUpgradeRestart(Env& env);

 private:
  bool loadClasses();
  bool readVersions(std::string& from, std::string& to);
  bool hasCreatingFile() const;
  bool convert(const std::string& from, const std::string& to);
  bool processPath(const std::vector<std::string>& path);
  bool finalize(int upgradeType);
  bool failureEnd();

  const std::string schemaName_;
  const std::string schemaPath_;
  const std::vector<std::string> modificationFiles_;
  const std::string immNs_;
  IctiHandler* const ictiHandler_;
  XmlHandler* const parser_;
  Env& env_;
  std::vector<std::unique_ptr<UpgradeActionIf>> builtInActions_;
};

#endif
