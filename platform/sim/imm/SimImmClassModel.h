// The class definitions of a set of IMM XML files, found without reading the
// objects: each file is read only up to its first object.

#ifndef VOSK_SIM_SIM_IMM_CLASS_MODEL_H
#define VOSK_SIM_SIM_IMM_CLASS_MODEL_H

#include <map>
#include <string>
#include <vector>

#include "SimImmClass.h"

class SimImmClassModel {
 public:
  // Reads the definitions of `files` in order. False, with `why` set, when a
  // file is malformed or a class is defined twice.
  bool load(const std::vector<std::string>& files, std::string* why);

  // The definition of a class, or null.
  const SimImmClass* find(const std::string& className) const;

 private:
  std::map<std::string, SimImmClass> classes_;
};

#endif
