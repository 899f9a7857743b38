// The environment the upgrader is started with: the wrapper's own, minus
// what the wrapper decides itself, plus the package, the node, the restart
// type, the identity defaults and the faults, then the --env settings.

#ifndef VOSK_TOOLS_CHILD_ENVIRONMENT_H
#define VOSK_TOOLS_CHILD_ENVIRONMENT_H

#include <map>
#include <string>
#include <vector>

#include "WrapperOptions.h"

namespace wrappersim {

class ChildEnvironment {
 public:
  // `inherited` holds NAME=VALUE entries; paths of the options are made
  // absolute, since the upgrader may change its directory.
  ChildEnvironment(const std::vector<std::string>& inherited, const WrapperOptions& options);

  // The defaults of the identity variables.
  static const std::map<std::string, std::string>& identityDefaults();

  // NAME=VALUE entries, ordered by name.
  std::vector<std::string> entries() const;
  // The value of `name`; false when it is not set.
  bool get(const std::string& name, std::string* value) const;

 private:
  std::map<std::string, std::string> variables_;
};

}  // namespace wrappersim

#endif
