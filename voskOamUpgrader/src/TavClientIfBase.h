// The front's way into the upgrade framework. The framework's implementation
// never returns: it upgrades the schemas, signals the upgrade wrapper and
// sleeps until the process is killed.

#ifndef VOSK_FRONT_TAV_CLIENT_IF_BASE_H
#define VOSK_FRONT_TAV_CLIENT_IF_BASE_H

#include <vector>

#include "client/SchemaData.h"

class UpgradeActionIf;

namespace voskoamupgrader {

class TavClientIfBase {
 public:
  TavClientIfBase() = default;
  TavClientIfBase(const TavClientIfBase&) = delete;
  TavClientIfBase& operator=(const TavClientIfBase&) = delete;
  virtual ~TavClientIfBase() = default;

  // Hands the schemas and the client's own actions (ownership passes) to the
  // framework, with the command line unchanged.
  virtual void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
                       char** argv) = 0;
};

}  // namespace voskoamupgrader

#endif
