#include "TavClientIf.h"

#include "client/UpgradeClientIf.h"

namespace voskoamupgrader {

void TavClientIf::upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
                          char** argv) {
  UpgradeClientIf::upgrade(argc, argv, schemas, actions);
}

}  // namespace voskoamupgrader
