#include "client/UpgradeClientIf.h"

#include <libxml/parser.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

#include "client/ModificationFileLookup.h"
#include "client/UpgradeHandler.h"
#include "client/WrapperSignal.h"
#include "common/Log.h"
#include "env/PlatformEnv.h"
#include "icti/IctiHandler.h"
#include "parser/XmlHandler.h"
#include "runtime/UpgradeActionIf.h"

namespace {

constexpr unsigned int kSleepInterval = 10;

std::atomic<bool> g_success{true};

// Deliberately "( null )", with the blanks, for an unset variable.
std::string identity(Env& env, const char* variable) { return env.variable(variable).value_or("( null )"); }

struct Identity {
  explicit Identity(Env& env)
      : wmtName(identity(env, "WMT_NAME")),
        wmtNumber(identity(env, "WMT_NO")),
        wmtRevision(identity(env, "WMT_REV")),
        upNumber(identity(env, "UP_NO")),
        upRevision(identity(env, "UP_REV")) {}

  std::string wmtName;
  std::string wmtNumber;
  std::string wmtRevision;
  std::string upNumber;
  std::string upRevision;
};

// Upgrades every schema on a thread of its own. The client's actions are
// deleted once all threads have ended.
void runSchemaThreads(Env& env, const std::vector<SchemaData>& schemas,
                      const std::vector<std::vector<std::string>>& modificationFiles,
                      std::vector<UpgradeActionIf*>& actions) {
  const std::vector<std::unique_ptr<UpgradeActionIf>> owned(actions.begin(), actions.end());
  std::vector<std::thread> threads;
  for (size_t i = 0; i < schemas.size(); ++i) {
    threads.emplace_back(UpgradeClientIf::upgradeSchema, std::ref(env), std::cref(schemas[i]),
                         std::cref(modificationFiles[i]), std::cref(actions));
  }
  for (std::thread& thread : threads) thread.join();
  actions.clear();
}

}  // namespace

void UpgradeClientIf::upgrade(int argc, char** argv, const std::vector<SchemaData>& schemas,
                              std::vector<UpgradeActionIf*>& actions) {
  upgrade(PlatformEnv::instance(), argc, argv, schemas, actions);
}

void UpgradeClientIf::upgrade(Env& env, int argc, char** argv, const std::vector<SchemaData>& schemas,
                              std::vector<UpgradeActionIf*>& actions) {
  if (argc != 2) {
    TAV_LOG(ERROR, "Expected exactly two argument, got %d", argc);
    std::abort();
  }
  TAV_LOG(TRACE1, "UpgradeHandler::UpgradeHandler(int, char **).");
  const std::string socketPath = argv[1];
  static const bool xmlChecked = (xmlCheckVersion(20910), true);
  (void)xmlChecked;
  PersistentLog::instance();

  const Identity id(env);
  std::vector<std::vector<std::string>> modificationFiles(schemas.size());
  std::string schemaNames;
  for (size_t i = 0; i < schemas.size(); ++i) {
    getModificationFiles(env, schemas[i].boardType, &modificationFiles[i]);
    schemaNames += schemas[i].schemaName + " ";
  }
  TAV_LOG(INFO, "Starting upgrade to UP: %s-%s, LM: %s-%s, upgrader name: %s ", id.upNumber.c_str(),
          id.upRevision.c_str(), id.wmtNumber.c_str(), id.wmtRevision.c_str(), id.wmtName.c_str());
  TAV_LOG_ONLY(PersistentLog::kSeverityInfo, "Starting upgrader: %s, for schemas: %s", id.wmtName.c_str(),
               schemaNames.c_str());

  g_success = true;
  runSchemaThreads(env, schemas, modificationFiles, actions);

  PersistentLog::instance().close();
  xmlCleanupParser();

  if (g_success) WrapperSignal::send(socketPath);
  sleepForever(env);
}

void UpgradeClientIf::upgrade(int argc, char** argv, const std::string& schemaName, const std::string& schemaPath,
                              const std::string& boardType, const std::string& immNs,
                              std::vector<UpgradeActionIf*>& actions) {
  upgrade(argc, argv, std::vector<SchemaData>{{schemaName, schemaPath, boardType, immNs}}, actions);
}

void UpgradeClientIf::upgrade(int argc, char** argv, const std::vector<std::vector<std::string>>& schemas,
                              std::vector<UpgradeActionIf*>& actions) {
  std::vector<SchemaData> records;
  for (const std::vector<std::string>& row : schemas) {
    auto field = [&row](size_t i) { return i < row.size() ? row[i] : std::string(); };
    records.push_back({field(0), field(1), field(2), field(3)});
  }
  upgrade(argc, argv, records, actions);
}

void UpgradeClientIf::upgradeSchema(Env& env, const SchemaData& schema,
                                    const std::vector<std::string>& modificationFiles,
                                    const std::vector<UpgradeActionIf*>& actions) {
  IctiHandler ictiHandler(env, schema.schemaName, schema.immNs);
  XmlHandler parser(&ictiHandler);
  UpgradeHandler driver(schema.schemaName, schema.schemaPath, modificationFiles, schema.immNs, actions, &ictiHandler,
                        &parser, env);
  TAV_LOG(INFO, "UPGRADE STARTING");
  if (driver.upgrade()) {
    TAV_LOG(INFO, "UPGRADE IS DONE");
  } else {
    g_success.store(false, std::memory_order_relaxed);
    TAV_LOG(INFO,
            "Upgrade of %s failed. No signal is sent to upgradeWrapper because QRN will do a rollback so there is no "
            "point in signaling a success.\n",
            schema.schemaName.c_str());
  }
}

bool UpgradeClientIf::succeeded() { return g_success.load(std::memory_order_relaxed); }

void UpgradeClientIf::sleepForever(Env& env) {
  std::printf(
      "Entering the never ending loop, if you want to terminate this program you are going to have to kill it.\n");
  std::fflush(stdout);
  for (;;) {
    unsigned int left = env.sleepSeconds(kSleepInterval);
    if (left > 0) {
      std::printf("sleep was disturbed, time left: %ds (sleep interval: %ds).", static_cast<int>(left),
                  static_cast<int>(kSleepInterval));
      std::fflush(stdout);
    }
  }
}
