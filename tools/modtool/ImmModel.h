// A whole IMM model in memory, object by object under its distinguished
// name, read from IMM XML files with the simulated node's dump reader (the
// same reading rules as the node's loader). Values are kept in one text per
// value, whatever the file's spelling ("0x1f" and "31", base64 and plain
// text), so that models compare by what they hold.

#ifndef VOSK_TOOLS_MODTOOL_IMM_MODEL_H
#define VOSK_TOOLS_MODTOOL_IMM_MODEL_H

#include <map>
#include <string>
#include <vector>

#include "Progress.h"
#include "SimImmClass.h"
#include "SimImmObject.h"

namespace modtool {

class ImmModel {
 public:
  // Adds the classes and objects of `files`; an object whose dn is already
  // there replaces it. False, with `why` set, when a file cannot be read.
  // `progress` counts the objects read.
  bool read(const std::vector<std::string>& files, Progress* progress, std::string* why);

  const std::map<std::string, SimImmObject>& objects() const { return objects_; }
  const std::map<std::string, SimImmClass>& classes() const { return classes_; }

 private:
  // The values of `object` in the text the simulated node writes; a value
  // of a class or attribute without definition, or that does not parse, is
  // kept as it is.
  void canonicalize(SimImmObject* object) const;

  std::map<std::string, SimImmObject> objects_;
  std::map<std::string, SimImmClass> classes_;
};

}  // namespace modtool

#endif
