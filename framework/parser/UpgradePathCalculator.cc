#include "parser/UpgradePathCalculator.h"

#include <algorithm>

#include "common/Log.h"

namespace {

const char kPrefix[] = "modification_";
const char kInfix[] = "_to_";
const char kSuffix[] = ".xml";

}  // namespace

bool UpgradePathCalculator::splitVersions(const std::string& file, std::string& from, std::string& to) const {
  // Only the file's own name counts: a folder in front of it may itself be
  // named after modification files (the load-module tag is).
  size_t slash = file.rfind('/');
  size_t nameStart = slash == std::string::npos ? 0 : slash + 1;
  size_t prefix = file.find(kPrefix, nameStart);
  if (prefix == std::string::npos) return false;
  size_t fromStart = prefix + sizeof kPrefix - 1;
  size_t infix = file.find(kInfix, fromStart);
  if (infix == std::string::npos) return false;
  // The to-version ends at the first ".xml" of the name; one that stands
  // before "_to_" cannot end it.
  size_t toStart = infix + sizeof kInfix - 1;
  size_t suffix = file.find(kSuffix, nameStart);
  if (suffix == std::string::npos || suffix < toStart) return false;
  from = file.substr(fromStart, infix - fromStart);
  to = file.substr(toStart, suffix - toStart);
  return true;
}

bool UpgradePathCalculator::getFromVersion(const std::string& file, std::string& version) const {
  std::string to;
  return splitVersions(file, version, to);
}

bool UpgradePathCalculator::getToVersion(const std::string& file, std::string& version) const {
  std::string from;
  return splitVersions(file, from, version);
}

std::string UpgradePathCalculator::findFileFrom(const std::vector<std::string>& files,
                                                const std::string& version) const {
  for (const std::string& file : files) {
    std::string from;
    if (getFromVersion(file, from) && from == version) return file;
  }
  return std::string();
}

void UpgradePathCalculator::logCandidates(const std::vector<std::string>& files) const {
  for (const std::string& file : files) {
    std::string from, to;
    if (!splitVersions(file, from, to)) {
      TAV_LOG(INFO_ABN, "Modification file %s is ignored: its name is not modification_<from>_to_<to>.xml",
              file.c_str());
      continue;
    }
    const std::string first = findFileFrom(files, from);
    if (first != file) {
      TAV_LOG(INFO_ABN, "Modification file %s (from %s to %s) is never used: %s starts at %s too and comes first",
              file.c_str(), from.c_str(), to.c_str(), first.c_str(), from.c_str());
      continue;
    }
    TAV_LOG(INFO, "Modification file %s takes the schema from %s to %s", file.c_str(), from.c_str(), to.c_str());
  }
}

std::vector<std::string> UpgradePathCalculator::calculatePath(const std::vector<std::string>& files,
                                                              const std::string& fromVersion,
                                                              const std::string& toVersion) {
  logCandidates(files);
  std::vector<std::string> path;
  std::string current = fromVersion;
  do {
    std::string file = findFileFrom(files, current);
    if (file.empty()) {
      TAV_LOG(INFO_ABN, "A modfile with from-version %s could not be found", current.c_str());
      path.clear();
      return path;
    }
    if (std::find(path.begin(), path.end(), file) != path.end()) {
      TAV_LOG(INFO_ABN, "A modfile, %s, was found more than once in the upgrade path", file.c_str());
      path.clear();
      return path;
    }
    path.push_back(file);
    getToVersion(file, current);
  } while (current != toVersion);
  return path;
}
