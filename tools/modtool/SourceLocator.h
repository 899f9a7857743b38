// Finds places in a modification file for the messages of `check`: the line
// of an `Arg` inside a `MoAction`, the `Mo` around a `MoAction`, and the
// column where an element starts on its line. It only locates elements; what
// they mean is the parser's business.

#ifndef VOSK_TOOLS_MODTOOL_SOURCE_LOCATOR_H
#define VOSK_TOOLS_MODTOOL_SOURCE_LOCATOR_H

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace modtool {

class SourceLocator {
 public:
  // False when the file cannot be read as XML; every look-up then gives 0.
  bool load(const std::string& file);

  // The line of the `Mo` element around the `MoAction` on `actionLine`.
  long moLineOf(long actionLine) const;
  // The line of the `Arg` named `argName` of the `MoAction` on `actionLine`;
  // with `last`, of the last such `Arg`. 0 when there is none.
  long argLine(long actionLine, const std::string& argName, bool last) const;
  // The line of the `index`th (from 0) `Operation` of that `MoAction`; 0
  // when there is none.
  long operationLine(long actionLine, size_t index) const;
  // The `Mo` elements the parser walks (those not inside another `Mo`):
  // line and class name, in document order.
  std::vector<std::pair<long, std::string>> mos() const;
  // The line of the first element at or after `fromLine` that carries the
  // XML attribute `attribute`; 0 when none does.
  long elementWithAttribute(long fromLine, const std::string& attribute) const;
  // The first line that holds `text`; 0 when none does.
  long lineWith(const std::string& text) const;
  // The 1-based column of "<`tag`" on `line`, else of the line's first
  // non-blank character; 0 for a line the file does not have.
  long column(long line, const std::string& tag) const;

 private:
  struct Element {
    std::string name;
    long line = 0;
    int parent = -1;
    std::map<std::string, std::string> attributes;
  };

  int elementAt(long line, const char* name) const;

  std::vector<Element> elements_;  // in document order
  std::vector<std::string> lines_;
};

}  // namespace modtool

#endif
