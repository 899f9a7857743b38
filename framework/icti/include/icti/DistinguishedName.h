// Distinguished names as the instance model writes them: RDNs
// "<attribute>=<value>" joined by commas, the object's own RDN first and its
// parent's name after the first separating comma.
//
// One rule for commas and backslashes inside values, used wherever a name is
// built, split or compared: a comma in a value is written "\,", a backslash
// "\\" where it is followed by a comma or a backslash or ends the value, and
// any other backslash stands for itself. A comma is a separator unless it is
// written "\,".
//
// Two conventions tie an RDN to the naming attribute that carries it. In
// one, the attribute holds the RDN's value alone ("fooId=1": fooId holds
// "1"). In the other, it holds the whole RDN, whose name need not be the
// attribute's ("svcStreamCfg=alarm" carried by svcStream). The value alone
// is held when the RDN names the attribute and its value has no "=";
// otherwise the whole RDN, as written. A naming value with "=" is therefore
// always a whole RDN.

#ifndef VOSK_ICTI_DISTINGUISHED_NAME_H
#define VOSK_ICTI_DISTINGUISHED_NAME_H

#include <cstddef>
#include <string>

class DistinguishedName {
 public:
  // `value` as it is written inside a name.
  static std::string escapeValue(const std::string& value);
  // The value that the written `text` stands for.
  static std::string unescapeValue(const std::string& text);

  // The first separating comma of `name` at or after `from`, which must be
  // the start of an RDN; npos when there is none.
  static size_t nextSeparator(const std::string& name, size_t from = 0);
  // True when `position` holds a separating comma of `name`.
  static bool isSeparator(const std::string& name, size_t position);

  // The first RDN of `name`, as written.
  static std::string firstRdn(const std::string& name);
  // The parent's name: what follows the first separator; empty for a root.
  static std::string parentOf(const std::string& name);
  // The value of the first RDN (after its first "="), unescaped; empty when
  // the RDN has no "=".
  static std::string rdnValue(const std::string& name);

  // The RDN that the naming attribute `attribute` holding `namingValue`
  // stands for.
  static std::string rdnOf(const std::string& attribute, const std::string& namingValue);
  // What the naming attribute `attribute` holds for the RDN `rdn`: the
  // inverse of rdnOf.
  static std::string namingValueOf(const std::string& rdn, const std::string& attribute);

  DistinguishedName() = delete;
};

#endif
