#include "ChildEnvironment.h"

namespace wrappersim {

const std::map<std::string, std::string>& ChildEnvironment::identityDefaults() {
  static const std::map<std::string, std::string> kDefaults = {
      {"WMT_NAME", "voskOamUpgrader"}, {"WMT_NO", "CXC1740923"}, {"WMT_REV", "R4A12"},
      {"UP_NO", "CXP9024418_6"},       {"UP_REV", "R21B"},       {"WPK_REV", "R4A12"},
  };
  return kDefaults;
}

ChildEnvironment::ChildEnvironment(const std::vector<std::string>& inherited, const WrapperOptions& options) {
  for (const std::string& entry : inherited) {
    size_t equals = entry.find('=');
    if (equals != std::string::npos && equals > 0) variables_[entry.substr(0, equals)] = entry.substr(equals + 1);
  }
  // A value left over in the wrapper's own environment must not decide the run.
  variables_.erase("WPK_PATH");
  variables_.erase("VOSK_SIM_FAULTS");

  if (!options.package.empty()) variables_["WPK_PATH"] = WrapperOptions::absolutePath(options.package);
  variables_["VOSK_SIM_ROOT"] = WrapperOptions::absolutePath(options.node);
  variables_["VOSK_SIM_OUT"] = WrapperOptions::absolutePath(options.outFolder());
  variables_["RESTART_TYPE"] = options.restartType;
  for (const auto& identity : identityDefaults()) variables_[identity.first] = identity.second;
  if (options.faults) variables_["VOSK_SIM_FAULTS"] = *options.faults;

  for (const auto& setting : options.env) {
    if (setting.second) {
      variables_[setting.first] = *setting.second;
    } else {
      variables_.erase(setting.first);
    }
  }
}

std::vector<std::string> ChildEnvironment::entries() const {
  std::vector<std::string> result;
  for (const auto& variable : variables_) result.push_back(variable.first + "=" + variable.second);
  return result;
}

bool ChildEnvironment::get(const std::string& name, std::string* value) const {
  auto found = variables_.find(name);
  if (found == variables_.end()) return false;
  *value = found->second;
  return true;
}

}  // namespace wrappersim
