// The text of a list of strings in the front's messages: "[" + the elements
// joined by "," + "]", without blanks; "[]" for an empty list.

#ifndef VOSK_FRONT_LIST_TEXT_H
#define VOSK_FRONT_LIST_TEXT_H

#include <set>
#include <string>
#include <vector>

namespace voskoamupgrader {

std::string listToString(const std::vector<std::string>& elements);
std::string listToString(const std::set<std::string>& elements);

}  // namespace voskoamupgrader

#endif
