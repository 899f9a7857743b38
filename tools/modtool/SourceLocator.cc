#include "SourceLocator.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <fstream>
#include <functional>

namespace modtool {

bool SourceLocator::load(const std::string& file) {
  elements_.clear();
  lines_.clear();
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) lines_.push_back(line);
  xmlDoc* doc = xmlReadFile(file.c_str(), nullptr,
                            XML_PARSE_NONET | XML_PARSE_BIG_LINES | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (doc == nullptr) return false;
  std::function<void(xmlNode*, int)> visit = [&](xmlNode* node, int parent) {
    for (; node != nullptr; node = node->next) {
      if (node->type != XML_ELEMENT_NODE) continue;
      Element element;
      element.name = reinterpret_cast<const char*>(node->name);
      element.line = xmlGetLineNo(node);
      element.parent = parent;
      for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
        xmlChar* value = xmlNodeListGetString(doc, attribute->children, 1);
        element.attributes[reinterpret_cast<const char*>(attribute->name)] =
            value != nullptr ? reinterpret_cast<const char*>(value) : "";
        xmlFree(value);
      }
      elements_.push_back(element);
      visit(node->children, static_cast<int>(elements_.size()) - 1);
    }
  };
  visit(xmlDocGetRootElement(doc), -1);
  xmlFreeDoc(doc);
  return true;
}

int SourceLocator::elementAt(long line, const char* name) const {
  for (size_t i = 0; i < elements_.size(); ++i) {
    if (elements_[i].line == line && elements_[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

long SourceLocator::moLineOf(long actionLine) const {
  const int action = elementAt(actionLine, "MoAction");
  if (action < 0 || elements_[action].parent < 0) return 0;
  return elements_[elements_[action].parent].line;
}

long SourceLocator::argLine(long actionLine, const std::string& argName, bool last) const {
  const int action = elementAt(actionLine, "MoAction");
  long found = 0;
  for (size_t i = action < 0 ? elements_.size() : 0; i < elements_.size(); ++i) {
    const Element& element = elements_[i];
    if (element.parent != action || element.name != "Arg") continue;
    auto name = element.attributes.find("name");
    if (name == element.attributes.end() || name->second != argName) continue;
    found = element.line;
    if (!last) break;
  }
  return found;
}

long SourceLocator::operationLine(long actionLine, size_t index) const {
  const int action = elementAt(actionLine, "MoAction");
  for (size_t i = action < 0 ? elements_.size() : 0; i < elements_.size(); ++i) {
    if (elements_[i].parent != action || elements_[i].name != "Operation") continue;
    if (index-- == 0) return elements_[i].line;
  }
  return 0;
}

std::vector<std::pair<long, std::string>> SourceLocator::mos() const {
  std::vector<std::pair<long, std::string>> found;
  for (const Element& element : elements_) {
    if (element.name != "Mo") continue;
    bool nested = false;
    for (int up = element.parent; up >= 0 && !nested; up = elements_[up].parent) nested = elements_[up].name == "Mo";
    auto name = element.attributes.find("name");
    if (!nested) found.emplace_back(element.line, name == element.attributes.end() ? "" : name->second);
  }
  return found;
}

long SourceLocator::elementWithAttribute(long fromLine, const std::string& attribute) const {
  for (const Element& element : elements_) {
    if (element.line >= fromLine && element.attributes.count(attribute) != 0) return element.line;
  }
  return 0;
}

long SourceLocator::lineWith(const std::string& text) const {
  for (size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].find(text) != std::string::npos) return static_cast<long>(i) + 1;
  }
  return 0;
}

long SourceLocator::column(long line, const std::string& tag) const {
  if (line < 1 || line > static_cast<long>(lines_.size())) return 0;
  const std::string& text = lines_[line - 1];
  size_t at = text.find("<" + tag);
  if (at == std::string::npos) at = text.find_first_not_of(" \t");
  return at == std::string::npos ? 1 : static_cast<long>(at) + 1;
}

}  // namespace modtool
