// Suggestions for misspelt names in modification files: the known name
// closest to what an author wrote, by edit distance, so that a failure can
// say what was probably meant.

#ifndef VOSK_PARSER_SPELLING_H
#define VOSK_PARSER_SPELLING_H

#include <string>
#include <vector>

class Spelling {
 public:
  // The name of `known` with the fewest single-character edits (letter case
  // not counted) from `written`; the first of equals wins. Empty when
  // `known` is empty.
  static std::string closest(const std::string& written, const std::vector<std::string>& known);
  // " (did you mean <closest>?)"; empty when nothing is known, or when the
  // closest name differs in more than half of its letters.
  static std::string suggestion(const std::string& written, const std::vector<std::string>& known);

  Spelling() = delete;
};

#endif
