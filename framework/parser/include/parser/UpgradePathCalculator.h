// Chains modification files into the conversion path between two schema
// versions. A file named "modification_<from>_to_<to>.xml" (optionally with a
// directory in front) takes the schema from <from> to <to>; versions are
// compared as text, byte for byte.
//
// The walk is greedy: from the current version it takes the first file in
// list order that starts there, and stops when the target is reached. There
// is no search over alternatives. A file name without the three markers
// never matches any version.

#ifndef VOSK_PARSER_UPGRADE_PATH_CALCULATOR_H
#define VOSK_PARSER_UPGRADE_PATH_CALCULATOR_H

#include <string>
#include <vector>

class UpgradePathCalculator {
 public:
  virtual ~UpgradePathCalculator() = default;

  // The files to apply, in order; empty when no path exists (the reason is
  // logged). Always takes at least one step, so equal versions are not a
  // shortcut: callers handle them first. Every candidate is logged first:
  // the versions its name gives, or why it cannot be used.
  std::vector<std::string> calculatePath(const std::vector<std::string>& files, const std::string& fromVersion,
                                         const std::string& toVersion);

  // The versions encoded in a file name; false when the name lacks one of
  // the markers ("modification_", "_to_", ".xml" in this order).
  bool getFromVersion(const std::string& file, std::string& version) const;
  bool getToVersion(const std::string& file, std::string& version) const;

  // The first file of `files` whose from-version equals `version`, or an
  // empty text.
  std::string findFileFrom(const std::vector<std::string>& files, const std::string& version) const;

 private:
  void logCandidates(const std::vector<std::string>& files) const;
  bool splitVersions(const std::string& file, std::string& from, std::string& to) const;
};

#endif
