// The few pieces of JSON that vosk-modtool writes by hand: quoted texts,
// arrays and objects of already formatted members.

#ifndef VOSK_TOOLS_MODTOOL_JSON_TEXT_H
#define VOSK_TOOLS_MODTOOL_JSON_TEXT_H

#include <string>
#include <utility>
#include <vector>

namespace modtool {

class JsonText {
 public:
  // `text` as a JSON string: quotes, backslashes and control characters
  // escaped; other bytes as they are (the files are UTF-8).
  static std::string quote(const std::string& text);
  // "[a,b,...]" of formatted items.
  static std::string array(const std::vector<std::string>& items);
  // "{"name":value,...}" of formatted values, in the given order.
  static std::string object(const std::vector<std::pair<std::string, std::string>>& members);
  static std::string quotedArray(const std::vector<std::string>& texts);

  JsonText() = delete;
};

}  // namespace modtool

#endif
