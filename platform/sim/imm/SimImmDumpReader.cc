#include "SimImmDumpReader.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/SAX2.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "SimEnvironment.h"
#include "SimImmValueCodec.h"

namespace {

const char kImmNamespace[] = "http://www.saforum.org/IMMSchema";
const char kXsiNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

const char* text(const xmlChar* s) { return reinterpret_cast<const char*>(s); }

bool same(const char* a, const char* b) { return a != nullptr && std::strcmp(a, b) == 0; }

// An attribute value as the parser hands it over: without entity
// replacement it writes every "&" the file escapes as "&#38;", which no
// other text produces.
std::string attributeValue(const xmlChar* begin, const xmlChar* end) {
  std::string value(text(begin), static_cast<size_t>(end - begin));
  for (size_t at = value.find("&#38;"); at != std::string::npos; at = value.find("&#38;", at + 1)) {
    value.replace(at, 5, "&");
  }
  return value;
}

// The reader a callback of the parser is for: the context carries it.
SimImmDumpReader* readerOf(void* context) {
  return static_cast<SimImmDumpReader*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

}  // namespace

bool SimImmDumpReader::read(const std::string& path, const Handler& handler) {
  path_ = path;
  handler_ = &handler;
  error_.clear();
  parserError_.clear();
  stopped_ = objectsSeen_ = false;
  open_.clear();
  skipped_ = 0;
  text_ = nullptr;
  if (!SimEnvironment::isRegularFile(path)) {
    fail(0, "not a regular file");
    return false;
  }
  context_ = xmlCreateFileParserCtxt(path.c_str());
  if (context_ == nullptr) {
    fail(0, "cannot open the file");
    return false;
  }
  xmlSAXVersion(context_->sax, 2);
  context_->sax->startElementNs = startElement;
  context_->sax->endElementNs = endElement;
  context_->sax->characters = characters;
  context_->sax->ignorableWhitespace = characters;
  context_->sax->cdataBlock = characters;
  // Entity declarations are not kept, so every reference to an entity but
  // the predefined ones fails the file instead of losing its text.
  context_->sax->entityDecl = nullptr;
  context_->sax->reference = reference;
  context_->sax->comment = nullptr;
  context_->sax->processingInstruction = nullptr;
  context_->sax->serror = parserError;
  context_->_private = this;
  // Dumps may hold values over libxml2's default limit of 10 MB a text.
  xmlCtxtUseOptions(context_, XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOWARNING | XML_PARSE_NOERROR);
  xmlParseDocument(context_);
  if (!stopped_ && context_->wellFormed == 0) fail(0, "the file is not well-formed");
  if (context_->myDoc != nullptr) xmlFreeDoc(context_->myDoc);
  xmlFreeParserCtxt(context_);
  context_ = nullptr;
  return error_.empty();
}

// Keeps the first error, with the line the parser found it on.
void SimImmDumpReader::parserError(void* context, xmlError* error) {
  std::string& text = readerOf(context)->parserError_;
  if (!text.empty() || error->level == XML_ERR_WARNING) return;
  text = "line " + std::to_string(error->line) + ": " + (error->message != nullptr ? error->message : "");
  while (!text.empty() && text.back() == '\n') text.pop_back();
}

void SimImmDumpReader::startElement(void* context, const xmlChar* localName, const xmlChar*, const xmlChar* uri, int,
                                    const xmlChar**, int nbAttributes, int, const xmlChar** attributes) {
  readerOf(context)->start(text(localName), text(uri), attributes, nbAttributes);
}

void SimImmDumpReader::endElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
  readerOf(context)->end();
}

void SimImmDumpReader::characters(void* context, const xmlChar* chars, int length) {
  SimImmDumpReader* reader = readerOf(context);
  if (reader->text_ != nullptr && reader->skipped_ == 0) reader->text_->append(text(chars), length);
}

void SimImmDumpReader::reference(void* context, const xmlChar* name) {
  SimImmDumpReader* reader = readerOf(context);
  reader->fail(reader->line(), std::string("reference to the undefined entity ") + text(name));
}

void SimImmDumpReader::start(const char* name, const char* uri, TagAttributes attributes, int count) {
  if (stopped_) return;
  if (skipped_ > 0) return skip();
  if (open_.empty()) {
    if (!same(name, "IMM-contents") || !same(uri, kImmNamespace)) {
      return fail(line(), std::string("root element is not IMM-contents of ") + kImmNamespace);
    }
    return open(Kind::kRoot);
  }
  switch (open_.back().kind) {
    case Kind::kRoot:
      return startInRoot(name, attributes, count);
    case Kind::kClass:
      return startInClass(name, attributes, count);
    case Kind::kAttrDef:
      return startInAttrDef(name);
    case Kind::kObject:
      return startInObject(name);
    case Kind::kObjectAttr:
      return startInObjectAttr(name, attributes, count);
    case Kind::kText:
      return fail(line(), std::string("element inside <") + textElement_ + ">");
  }
}

void SimImmDumpReader::startInRoot(const char* name, TagAttributes attributes, int count) {
  if (same(name, "class")) {
    if (objectsSeen_) return fail(line(), "class definition after objects");
    class_ = SimImmClass();
    hasRdn_ = false;
    class_.name = attribute(attributes, count, "name", nullptr);
    if (class_.name.empty()) return fail(line(), "class without name attribute");
    return open(Kind::kClass);
  }
  if (!same(name, "object")) return skip();
  objectsSeen_ = true;
  if (!handler_->onObject) return stop();
  std::string className = attribute(attributes, count, "class", nullptr);
  if (className.empty()) return fail(line(), "object without class attribute");
  if (handler_->wantObject && !handler_->wantObject(className)) return skip();
  object_ = SimImmObject();
  object_.className = std::move(className);
  object_.line = line();
  repeated_.clear();
  open(Kind::kObject);
}

