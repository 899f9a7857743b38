// Base64 as IMM XML carries binary values (xsi:type="xs:base64Binary"): the
// standard alphabet with "=" padding; blanks and line ends between the
// characters are allowed on reading.

#ifndef VOSK_SIM_SIM_BASE64_H
#define VOSK_SIM_SIM_BASE64_H

#include <string>

class SimBase64 {
 public:
  static std::string encode(const std::string& bytes);
  // False when `text` is not base64 (a character outside the alphabet, a
  // length that is no multiple of four, padding inside the text).
  static bool decode(const std::string& text, std::string* bytes);

  SimBase64() = delete;
};

#endif
