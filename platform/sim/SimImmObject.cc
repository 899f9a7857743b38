#include "SimImmObject.h"

bool SimImmObject::splitDn(const std::string& dn, std::string* rdnAttr, std::string* rdnValue, std::string* parent) {
  size_t comma = 0;
  while (comma < dn.size() && dn[comma] != ',') comma += dn[comma] == '\\' && comma + 1 < dn.size() ? 2 : 1;
  std::string rdn = dn.substr(0, comma);
  *parent = comma < dn.size() ? dn.substr(comma + 1) : std::string();
  size_t equals = rdn.find('=');
  if (equals == std::string::npos || equals == 0) return false;
  *rdnAttr = rdn.substr(0, equals);
  rdnValue->clear();
  for (size_t i = equals + 1; i < rdn.size(); ++i) {
    if (rdn[i] == '\\' && i + 1 < rdn.size() && rdn[i + 1] == ',') ++i;
    rdnValue->push_back(rdn[i]);
  }
  return true;
}

std::string SimImmObject::makeDn(const std::string& rdnAttr, const std::string& rdnValue, const std::string& parent) {
  std::string dn = rdnAttr + "=";
  for (char c : rdnValue) {
    if (c == ',') dn.push_back('\\');
    dn.push_back(c);
  }
  if (!parent.empty()) dn += "," + parent;
  return dn;
}
