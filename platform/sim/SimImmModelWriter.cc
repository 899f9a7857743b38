#include "SimImmModelWriter.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

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
  std::setvbuf(file_, nullptr, _IOFBF, 1 << 20);
  put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n");
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
    for (const std::string& value : attr.values) element("      ", "value", value);
    put("    </attr>\n");
  }
  put("  </object>\n");
}

bool SimImmModelWriter::close(std::string* why) {
  put("</imm:IMM-contents>\n");
  bool ok = std::fflush(file_) == 0 && !std::ferror(file_) && ::fsync(fileno(file_)) == 0;
  int error = errno;
  ok = std::fclose(file_) == 0 && ok;
  file_ = nullptr;
  if (!ok) *why = "cannot write " + path_ + ": " + std::strerror(error);
  return ok;
}

void SimImmModelWriter::element(const char* indent, const char* name, const std::string& text) {
  put(indent);
  put("<");
  put(name);
  put(">");
  putEscaped(text);
  put("</");
  put(name);
  put(">\n");
}

void SimImmModelWriter::put(const char* text) { std::fputs(text, file_); }

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
    std::fwrite(text.data() + start, 1, i - start, file_);
    std::fputs(entity, file_);
    start = i + 1;
  }
  std::fwrite(text.data() + start, 1, text.size() - start, file_);
}
