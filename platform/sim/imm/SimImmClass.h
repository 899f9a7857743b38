// The definition of one IMM class as IMM XML gives it: category, naming
// attribute and attributes, each with its value type. Kept whole (flags,
// defaults) so that a model written by the simulated node carries the
// definitions it was read with.

#ifndef VOSK_SIM_SIM_IMM_CLASS_H
#define VOSK_SIM_SIM_IMM_CLASS_H

#include <string>
#include <vector>

struct SimImmAttrDef {
  std::string name;
  int type = 0;  // SA_IMM_ATTR_* code
  std::string category;
  std::vector<std::string> flags;
  bool hasDefault = false;
  std::string defaultValue;
};

class SimImmClass {
 public:
  std::string name;
  std::string category;
  SimImmAttrDef rdn;
  std::vector<SimImmAttrDef> attrs;

  // The naming attribute or an attribute of that name; null when the class
  // has none.
  const SimImmAttrDef* find(const std::string& attrName) const;
};

#endif
