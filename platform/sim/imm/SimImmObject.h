// One object of an IMM model in its IMM XML form: class, distinguished name
// and the values of its attributes as text. The naming attribute is carried
// by the name only: it is not among `attrs`.
//
// Two conventions of naming meet in IMM models. In one, the naming attribute
// holds the value of the first RDN alone ("fooId=1": fooId is "1"); in the
// other it holds the whole first RDN, and the name in the dn need not be the
// attribute's ("safLgStrCfg=alarm" in a class named by safLgStr holds
// "safLgStrCfg=alarm"). The value alone is used when the dn names the naming
// attribute and the value holds no "="; otherwise the whole RDN, as written.
// A naming value with "=" is thus always a whole RDN.
//
// Names: a name is its first RDN ("attr=value"), then "," and the parent's
// name; RDNs are separated by commas that are not escaped. Inside a value,
// "\," stands for a comma and "\\" for a backslash; a backslash before any
// other character, or at the end, stands for itself.

#ifndef VOSK_SIM_SIM_IMM_OBJECT_H
#define VOSK_SIM_SIM_IMM_OBJECT_H

#include <string>
#include <vector>

// One value as the file gives it: its text, or, marked
// xsi:type="xs:base64Binary", its bytes in base64.
struct SimImmValue {
  std::string text;
  bool base64 = false;

  bool operator==(const SimImmValue& other) const { return text == other.text && base64 == other.base64; }
  bool operator!=(const SimImmValue& other) const { return !(*this == other); }
};

struct SimImmAttrValues {
  std::string name;
  std::vector<SimImmValue> values;
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

  // What the naming attribute `rdnAttr` of the object named `dn` holds, by
  // the conventions above, and the parent's name. False when the dn is
  // malformed (as for splitDn).
  static bool namingValueOf(const std::string& dn, const std::string& rdnAttr, std::string* namingValue,
                            std::string* parent);
  // The name of an object whose naming attribute `rdnAttr` holds
  // `namingValue`, below `parent`: the inverse of namingValueOf. False when
  // a whole RDN is no single RDN (no name before its "=", or a separating
  // comma).
  static bool dnOfNamingValue(const std::string& rdnAttr, const std::string& namingValue, const std::string& parent,
                              std::string* dn);
};

#endif
