#include "SimImmDumpReader.h"

#include <libxml/xmlreader.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>

#include "SimEnvironment.h"
#include "SimImmValueCodec.h"

namespace {

const char kImmNamespace[] = "http://www.saforum.org/IMMSchema";
const char kXsiNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

// Keeps the first error, with the line the parser found it on.
void recordParserError(void* arg, xmlErrorPtr error) {
  std::string* text = static_cast<std::string*>(arg);
  if (!text->empty() || error->level == XML_ERR_WARNING) return;
  *text = "line " + std::to_string(error->line) + ": " + (error->message != nullptr ? error->message : "");
  while (!text->empty() && text->back() == '\n') text->pop_back();
}

const char* text(const xmlChar* s) { return reinterpret_cast<const char*>(s); }

}  // namespace

bool SimImmDumpReader::read(const std::string& path, const Handler& handler) {
  path_ = path;
  error_.clear();
  parserError_.clear();
  textLine_ = line_ = 0;
  openLines_.clear();
  if (!SimEnvironment::isRegularFile(path)) return fail("not a regular file");
  // Dumps may hold values over libxml2's default limit of 10 MB a text, and
  // more lines than it counts by default.
  reader_ = xmlReaderForFile(path.c_str(), nullptr,
                             XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES | XML_PARSE_NOWARNING |
                                 XML_PARSE_NOERROR);
  if (reader_ == nullptr) return fail("cannot open the file");
  xmlTextReaderSetStructuredErrorHandler(reader_, recordParserError, &parserError_);
  bool ok = readContents(handler);
  xmlFreeTextReader(reader_);
  reader_ = nullptr;
  return ok;
}

bool SimImmDumpReader::readContents(const Handler& handler) {
  do {
    if (!next()) return fail("no root element");
  } while (xmlTextReaderNodeType(reader_) != XML_READER_TYPE_ELEMENT);
  const char* ns = text(xmlTextReaderConstNamespaceUri(reader_));
  if (std::strcmp(text(xmlTextReaderConstLocalName(reader_)), "IMM-contents") != 0 || ns == nullptr ||
      std::strcmp(ns, kImmNamespace) != 0) {
    return fail(std::string("root element is not IMM-contents of ") + kImmNamespace);
  }
  bool objectsSeen = false;
  stopped_ = false;
  return forEachChild([&](const std::string& name) {
    if (name == "class") {
      if (objectsSeen) return fail("class definition after objects");
      SimImmClass cls;
      if (!readClass(&cls)) return false;
      stopped_ = handler.onClass && !handler.onClass(std::move(cls));
      return true;
    }
    if (name != "object") return skipElement();
    objectsSeen = true;
    if (!handler.onObject) {
      stopped_ = true;
      return true;
    }
    std::string className = attribute("class");
    if (className.empty()) return fail("object without class attribute");
    if (handler.wantObject && !handler.wantObject(className)) return skipElement();
    SimImmObject object;
    if (!readObject(className, handler, &object)) return false;
    stopped_ = !handler.onObject(std::move(object));
    return true;
  });
}

bool SimImmDumpReader::readClass(SimImmClass* cls) {
  cls->name = attribute("name");
  if (cls->name.empty()) return fail("class without name attribute");
  bool hasRdn = false;
  bool ok = forEachChild([&](const std::string& name) {
    if (name == "category") return readText(&cls->category);
    if (name == "rdn") {
      hasRdn = true;
      return readAttrDef(&cls->rdn);
    }
    if (name != "attr") return skipElement();
    cls->attrs.emplace_back();
    return readAttrDef(&cls->attrs.back());
  });
  if (ok && !hasRdn) return fail("class " + cls->name + " has no rdn");
  return ok;
}

bool SimImmDumpReader::readAttrDef(SimImmAttrDef* def) {
  std::string typeName;
  bool ok = forEachChild([&](const std::string& name) {
    if (name == "name") return readText(&def->name);
    if (name == "type") return readText(&typeName);
    if (name == "category") return readText(&def->category);
    if (name == "flag") {
      def->flags.emplace_back();
      return readText(&def->flags.back());
    }
    if (name != "default-value") return skipElement();
    def->hasDefault = true;
    return readText(&def->defaultValue);
  });
  if (!ok) return false;
  if (def->name.empty()) return fail("attribute definition without name");
  def->type = SimImmValueCodec::typeOfName(typeName);
  if (def->type == 0) return fail("attribute " + def->name + " has unknown type \"" + typeName + "\"");
  return true;
}

bool SimImmDumpReader::readObject(const std::string& className, const Handler& handler, SimImmObject* object) {
  object->className = className;
  object->line = currentLine();
  std::vector<std::pair<int, std::string>> repeated;  // line, attribute
  bool ok = forEachChild([&](const std::string& name) {
    if (name == "dn") return readText(&object->dn);
    if (name != "attr") return skipElement();
    const int line = currentLine();
    SimImmAttrValues attr;
    if (!readObjectAttr(&attr)) return false;
    auto given = std::find_if(object->attrs.begin(), object->attrs.end(),
                              [&](const SimImmAttrValues& other) { return other.name == attr.name; });
    if (given != object->attrs.end()) {
      // The node's loader takes an attribute given twice, and so does this
      // reader: the values are taken together.
      repeated.emplace_back(line, attr.name);
      std::move(attr.values.begin(), attr.values.end(), std::back_inserter(given->values));
    } else if (!attr.values.empty()) {
      object->attrs.push_back(std::move(attr));
    }
    return true;
  });
  if (ok && object->dn.empty()) return fail("object of class " + className + " without dn");
  for (const auto& repeat : repeated) {
    if (!handler.onWarning) break;
    handler.onWarning(path_, "line " + std::to_string(repeat.first) + ": object " + object->dn + ": attribute " +
                                 repeat.second + " is given more than once; its values are taken together");
  }
  return ok;
}

