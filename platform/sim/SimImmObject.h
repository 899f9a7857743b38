// One object of an IMM model in its IMM XML form: class, distinguished name
// and the values of its attributes as text. The naming attribute is carried
// by the name only: it is not among `attrs`.
//
// Names: a name is its first RDN ("attr=value"), then "," and the parent's
// name; RDNs are separated by commas that are not escaped. Inside a value,
// "\," stands for a comma and "\\" for a backslash; a backslash before any
// other character, or at the end, stands for itself.

#ifndef VOSK_SIM_SIM_IMM_OBJECT_H
#define VOSK_SIM_SIM_IMM_OBJECT_H

#include <string>
#include <vector>

struct SimImmAttrValues {
  std::string name;
  std::vector<std::string> values;
};

class SimImmObject {
 public:
  std::string className;
  std::string dn;
  std::vector<SimImmAttrValues> attrs;
  int line = 0;  // of its object tag in its file, for reasons

  // Splits `dn` at its first unescaped comma into the first RDN's attribute
  // name and (unescaped) value, and the parent's name (empty for a root
  // object), as it stands. False when the first RDN has no "=" or an empty
  // name.
  static bool splitDn(const std::string& dn, std::string* rdnAttr, std::string* rdnValue, std::string* parent);

  // The name of an object with the RDN `rdnAttr`=`rdnValue` below `parent`:
  // every comma of the value becomes "\,", and a backslash becomes "\\" when
  // a comma or a backslash follows it or it ends the value. splitDn gives
  // back the three parts for any value, and a name written this way joins
  // back to the same text.
  static std::string makeDn(const std::string& rdnAttr, const std::string& rdnValue, const std::string& parent);
};

#endif
