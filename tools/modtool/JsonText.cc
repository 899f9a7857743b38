#include "JsonText.h"

#include <cstdio>

namespace modtool {

std::string JsonText::quote(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
          out += escaped;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string JsonText::array(const std::vector<std::string>& items) {
  std::string out = "[";
  for (size_t i = 0; i < items.size(); ++i) out += (i == 0 ? "" : ",") + items[i];
  return out + "]";
}

std::string JsonText::object(const std::vector<std::pair<std::string, std::string>>& members) {
  std::string out = "{";
  for (size_t i = 0; i < members.size(); ++i) {
    out += (i == 0 ? "" : ",") + quote(members[i].first) + ":" + members[i].second;
  }
  return out + "}";
}

std::string JsonText::quotedArray(const std::vector<std::string>& texts) {
  std::vector<std::string> items;
  for (const std::string& text : texts) items.push_back(quote(text));
  return array(items);
}

}  // namespace modtool
