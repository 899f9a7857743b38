#include "SimImmObject.h"

namespace {

// Whether the backslash at `pos` escapes the character after it: only a
// comma or a backslash is escaped.
bool escapes(const std::string& text, size_t pos) {
  return text[pos] == '\\' && pos + 1 < text.size() && (text[pos + 1] == ',' || text[pos + 1] == '\\');
}

// The first comma of `dn` that separates two RDNs, or the end.
size_t separator(const std::string& dn) {
  size_t comma = 0;
  while (comma < dn.size() && dn[comma] != ',') comma += escapes(dn, comma) ? 2 : 1;
  return comma;
}

}  // namespace

bool SimImmObject::splitDn(const std::string& dn, std::string* rdnAttr, std::string* rdnValue, std::string* parent) {
  const size_t comma = separator(dn);
  std::string rdn = dn.substr(0, comma);
  *parent = comma < dn.size() ? dn.substr(comma + 1) : std::string();
  size_t equals = rdn.find('=');
  if (equals == std::string::npos || equals == 0) return false;
  *rdnAttr = rdn.substr(0, equals);
  rdnValue->clear();
  for (size_t i = equals + 1; i < rdn.size(); ++i) {
    if (escapes(rdn, i)) ++i;
    rdnValue->push_back(rdn[i]);
  }
  return true;
}

std::string SimImmObject::makeDn(const std::string& rdnAttr, const std::string& rdnValue, const std::string& parent) {
  std::string dn = rdnAttr + "=";
  for (size_t i = 0; i < rdnValue.size(); ++i) {
    // Only a backslash that would otherwise read as an escape is doubled, so
    // that a name read from a dump is written back as it stood.
    if (rdnValue[i] == ',' || (rdnValue[i] == '\\' && (i + 1 == rdnValue.size() || escapes(rdnValue, i)))) {
      dn.push_back('\\');
    }
    dn.push_back(rdnValue[i]);
  }
  if (!parent.empty()) dn += "," + parent;
  return dn;
}

bool SimImmObject::namingValueOf(const std::string& dn, const std::string& rdnAttr, std::string* namingValue,
                                 std::string* parent) {
  std::string dnAttr;
  if (!splitDn(dn, &dnAttr, namingValue, parent)) return false;
  if (dnAttr != rdnAttr || namingValue->find('=') != std::string::npos) *namingValue = dn.substr(0, separator(dn));
  return true;
}

bool SimImmObject::dnOfNamingValue(const std::string& rdnAttr, const std::string& namingValue,
                                   const std::string& parent, std::string* dn) {
  if (namingValue.find('=') == std::string::npos) {
    *dn = makeDn(rdnAttr, namingValue, parent);
    return true;
  }
  if (namingValue[0] == '=' || separator(namingValue) != namingValue.size()) return false;
  *dn = parent.empty() ? namingValue : namingValue + "," + parent;
  return true;
}
