#include "icti/DistinguishedName.h"

namespace {

// A backslash escapes the character after it only when that is a comma or
// a backslash.
bool escapes(const std::string& text, size_t i) {
  return text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == ',' || text[i + 1] == '\\');
}

}  // namespace

std::string DistinguishedName::escapeValue(const std::string& value) {
  std::string text;
  text.reserve(value.size());
  for (size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool needsEscape =
        c == ',' || (c == '\\' && (i + 1 == value.size() || value[i + 1] == ',' || value[i + 1] == '\\'));
    if (needsEscape) text.push_back('\\');
    text.push_back(c);
  }
  return text;
}

std::string DistinguishedName::unescapeValue(const std::string& text) {
  std::string value;
  value.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (escapes(text, i)) ++i;
    value.push_back(text[i]);
  }
  return value;
}

size_t DistinguishedName::nextSeparator(const std::string& name, size_t from) {
  for (size_t i = from; i < name.size(); ++i) {
    if (escapes(name, i)) {
      ++i;
    } else if (name[i] == ',') {
      return i;
    }
  }
  return std::string::npos;
}

bool DistinguishedName::isSeparator(const std::string& name, size_t position) {
  for (size_t separator = nextSeparator(name); separator <= position; separator = nextSeparator(name, separator + 1)) {
    if (separator == position) return true;
  }
  return false;
}

std::string DistinguishedName::firstRdn(const std::string& name) { return name.substr(0, nextSeparator(name)); }

std::string DistinguishedName::parentOf(const std::string& name) {
  size_t separator = nextSeparator(name);
  return separator == std::string::npos ? std::string() : name.substr(separator + 1);
}

std::string DistinguishedName::rdnValue(const std::string& name) {
  const std::string rdn = firstRdn(name);
  size_t equals = rdn.find('=');
  return equals == std::string::npos ? std::string() : unescapeValue(rdn.substr(equals + 1));
}

std::string DistinguishedName::rdnOf(const std::string& attribute, const std::string& namingValue) {
  if (namingValue.find('=') != std::string::npos) return namingValue;
  return attribute + "=" + escapeValue(namingValue);
}

std::string DistinguishedName::namingValueOf(const std::string& rdn, const std::string& attribute) {
  const size_t equals = rdn.find('=');
  if (equals != attribute.size() || rdn.compare(0, equals, attribute) != 0) return rdn;
  std::string value = unescapeValue(rdn.substr(equals + 1));
  return value.find('=') == std::string::npos ? value : rdn;
}
