// The single entry of the upgrade framework. A client application calls
// upgrade() with its command line (exactly one argument: the path of the
// upgrade wrapper's socket), the schemas to upgrade and its own actions.
// Every schema is upgraded on a thread of its own; when all succeeded the
// wrapper is signalled. Then the process sleeps until it is killed: upgrade()
// never returns. A failed schema sends no signal; it has already asked the
// platform to roll the node back.
//
// The public entries run on the platform's Env; the others take the Env that
// the schema threads, the load-module lookup and the final sleep use.

#ifndef VOSK_CLIENT_UPGRADE_CLIENT_IF_H
#define VOSK_CLIENT_UPGRADE_CLIENT_IF_H

#include <string>
#include <vector>

#include "client/SchemaData.h"
#include "env/Env.h"

class UpgradeActionIf;

class UpgradeClientIf {
 public:
  // Takes ownership of `actions`: they are deleted once every schema thread
  // has ended. They are shared by all schema threads and must keep no state.
  [[noreturn]] static void upgrade(int argc, char** argv, const std::vector<SchemaData>& schemas,
                                   std::vector<UpgradeActionIf*>& actions);
  // One schema.
  [[noreturn]] static void upgrade(int argc, char** argv, const std::string& schemaName,
                                   const std::string& schemaPath, const std::string& boardType,
                                   const std::string& immNs, std::vector<UpgradeActionIf*>& actions);
  // Schemas given as rows of (name, path, board type, namespace).
  [[noreturn]] static void upgrade(int argc, char** argv, const std::vector<std::vector<std::string>>& schemas,
                                   std::vector<UpgradeActionIf*>& actions);
  [[noreturn]] static void upgrade(Env& env, int argc, char** argv, const std::vector<SchemaData>& schemas,
                                   std::vector<UpgradeActionIf*>& actions);

  // Upgrades one schema on the calling thread; clears the process's success
  // flag when it fails.
  static void upgradeSchema(Env& env, const SchemaData& schema, const std::vector<std::string>& modificationFiles,
                            const std::vector<UpgradeActionIf*>& actions);

  // Whether no schema has failed since the last upgrade() started.
  static bool succeeded();

  // Prints the never-ending-loop line and sleeps in 10-second steps for ever.
  [[noreturn]] static void sleepForever(Env& env);

  UpgradeClientIf() = delete;
};

#endif
