#include "xml/XmlHandler.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <cstdarg>
#include <cstdio>
#include <memory>

#include "common/Log.h"
#include "xml/OperationArgument.h"

namespace {

const char kSpecialActionPrefix[] = "SpecialAction";

bool isElement(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, BAD_CAST name) == 0;
}

bool hasName(const xmlAttr* attribute, const char* name) { return xmlStrcmp(attribute->name, BAD_CAST name) == 0; }

const char* nameOf(const xmlAttr* attribute) { return reinterpret_cast<const char*>(attribute->name); }

// The text of the attribute's first child node; null when it has none.
const char* valueOf(const xmlAttr* attribute) {
  if (attribute->children == nullptr) return nullptr;
  const xmlChar* content = attribute->children->content;
  return content == nullptr ? "" : reinterpret_cast<const char*>(content);
}

// The text content of an element, entities substituted; empty without text.
std::string textOf(xmlDoc* doc, const xmlNode* element) {
  xmlChar* text = xmlNodeListGetString(doc, element->children, 1);
  if (text == nullptr) return std::string();
  std::string result(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return result;
}

const xmlNode* firstChildElement(const xmlNode* parent, const char* name) {
  for (const xmlNode* child = parent->children; child != nullptr; child = child->next) {
    if (isElement(child, name)) return child;
  }
  return nullptr;
}

bool hasPersistentFlag(xmlDoc* doc, const xmlNode* element) {
  for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
    if (isElement(child, "flag") && textOf(doc, child) == "SA_PERSISTENT") return true;
  }
  return false;
}

// Reads the attributes of a `Mo` or `MoAction` element: `name` is the only
// one allowed. False when there was another one (each is logged).
bool readNameAttribute(const xmlNode* element, std::string& name) {
  bool result = true;
  for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
    const char* value = valueOf(attribute);
    if (value != nullptr && hasName(attribute, "name")) {
      name = value;
    } else {
      TAV_LOG(INFO_ABN, "properties->name=%s. Should be \"name\".", nameOf(attribute));
      result = false;
    }
  }
  return result;
}

const char* orEmpty(const char* text) { return text == nullptr ? "" : text; }

}  // namespace

XmlHandler::XmlHandler(IctiHandlerIf* ictiHandler) : ictiHandler_(ictiHandler) {}

void XmlHandler::reportFailure(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  std::string text = MessageFormatter::plainV(fmt, args);
  va_end(args);

  if (ictiHandler_ != nullptr) {
    ictiHandler_->failUpgrade(text.c_str());
  } else {
    TAV_LOG(ERROR, "%s", text.c_str());
  }
}

bool XmlHandler::addAction(UpgradeActionIf* action) {
  if (action == nullptr) {
    reportFailure("Could not add action to table, action is NULL");
    return false;
  }
  if (!actions_.emplace(action->getName(), action).second) {
    reportFailure("Could not add action to table, action with name: %s already exist", action->getName());
    return false;
  }
  return true;
}

bool XmlHandler::parseModificationFile(const char* fileName, bool validateOnly) {
  validateOnly_ = validateOnly;
  xmlDoc* doc = fileName == nullptr ? nullptr : xmlReadFile(fileName, nullptr, 0);
  if (doc == nullptr) {
    reportFailure("Could not parse file %s", orEmpty(fileName));
    return false;
  }
  bool result = walk(xmlDocGetRootElement(doc));
  xmlFreeDoc(doc);
  return result;
}

bool XmlHandler::walk(xmlNode* node) {
  bool result = true;
  for (; node != nullptr; node = node->next) {
    if (isElement(node, "Mo")) {
      result = processMo(node) && result;
    } else if (node->type == XML_ELEMENT_NODE) {
      result = walk(node->children) && result;
    }
  }
  return result;
}

bool XmlHandler::processMo(xmlNode* mo) {
  std::string className;
  bool result = readNameAttribute(mo, className);

  InstanceGroupIf* instanceGroup = nullptr;
  if (!validateOnly_ && !className.empty() && ictiHandler_ != nullptr) {
    instanceGroup = ictiHandler_->getInstanceGroup(className, "", false);
  }
  TAV_LOG(TRACE1, "MO: %s", className.c_str());
  return processMoActions(mo, instanceGroup) && result;
}

bool XmlHandler::processMoActions(xmlNode* mo, InstanceGroupIf* instanceGroup) {
  bool result = true;
  for (xmlNode* child = mo->children; child != nullptr; child = child->next) {
    if (!isElement(child, "MoAction")) continue;
    std::string actionName;
    if (!readNameAttribute(child, actionName)) result = false;
    // Once an action of this `Mo` has failed, the later ones are skipped.
    if (result) result = runMoAction(child, actionName, instanceGroup);
  }
  return result;
}

bool XmlHandler::runMoAction(xmlNode* moAction, const std::string& actionName, InstanceGroupIf* instanceGroup) {
  auto found = actions_.find(actionName);
  if (found == actions_.end()) {
    // The client's own actions are not registered when only validating.
    if (validateOnly_ && actionName.rfind(kSpecialActionPrefix, 0) == 0) return true;
    TAV_LOG(ERROR, "Unsupported action: %s", actionName.c_str());
    return false;
  }
  UpgradeActionIf* action = found->second;

  ActionArguments args;
  if (!fillArguments(moAction, args)) return false;

  if (validateOnly_) {
    TAV_TRACE(TRACE1, "ACTION %s", action->getName());
    args.logArguments();
    if (!action->validateArgs(args, ictiHandler_)) {
      TAV_LOG(INFO_ABN, "Failed to validate action %s.", action->getName());
      return false;
    }
    TAV_LOG(TRACE1, "Action %s validated.", action->getName());
    return true;
  }
  if (!action->execute(ictiHandler_, instanceGroup, args)) {
    TAV_LOG(INFO_ABN, "Action %s failed!", action->getName());
    return false;
  }
  return true;
}

