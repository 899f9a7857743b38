#include "SimImmObject.h"

namespace {

// Whether the backslash at `pos` escapes the character after it: only a
// comma or a backslash is escaped.
bool escapes(const std::string& text, size_t pos) {
  return text[pos] == '\\' && pos + 1 < text.size() && (text[pos + 1] == ',' || text[pos + 1] == '\\');
}

}  // namespace

bool SimImmObject::splitDn(const std::string& dn, std::string* rdnAttr, std::string* rdnValue, std::string* parent) {
  size_t comma = 0;
  while (comma < dn.size() && dn[comma] != ',') comma += escapes(dn, comma) ? 2 : 1;
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
