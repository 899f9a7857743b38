// The conversion path of one schema as the upgrader will take it, told for
// an author: the path itself (the upgrader's own calculation), or where the
// chain breaks and the versions it reached; and the files that can never be
// used: names without versions, and files shadowed by an earlier file of
// the same from-version.

#ifndef VOSK_TOOLS_MODTOOL_PATH_PLAN_H
#define VOSK_TOOLS_MODTOOL_PATH_PLAN_H

#include <string>
#include <vector>

namespace modtool {

struct PlanStep {
  std::string file;
  std::string from;
  std::string to;
};

struct UnusableFile {
  std::string file;
  std::string why;
};

struct PathPlan {
  enum class Kind { kSameVersion, kNewSchema, kPath, kNoPath };

  Kind kind = Kind::kNoPath;
  std::string from;
  std::string to;
  std::vector<PlanStep> steps;         // the path; without one, the chain as far as it goes
  std::string missingVersion;          // no file starts at it (kNoPath)
  std::string repeatedFile;            // the chain came back to it (kNoPath)
  std::vector<UnusableFile> unusable;  // never used by any upgrade
  std::vector<std::string> offPath;    // usable, but not by this upgrade

  // `files` in the order the upgrader is given them.
  static PathPlan make(const std::vector<std::string>& files, const std::string& from, const std::string& to);
};

}  // namespace modtool

#endif
