#include "SimBase64.h"

#include <cctype>

namespace {

const char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int sextet(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

std::string SimBase64::encode(const std::string& bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    const size_t n = bytes.size() - i < 3 ? bytes.size() - i : 3;
    unsigned long group = 0;
    for (size_t j = 0; j < 3; ++j) {
      group = group << 8 | (j < n ? static_cast<unsigned char>(bytes[i + j]) : 0u);
    }
    for (size_t j = 0; j < 4; ++j) text.push_back(j <= n ? kAlphabet[(group >> (18 - 6 * j)) & 63] : '=');
  }
  return text;
}

bool SimBase64::decode(const std::string& text, std::string* bytes) {
  std::string chars;
  for (char c : text) {
    if (!std::isspace(static_cast<unsigned char>(c))) chars.push_back(c);
  }
  if (chars.size() % 4 != 0) return false;
  bytes->clear();
  for (size_t i = 0; i < chars.size(); i += 4) {
    const bool last = i + 4 == chars.size();
    const size_t padding = last ? (chars[i + 3] == '=') + (chars[i + 2] == '=' && chars[i + 3] == '=') : 0;
    unsigned long group = 0;
    for (size_t j = 0; j < 4; ++j) {
      const int value = j < 4 - padding ? sextet(chars[i + j]) : 0;
      if (value < 0) return false;
      group = group << 6 | static_cast<unsigned long>(value);
    }
    for (size_t j = 0; j < 3 - padding; ++j) bytes->push_back(static_cast<char>((group >> (16 - 8 * j)) & 255));
  }
  return true;
}
