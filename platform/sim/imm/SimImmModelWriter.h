// Writes a model as IMM XML into one file: the class definitions first, then
// the objects, as the simulated node reads them back. A value read in base64,
// or a text that XML cannot carry as text (control characters, bytes that
// are no UTF-8), is written in base64, marked xsi:type="xs:base64Binary", so
// that every value reads back as it was. Errors are collected and reported
// once, by close().

#ifndef VOSK_SIM_SIM_IMM_MODEL_WRITER_H
#define VOSK_SIM_SIM_IMM_MODEL_WRITER_H

#include <cstdio>
#include <string>
#include <string_view>

#include "SimImmClass.h"
#include "SimImmObject.h"

class SimImmModelWriter {
 public:
  explicit SimImmModelWriter(std::string path) : path_(std::move(path)) {}
  ~SimImmModelWriter();
  SimImmModelWriter(const SimImmModelWriter&) = delete;
  SimImmModelWriter& operator=(const SimImmModelWriter&) = delete;

  // Creates the file (replacing one of that name) and writes the root.
  bool open(std::string* why);
  void writeClass(const SimImmClass& cls);
  void writeObject(const SimImmObject& object);
  // Ends the document and closes the file, its content on disk. False, with
  // `why` set, when any write failed.
  bool close(std::string* why);

 private:
  void writeAttrDef(const char* element, const SimImmAttrDef& def);
  void writeValue(const SimImmValue& value);
  static bool isXmlText(const std::string& text);
  void element(std::string_view indent, std::string_view name, const std::string& text);
  // Writes the buffered text to the file once it holds `atLeast` bytes.
  void spill(size_t atLeast);
  void put(std::string_view text) { buffer_.append(text.data(), text.size()); }
  void putEscaped(const std::string& text);

  const std::string path_;
  std::FILE* file_ = nullptr;
  // Text not yet handed to the file: one large write instead of a call for
  // every piece.
  std::string buffer_;
  static constexpr size_t kBufferSize = 1 << 20;
};

#endif