void SimImmDumpReader::startInClass(const char* name, TagAttributes, int) {
  if (same(name, "category")) return openText(name, &class_.category);
  if (same(name, "rdn")) {
    hasRdn_ = true;
    class_.rdn = SimImmAttrDef();
    attrDef_ = &class_.rdn;
  } else if (same(name, "attr")) {
    class_.attrs.emplace_back();
    attrDef_ = &class_.attrs.back();
  } else {
    return skip();
  }
  typeName_.clear();
  open(Kind::kAttrDef);
}

void SimImmDumpReader::startInAttrDef(const char* name) {
  if (same(name, "name")) return openText(name, &attrDef_->name);
  if (same(name, "type")) return openText(name, &typeName_);
  if (same(name, "category")) return openText(name, &attrDef_->category);
  if (same(name, "flag")) {
    attrDef_->flags.emplace_back();
    return openText(name, &attrDef_->flags.back());
  }
  if (!same(name, "default-value")) return skip();
  attrDef_->hasDefault = true;
  openText(name, &attrDef_->defaultValue);
}

void SimImmDumpReader::startInObject(const char* name) {
  if (same(name, "dn")) return openText(name, &object_.dn);
  if (!same(name, "attr")) return skip();
  attr_ = SimImmAttrValues();
  open(Kind::kObjectAttr);
}

void SimImmDumpReader::startInObjectAttr(const char* name, TagAttributes attributes, int count) {
  if (same(name, "name")) return openText(name, &attr_.name);
  if (!same(name, "value")) return skip();
  attr_.values.emplace_back();
  const std::string type = attribute(attributes, count, "type", kXsiNamespace);
  attr_.values.back().base64 = type.substr(type.find(':') + 1) == "base64Binary";
  openText(name, &attr_.values.back().text);
}

void SimImmDumpReader::openText(const char* name, std::string* target) {
  target->clear();
  text_ = target;
  textElement_ = name;
  open(Kind::kText);
}

void SimImmDumpReader::end() {
  if (stopped_) return;
  if (skipped_ > 0) {
    --skipped_;
    return;
  }
  const Open closed = open_.back();
  open_.pop_back();
  switch (closed.kind) {
    case Kind::kText:
      text_ = nullptr;
      return;
    case Kind::kAttrDef:
      return endAttrDef(closed.line);
    case Kind::kClass:
      return endClass(closed.line);
    case Kind::kObjectAttr:
      return endObjectAttr(closed.line);
    case Kind::kObject:
      return endObject(closed.line);
    case Kind::kRoot:
      return;
  }
}

void SimImmDumpReader::endAttrDef(int line) {
  if (attrDef_->name.empty()) return fail(line, "attribute definition without name");
  attrDef_->type = SimImmValueCodec::typeOfName(typeName_);
  if (attrDef_->type == 0) {
    fail(line, "attribute " + attrDef_->name + " has unknown type \"" + typeName_ + "\"");
  }
}

void SimImmDumpReader::endClass(int line) {
  if (!hasRdn_) return fail(line, "class " + class_.name + " has no rdn");
  if (handler_->onClass && !handler_->onClass(std::move(class_))) stop();
}

void SimImmDumpReader::endObjectAttr(int line) {
  if (attr_.name.empty()) return fail(line, "object attribute without name");
  auto given = std::find_if(object_.attrs.begin(), object_.attrs.end(),
                            [&](const SimImmAttrValues& other) { return other.name == attr_.name; });
  if (given != object_.attrs.end()) {
    // The node's loader takes an attribute given twice, and so does this
    // reader: the values are taken together.
    repeated_.emplace_back(line, attr_.name);
    std::move(attr_.values.begin(), attr_.values.end(), std::back_inserter(given->values));
  } else if (!attr_.values.empty()) {
    object_.attrs.push_back(std::move(attr_));
  }
}

void SimImmDumpReader::endObject(int line) {
  if (object_.dn.empty()) return fail(line, "object of class " + object_.className + " without dn");
  for (const auto& repeat : repeated_) {
    if (!handler_->onWarning) break;
    handler_->onWarning(path_, "line " + std::to_string(repeat.first) + ": object " + object_.dn + ": attribute " +
                                   repeat.second + " is given more than once; its values are taken together");
  }
  if (!handler_->onObject(std::move(object_))) stop();
}

void SimImmDumpReader::stop() {
  stopped_ = true;
  xmlStopParser(context_);
}

void SimImmDumpReader::fail(int line, const std::string& why) {
  if (error_.empty()) {
    std::string where = parserError_;
    if (where.empty()) where = line > 0 ? "line " + std::to_string(line) + ": " + why : why;
    error_ = path_ + ": " + where;
  }
  if (context_ != nullptr && !stopped_) stop();
}

int SimImmDumpReader::line() const { return context_->input != nullptr ? context_->input->line : 0; }

std::string SimImmDumpReader::attribute(TagAttributes attributes, int count, const char* name, const char* uri) {
  for (int i = 0; i < count; ++i, attributes += 5) {
    if (same(text(attributes[0]), name) && (uri == nullptr ? attributes[2] == nullptr : same(text(attributes[2]), uri))) {
      return attributeValue(attributes[3], attributes[4]);
    }
  }
  return "";
}
