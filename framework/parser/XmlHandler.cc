#include "parser/XmlHandler.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <optional>

#include "common/Log.h"
#include "common/RegularFile.h"
#include "icti/ModelFreeHandler.h"
#include "runtime/OperationArgument.h"
#include "parser/Spelling.h"

namespace {

const char kSpecialActionPrefix[] = "SpecialAction";

// Logs why a path is not read: the parser's own failure follows.
bool regularFile(const char* path) {
  if (isRegularFile(path)) return true;
  TAV_LOG(ERROR, "%s is not a regular file", path);
  return false;
}

bool isElement(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, BAD_CAST name) == 0;
}

bool hasName(const xmlAttr* attribute, const char* name) { return xmlStrcmp(attribute->name, BAD_CAST name) == 0; }

const char* nameOf(const xmlAttr* attribute) { return reinterpret_cast<const char*>(attribute->name); }

// The attribute's whole value, entities substituted; none when it has no
// value node.
std::optional<std::string> valueOf(const xmlAttr* attribute) {
  if (attribute->children == nullptr) return std::nullopt;
  xmlChar* text = xmlNodeListGetString(attribute->doc, attribute->children, 1);
  std::string value = text != nullptr ? reinterpret_cast<const char*>(text) : "";
  xmlFree(text);
  return value;
}

// The line an element starts on, also beyond the 65535 that libxml2 keeps
// in the node itself (with XML_PARSE_BIG_LINES it keeps the rest aside).
long lineOf(const xmlNode* node) {
  if (node->line == 65535 && node->type == XML_ELEMENT_NODE && node->psvi != nullptr) {
    return static_cast<long>(reinterpret_cast<ptrdiff_t>(node->psvi));
  }
  return xmlGetLineNo(node);
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

// A numbered argument name ("structAttr#") takes the name followed by digits.
bool takesArgument(const std::vector<std::string>& accepted, const std::string& name) {
  for (const std::string& pattern : accepted) {
    if (pattern.empty() || pattern.back() != '#') {
      if (name == pattern) return true;
      continue;
    }
    const size_t stem = pattern.size() - 1;
    if (name.size() > stem && name.compare(0, stem, pattern, 0, stem) == 0 &&
        name.find_first_not_of("0123456789", stem) == std::string::npos) {
      return true;
    }
  }
  return false;
}

// The accepted names as an author writes them: "structAttr#" as structAttr1.
std::vector<std::string> writtenNames(std::vector<std::string> accepted) {
  for (std::string& name : accepted) {
    if (!name.empty() && name.back() == '#') name.back() = '1';
  }
  return accepted;
}

const char* orEmpty(const char* text) { return text == nullptr ? "" : text; }

// The handler of a parser that was given none: no model, every class
// defined, and failure reports logged with their place.
class LoggedFailures : public ModelFreeHandler {
 public:
  void failUpgrade(const char* message) override {
    ++failures_;
    if (context_.empty()) {
      TAV_LOG(ERROR, "%s", message);
    } else {
      TAV_LOG(ERROR, "%s (%s)", message, context_.c_str());
    }
  }
  void setFailureContext(const std::string& context) override { context_ = context; }
  int failureCount() const override { return failures_; }

 private:
  std::string context_;
  int failures_ = 0;
};

}  // namespace

XmlHandler::XmlHandler(IctiHandlerIf* ictiHandler)
    : loggedFailures_(ictiHandler == nullptr ? std::make_unique<LoggedFailures>() : nullptr),
      ictiHandler_(ictiHandler != nullptr ? ictiHandler : loggedFailures_.get()) {}

XmlHandler::~XmlHandler() = default;

bool XmlHandler::readNameAttribute(const xmlNode* element, std::string& name) {
  bool result = true;
  for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
    std::optional<std::string> value = valueOf(attribute);
    if (value && hasName(attribute, "name")) {
      name = *value;
    } else {
      reportFailure("properties->name=%s. Should be \"name\".", nameOf(attribute));
      result = false;
    }
  }
  return result;
}

