// Cuts a byte stream read in arbitrary pieces into lines.

#ifndef VOSK_TOOLS_LINE_SPLITTER_H
#define VOSK_TOOLS_LINE_SPLITTER_H

#include <cstddef>
#include <string>
#include <vector>

namespace wrappersim {

class LineSplitter {
 public:
  // The lines completed by `data`, without their line ends.
  std::vector<std::string> feed(const char* data, size_t size);
  // What came after the last line end; cleared.
  std::string takeRest();

 private:
  std::string pending_;
};

}  // namespace wrappersim

#endif
