#include "ModelObjects.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

namespace e2e {
namespace {

std::vector<xmlNode*> children(xmlNode* parent, const char* name) {
  std::vector<xmlNode*> found;
  for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
    if (node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, reinterpret_cast<const xmlChar*>(name)) == 0) {
      found.push_back(node);
    }
  }
  return found;
}

std::string text(xmlNode* node) {
  xmlChar* content = xmlNodeGetContent(node);
  std::string result = content != nullptr ? reinterpret_cast<const char*>(content) : "";
  xmlFree(content);
  return result;
}

std::string firstText(xmlNode* parent, const char* name) {
  std::vector<xmlNode*> found = children(parent, name);
  return found.empty() ? "" : text(found[0]);
}

}  // namespace

ModelObjects readModelObjects(const std::string& path) {
  ModelObjects objects;
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (doc == nullptr) return objects;
  for (xmlNode* node : children(xmlDocGetRootElement(doc), "object")) {
    xmlChar* className = xmlGetProp(node, reinterpret_cast<const xmlChar*>("class"));
    ModelObject& object = objects[firstText(node, "dn")];
    object.className = className != nullptr ? reinterpret_cast<const char*>(className) : "";
    xmlFree(className);
    for (xmlNode* attr : children(node, "attr")) {
      std::vector<std::string>& values = object.attrs[firstText(attr, "name")];
      for (xmlNode* value : children(attr, "value")) values.push_back(text(value));
    }
  }
  xmlFreeDoc(doc);
  return objects;
}

std::vector<std::string> dnsOf(const ModelObjects& objects, const std::string& className) {
  std::vector<std::string> dns;
  for (const auto& [dn, object] : objects) {
    if (object.className == className) dns.push_back(dn);
  }
  return dns;
}

}  // namespace e2e