void XmlHandler::reportFailure(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  std::string text = MessageFormatter::plainV(fmt, args);
  va_end(args);

  ictiHandler_->failUpgrade(text.c_str());
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
  // Never from the network; lines beyond 65535 still counted right.
  xmlDoc* doc = fileName == nullptr || !regularFile(fileName)
                    ? nullptr
                    : xmlReadFile(fileName, nullptr, XML_PARSE_NONET | XML_PARSE_BIG_LINES);
  // A document type could only bring entities from elsewhere into the
  // arguments: modification files have none.
  if (doc != nullptr && (doc->intSubset != nullptr || doc->extSubset != nullptr)) {
    TAV_LOG(ERROR, "Modification file %s declares a document type; modification files take no DTD", fileName);
    xmlFreeDoc(doc);
    doc = nullptr;
  }
  if (doc == nullptr) {
    reportFailure("Could not parse file %s", orEmpty(fileName));
    return false;
  }
  fileName_ = fileName;
  bool result = walk(xmlDocGetRootElement(doc));
  setFailureContext("");
  xmlFreeDoc(doc);
  return result;
}

void XmlHandler::setFailureContext(const std::string& context) { ictiHandler_->setFailureContext(context); }

std::string XmlHandler::location(const xmlNode* node, const std::string& className, const std::string& action) const {
  std::string text = "at " + fileName_ + ":" + std::to_string(lineOf(node)) + ", Mo " + className;
  return action.empty() ? text : text + ", " + action;
}

bool XmlHandler::classUndefined(const std::string& className) {
  if (validateOnly_ || className.empty()) return false;
  return !ictiHandler_->classDefined(className);
}

InstanceGroupIf* XmlHandler::instanceGroupOf(const std::string& className) {
  if (validateOnly_ || className.empty()) return nullptr;
  return ictiHandler_->getInstanceGroup(className, "", false);
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
  setFailureContext(location(mo, className, ""));
  InstanceGroupIf* instanceGroup = instanceGroupOf(className);
  TAV_LOG(TRACE1, "MO: %s", className.c_str());
  // A class no model defines is a misspelt name, not a class without
  // instances: its actions are not run.
  if (instanceGroup == nullptr && classUndefined(className)) {
    reportFailure("Mo %s names a class that neither the old nor the new model defines", className.c_str());
    setFailureContext("");
    return false;
  }
  result = processMoActions(mo, className, instanceGroup) && result;
  setFailureContext("");
  return result;
}

bool XmlHandler::processMoActions(xmlNode* mo, const std::string& className, InstanceGroupIf* instanceGroup) {
  bool result = true;
  bool first = true;
  for (xmlNode* child = mo->children; child != nullptr; child = child->next) {
    if (!isElement(child, "MoAction")) continue;
    std::string actionName;
    if (!readNameAttribute(child, actionName)) result = false;
    // Once an action of this `Mo` has failed, the later ones are skipped.
    if (!result) continue;
    setFailureContext(location(child, className, actionName));
    // An earlier action may have deleted or renamed the class: each action
    // sees the class as it is now.
    if (!first) instanceGroup = instanceGroupOf(className);
    first = false;
    result = runMoAction(child, actionName, instanceGroup);
  }
  return result;
}

bool XmlHandler::runMoAction(xmlNode* moAction, const std::string& actionName, InstanceGroupIf* instanceGroup) {
  auto found = actions_.find(actionName);
  if (found == actions_.end()) {
    // The client's own actions are not registered when only validating.
    if (validateOnly_ && actionName.rfind(kSpecialActionPrefix, 0) == 0) return true;
    std::vector<std::string> known;
    for (const auto& entry : actions_) known.push_back(entry.first);
    reportFailure("Unsupported action: %s%s", actionName.c_str(), Spelling::suggestion(actionName, known).c_str());
    return false;
  }
  UpgradeActionIf* action = found->second;

  ActionArguments args;
  if (!fillArguments(moAction, *action, args)) return false;

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
  const int failuresBefore = ictiHandler_->failureCount();
  if (!action->execute(ictiHandler_, instanceGroup, args)) {
    // An action that fails without saying why still gets a located reason.
    if (ictiHandler_->failureCount() == failuresBefore) {
      reportFailure("Action %s failed!", action->getName());
    } else {
      TAV_LOG(INFO_ABN, "Action %s failed!", action->getName());
    }
    return false;
  }
  return true;
}

