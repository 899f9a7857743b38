#include "SimImmModelWriter.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "SimBase64.h"
#include "SimFaults.h"
#include "SimImmValueCodec.h"

SimImmModelWriter::~SimImmModelWriter() {
  if (file_ != nullptr) std::fclose(file_);
}

bool SimImmModelWriter::open(std::string* why) {
  file_ = std::fopen(path_.c_str(), "w");
  if (file_ == nullptr) {
    *why = "cannot create " + path_ + ": " + std::strerror(errno);
    return false;
  }
  put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\" "
      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n");
  return true;
}

void SimImmModelWriter::writeClass(const SimImmClass& cls) {
  put("  <class name=\"");
  putEscaped(cls.name);
  put("\">\n");
  if (!cls.category.empty()) element("    ", "category", cls.category);
  writeAttrDef("rdn", cls.rdn);
  for (const SimImmAttrDef& attr : cls.attrs) writeAttrDef("attr", attr);
  put("  </class>\n");
  spill(kBufferSize);
}

void SimImmModelWriter::writeAttrDef(const char* name, const SimImmAttrDef& def) {
  put("    <");
  put(name);
  put(">\n");
  element("      ", "name", def.name);
  element("      ", "type", SimImmValueCodec::nameOfType(def.type));
  if (!def.category.empty()) element("      ", "category", def.category);
  for (const std::string& flag : def.flags) element("      ", "flag", flag);
  if (def.hasDefault) element("      ", "default-value", def.defaultValue);
  put("    </");
  put(name);
  put(">\n");
}

void SimImmModelWriter::writeObject(const SimImmObject& object) {
  put("  <object class=\"");
  putEscaped(object.className);
  put("\">\n");
  element("    ", "dn", object.dn);
  for (const SimImmAttrValues& attr : object.attrs) {
    put("    <attr>\n");
    element("      ", "name", attr.name);
    for (const SimImmValue& value : attr.values) writeValue(value);
    put("    </attr>\n");
  }
  put("  </object>\n");
  spill(kBufferSize);
  if (SimFaults::instance().objectWritten()) {
    spill(0);
    std::fflush(file_);
    SimFaults::kill();
  }
}

void SimImmModelWriter::writeValue(const SimImmValue& value) {
  if (!value.base64 && isXmlText(value.text)) {
    element("      ", "value", value.text);
    return;
  }
  put("      <value xsi:type=\"xs:base64Binary\">");
  put(value.base64 ? value.text.c_str() : SimBase64::encode(value.text).c_str());
  put("</value>\n");
}

// XML 1.0 text: UTF-8 of characters other than the control characters
// (tab, line feed and carriage return excepted), surrogates, U+FFFE and
// U+FFFF. Anything else cannot stand in a file as text.
bool SimImmModelWriter::isXmlText(const std::string& text) {
  for (size_t i = 0; i < text.size();) {
    const unsigned char lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80) {
      if (lead < 0x20 && lead != '\t' && lead != '\n' && lead != '\r') return false;
      ++i;
      continue;
    }
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || lead > 0xF4 || i + length > text.size()) return false;
    unsigned long code = lead & (0x7F >> length);
    for (size_t j = 1; j < length; ++j) {
      const unsigned char next = static_cast<unsigned char>(text[i + j]);
      if ((next & 0xC0) != 0x80) return false;
      code = code << 6 | (next & 0x3F);
    }
    const unsigned long smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF) || code == 0xFFFE ||
        code == 0xFFFF) {
      return false;
    }
    i += length;
  }
  return true;
}

bool SimImmModelWriter::close(std::string* why) {
  put("</imm:IMM-contents>\n");
  spill(0);
  bool ok = std::fflush(file_) == 0 && !std::ferror(file_) && ::fsync(fileno(file_)) == 0;
  int error = errno;
  ok = std::fclose(file_) == 0 && ok;
  file_ = nullptr;
  if (!ok) *why = "cannot write " + path_ + ": " + std::strerror(error);
  return ok;
}

void SimImmModelWriter::element(std::string_view indent, std::string_view name, const std::string& text) {
  put(indent);
  put("<");
  put(name);
  put(">");
  putEscaped(text);
  put("</");
  put(name);
  put(">\n");
}

void SimImmModelWriter::spill(size_t atLeast) {
  if (buffer_.size() < atLeast || buffer_.empty()) return;
  std::fwrite(buffer_.data(), 1, buffer_.size(), file_);
  buffer_.clear();
}

void SimImmModelWriter::putEscaped(const std::string& text) {
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char* entity = nullptr;
    switch (text[i]) {
      case '&': entity = "&amp;"; break;
      case '<': entity = "&lt;"; break;
      case '>': entity = "&gt;"; break;
      case '"': entity = "&quot;"; break;
      case '\r': entity = "&#13;"; break;
      default: continue;
    }
    buffer_.append(text, start, i - start);
    buffer_ += entity;
    start = i + 1;
  }
  buffer_.append(text, start, text.size() - start);
}