bool XmlHandler::fillArguments(xmlNode* moAction, ActionArguments& args) {
  for (xmlNode* child = moAction->children; child != nullptr; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    bool filled;
    if (isElement(child, "Operation")) {
      filled = addOperation(child, args);
    } else if (isElement(child, "Arg")) {
      filled = addArg(child, args);
    } else {
      // Standard output, not the log: authors see it when validating.
      std::printf("NODE_NAME: %s not handled\n", reinterpret_cast<const char*>(child->name));
      std::fflush(stdout);
      filled = false;
    }
    if (!filled) return false;
  }
  return true;
}

bool XmlHandler::addOperation(xmlNode* operationNode, ActionArguments& args) {
  std::unique_ptr<OperationArgument> operation(new OperationArgument);
  bool complete = true;
  for (const xmlAttr* attribute = operationNode->properties; attribute != nullptr; attribute = attribute->next) {
    const char* value = valueOf(attribute);
    if (value == nullptr || !operation->setByName(reinterpret_cast<const char*>(attribute->name), value)) {
      complete = false;
    }
  }
  operation->logOperation();
  if (!complete) return false;
  args.addOperation(operation.release());
  return true;
}

bool XmlHandler::addArg(xmlNode* arg, ActionArguments& args) {
  const char* name = nullptr;
  const char* value = nullptr;
  bool recognized = true;
  for (const xmlAttr* attribute = arg->properties; attribute != nullptr; attribute = attribute->next) {
    const char* text = valueOf(attribute);
    if (text != nullptr && hasName(attribute, "name")) {
      name = text;
    } else if (text != nullptr && hasName(attribute, "value")) {
      value = text;
    } else {
      TAV_LOG(INFO_ABN, "Unrecognized property: %s=%s", nameOf(attribute), orEmpty(text));
      recognized = false;
    }
  }
  if (!recognized) return false;
  if (name == nullptr || value == nullptr) {
    TAV_LOG(INFO_ABN, "Arg without %s property", name == nullptr ? "name" : "value");
    return false;
  }
  return args.addArgument(name, value);
}

XmlHandler::ImmClasses XmlHandler::getImmClasses(const char* immFileName, const std::string& category) {
  ImmClasses classes;
  const char* file = orEmpty(immFileName);
  xmlDoc* doc = immFileName == nullptr ? nullptr : xmlParseFile(immFileName);
  if (doc == nullptr) {
    reportFailure("ABN: xmlParseFile failed for %s", file);
    return classes;
  }
  xmlXPathContext* context = xmlXPathNewContext(doc);
  if (context == nullptr) {
    reportFailure("ABN: xmlXPathNewContext failed for %s", file);
    xmlFreeDoc(doc);
    return classes;
  }
  char expression[100];
  std::snprintf(expression, sizeof expression, "//%s[%s = '%s']", "class", "category", category.c_str());
  xmlXPathObject* selected = xmlXPathEvalExpression(BAD_CAST expression, context);
  xmlXPathFreeContext(context);
  if (selected == nullptr) {
    reportFailure("ABN: xmlXPathEvalExpression failed for %s", file);
    xmlFreeDoc(doc);
    return classes;
  }

  xmlNodeSet* nodes = selected->nodesetval;
  if (xmlXPathNodeSetIsEmpty(nodes)) {
    TAV_LOG(INFO, "Empty result from XPath %s for XML file %s", expression, file);
  } else {
    for (int i = 0; i < nodes->nodeNr; ++i) {
      if (!collectImmClass(doc, nodes->nodeTab[i], category, file, classes)) break;
    }
  }
  xmlXPathFreeObject(selected);
  xmlFreeDoc(doc);
  return classes;
}

bool XmlHandler::collectImmClass(xmlDoc* doc, xmlNode* classNode, const std::string& category,
                                 const char* immFileName, ImmClasses& classes) {
  const char* className = nullptr;
  for (const xmlAttr* attribute = classNode->properties; attribute != nullptr; attribute = attribute->next) {
    const char* value = valueOf(attribute);
    if (value == nullptr) break;
    if (hasName(attribute, "name")) {
      className = value;
      break;
    }
  }
  if (className == nullptr) {
    reportFailure("ABN: Failed to find class name property in %s", immFileName);
    return false;
  }

  const bool config = category == "SA_CONFIG";
  const bool runtime = category == "SA_RUNTIME";
  bool rdnFound = false;
  bool persistentAttribute = false;
  bool persistentRdn = false;
  std::string rdnName;
  for (const xmlNode* child = classNode->children; child != nullptr; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    if (isElement(child, "rdn")) {
      if (runtime && hasPersistentFlag(doc, child)) persistentRdn = true;
      const xmlNode* name = firstChildElement(child, "name");
      if ((persistentRdn || config) && name != nullptr) {
        rdnName = textOf(doc, name);
        rdnFound = true;
      }
    } else if (runtime && hasPersistentFlag(doc, child)) {
      persistentAttribute = true;
    }
  }
  if (rdnFound && (config || persistentAttribute)) classes.emplace_back(className, rdnName);
  return true;
}