bool XmlHandler::fillArguments(xmlNode* moAction, const UpgradeActionIf& action, ActionArguments& args) {
  const std::vector<std::string> accepted = action.argumentNames();
  for (xmlNode* child = moAction->children; child != nullptr; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    bool filled;
    if (isElement(child, "Operation")) {
      filled = addOperation(child, args);
    } else if (isElement(child, "Arg")) {
      filled = addArg(child, action, accepted, args);
    } else {
      // Standard output, not the log: authors see it when validating.
      std::printf("NODE_NAME: %s not handled\n", reinterpret_cast<const char*>(child->name));
      std::fflush(stdout);
      reportFailure("NODE_NAME: %s not handled", reinterpret_cast<const char*>(child->name));
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
    std::optional<std::string> value = valueOf(attribute);
    const std::string name = nameOf(attribute);
    if (!value || !operation->setByName(name.c_str(), value->c_str())) {
      reportFailure("Operation takes no attribute %s%s", name.c_str(),
                    Spelling::suggestion(name, OperationArgument::attributeNames()).c_str());
      complete = false;
    }
  }
  operation->logOperation();
  if (!complete) return false;
  args.addOperation(operation.release());
  return true;
}

bool XmlHandler::addArg(xmlNode* arg, const UpgradeActionIf& action, const std::vector<std::string>& accepted,
                        ActionArguments& args) {
  std::optional<std::string> name;
  std::optional<std::string> value;
  bool recognized = true;
  for (const xmlAttr* attribute = arg->properties; attribute != nullptr; attribute = attribute->next) {
    std::optional<std::string> text = valueOf(attribute);
    if (text && hasName(attribute, "name")) {
      name = text;
    } else if (text && hasName(attribute, "value")) {
      value = text;
    } else {
      reportFailure("Unrecognized property: %s=%s", nameOf(attribute), text ? text->c_str() : "");
      recognized = false;
    }
  }
  if (!recognized) return false;
  if (!name || !value) {
    reportFailure("Arg without %s property", !name ? "name" : "value");
    return false;
  }
  if (!accepted.empty() && !takesArgument(accepted, *name)) {
    reportFailure("%s takes no Arg %s; the closest it takes is %s", action.getName(), name->c_str(),
                  Spelling::closest(*name, writtenNames(accepted)).c_str());
    return false;
  }
  if (!args.addArgument(*name, *value)) {
    reportFailure("Arg %s is given twice", name->c_str());
    return false;
  }
  return true;
}

XmlHandler::ImmClasses XmlHandler::getImmClasses(const char* immFileName, const std::string& category) {
  ImmClasses classes;
  const char* file = orEmpty(immFileName);
  xmlDoc* doc = immFileName == nullptr || !regularFile(immFileName) ? nullptr : xmlParseFile(immFileName);
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

bool XmlHandler::collectImmClass(xmlDoc* doc, xmlNode* classNode, const std::string& category, const char* immFileName,
                                 ImmClasses& classes) {
  std::optional<std::string> className;
  for (const xmlAttr* attribute = classNode->properties; attribute != nullptr; attribute = attribute->next) {
    std::optional<std::string> value = valueOf(attribute);
    if (!value) break;
    if (hasName(attribute, "name")) {
      className = value;
      break;
    }
  }
  if (!className) {
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
  if (rdnFound && (config || persistentAttribute)) classes.emplace_back(*className, rdnName);
  return true;
}