bool SimImmDumpReader::readObjectAttr(SimImmAttrValues* attr) {
  bool ok = forEachChild([&](const std::string& name) {
    if (name == "name") return readText(&attr->name);
    if (name != "value") return skipElement();
    attr->values.emplace_back();
    attr->values.back().base64 = isBase64Value();
    return readText(&attr->values.back().text);
  });
  if (ok && attr->name.empty()) return fail("object attribute without name");
  return ok;
}

bool SimImmDumpReader::isBase64Value() {
  std::unique_ptr<xmlChar, void (*)(void*)> type(
      xmlTextReaderGetAttributeNs(reader_, BAD_CAST "type", BAD_CAST kXsiNamespace), xmlFree);
  if (!type) return false;
  const std::string name = text(type.get());
  const std::string local = name.substr(name.find(':') + 1);
  return local == "base64Binary";
}

bool SimImmDumpReader::forEachChild(const std::function<bool(const std::string&)>& child) {
  if (xmlTextReaderIsEmptyElement(reader_)) return true;
  int depth = xmlTextReaderDepth(reader_);
  for (;;) {
    if (!next()) return fail("unexpected end of file");
    int type = xmlTextReaderNodeType(reader_);
    if (type == XML_READER_TYPE_END_ELEMENT && xmlTextReaderDepth(reader_) == depth) return true;
    if (type == XML_READER_TYPE_ELEMENT && !child(text(xmlTextReaderConstLocalName(reader_)))) return false;
    // Stopping leaves the rest of the document unread and unjudged.
    if (stopped_) return true;
  }
}

bool SimImmDumpReader::readText(std::string* result) {
  result->clear();
  if (xmlTextReaderIsEmptyElement(reader_)) return true;
  std::string element = text(xmlTextReaderConstLocalName(reader_));
  for (;;) {
    if (!next()) return fail("unexpected end of file");
    switch (xmlTextReaderNodeType(reader_)) {
      case XML_READER_TYPE_END_ELEMENT:
        return true;
      case XML_READER_TYPE_ELEMENT:
        return fail("element inside <" + element + ">");
      case XML_READER_TYPE_TEXT:
      case XML_READER_TYPE_CDATA:
      case XML_READER_TYPE_WHITESPACE:
      case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
        *result += text(xmlTextReaderConstValue(reader_));
        break;
      default:
        break;
    }
  }
}

bool SimImmDumpReader::skipElement() {
  if (xmlTextReaderIsEmptyElement(reader_)) return true;
  int depth = xmlTextReaderDepth(reader_);
  for (;;) {
    if (!next()) return fail("unexpected end of file");
    if (xmlTextReaderNodeType(reader_) == XML_READER_TYPE_END_ELEMENT && xmlTextReaderDepth(reader_) == depth) {
      return true;
    }
  }
}

int SimImmDumpReader::currentLine() {
  return xmlTextReaderCurrentNode(reader_) != nullptr ? line_ : xmlTextReaderGetParserLineNumber(reader_);
}

bool SimImmDumpReader::next() {
  if (xmlTextReaderNodeType(reader_) == XML_READER_TYPE_END_ELEMENT) openLines_.pop_back();
  if (xmlTextReaderRead(reader_) != 1) return false;
  noteLine();
  return true;
}

// libxml2 keeps the line of an element in 16 bits, 65535 standing for that
// line and every later one, but the whole line of a text node, and a text
// ends on the line where the next tag starts. An end tag is given the line
// of its start tag, where the element begins.
void SimImmDumpReader::noteLine() {
  const xmlNode* node = xmlTextReaderCurrentNode(reader_);
  switch (xmlTextReaderNodeType(reader_)) {
    case XML_READER_TYPE_ELEMENT:
      line_ = node->line < kLastShortLine ? node->line : std::max(kLastShortLine, textLine_);
      if (!xmlTextReaderIsEmptyElement(reader_)) openLines_.push_back(line_);
      break;
    case XML_READER_TYPE_END_ELEMENT:
      line_ = openLines_.back();
      break;
    case XML_READER_TYPE_TEXT:
    case XML_READER_TYPE_WHITESPACE:
    case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
      line_ = textLine_ = static_cast<int>(xmlGetLineNo(node));
      break;
    default:
      break;
  }
}

bool SimImmDumpReader::fail(const std::string& why) {
  if (error_.empty()) {
    std::string where = parserError_;
    if (where.empty() && reader_ != nullptr) {
      where = "line " + std::to_string(currentLine()) + ": " + why;
    } else if (where.empty()) {
      where = why;
    }
    error_ = path_ + ": " + where;
  }
  return false;
}

std::string SimImmDumpReader::attribute(const char* name) {
  std::unique_ptr<xmlChar, void (*)(void*)> value(xmlTextReaderGetAttribute(reader_, BAD_CAST name), xmlFree);
  return value ? text(value.get()) : "";
}
