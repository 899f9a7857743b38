// The front's way into the upgrade framework: forwards to
// UpgradeClientIf::upgrade, which never returns.

#ifndef VOSK_FRONT_TAV_CLIENT_IF_H
#define VOSK_FRONT_TAV_CLIENT_IF_H

#include "TavClientIfBase.h"

namespace voskoamupgrader {

class TavClientIf : public TavClientIfBase {
 public:
  [[noreturn]] void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
                            char** argv) override;
};

}  // namespace voskoamupgrader

#endif
