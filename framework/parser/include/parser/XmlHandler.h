// Reads modification files and applies them through the registered upgrade
// actions; also lists the classes that an IMM class-definition file
// declares.
//
// A modification file is walked from its root: every element other than
// `Mo` is a container, whatever its name. Each `Mo` names an MO class; each
// of its `MoAction` children names a registered action, which is called with
// the arguments of its `Arg` and `Operation` children. A failure makes the
// file's result false but never stops the walk, except that after the first
// failing `MoAction` of one `Mo` the later ones of that `Mo` are skipped.
//
// Failures that must stop the schema's upgrade are reported through the
// ICTI handler's failUpgrade; while a `Mo` or `MoAction` runs, the handler's
// failure context names its place (file, line, class, action), so every
// reason says where it comes from. Each `MoAction` is given the class's
// instance group as it is when the action starts. One handler per schema
// upgrade, on its thread.

#ifndef VOSK_PARSER_XML_HANDLER_H
#define VOSK_PARSER_XML_HANDLER_H

#include <libxml/tree.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "icti/IctiHandlerIf.h"
#include "runtime/ActionArguments.h"
#include "runtime/UpgradeActionIf.h"

class XmlHandler {
 public:
  using ImmClasses = std::vector<std::pair<std::string, std::string>>;

  // `ictiHandler` is not owned. It may be null for validate-only use: the
  // parser and the actions then see no model, and failure reports (with
  // their place) are logged at error level instead.
  explicit XmlHandler(IctiHandlerIf* ictiHandler);
  virtual ~XmlHandler();

  XmlHandler(const XmlHandler&) = delete;
  XmlHandler& operator=(const XmlHandler&) = delete;

  // Registers `action` under getName(); the action is not owned. Refuses a
  // null action and a name already registered (the first one stays).
  virtual bool addAction(UpgradeActionIf* action);

  // True when every `Mo` and `MoAction` of the file succeeded. With
  // `validateOnly`, no instance group is fetched and the actions only
  // validate their arguments; unregistered "SpecialAction..." names (the
  // client's own actions) are skipped.
  virtual bool parseModificationFile(const char* fileName, bool validateOnly);

  // (class name, RDN attribute name) of every class of `category` in the
  // file, in document order: "SA_CONFIG" gives the configuration classes
  // with a named RDN, "SA_RUNTIME" the runtime classes whose RDN and at
  // least one other attribute carry the flag SA_PERSISTENT.
  virtual ImmClasses getImmClasses(const char* immFileName, const std::string& category);

 private:
  bool walk(xmlNode* node);
  bool processMo(xmlNode* mo);
  bool processMoActions(xmlNode* mo, const std::string& className, InstanceGroupIf* instanceGroup);
  InstanceGroupIf* instanceGroupOf(const std::string& className);
  // True for a class no model defines; never when only validating.
  bool classUndefined(const std::string& className);
  // "at <file>:<line>, Mo <class>[, <action>]".
  std::string location(const xmlNode* node, const std::string& className, const std::string& action) const;
  void setFailureContext(const std::string& context);
  bool runMoAction(xmlNode* moAction, const std::string& actionName, InstanceGroupIf* instanceGroup);
  // Reads the attributes of a `Mo` or `MoAction` element: `name` is the
  // only one allowed. False when there was another one (each is reported).
  bool readNameAttribute(const xmlNode* element, std::string& name);
  bool fillArguments(xmlNode* moAction, const UpgradeActionIf& action, ActionArguments& args);
  bool addOperation(xmlNode* operation, ActionArguments& args);
  // `accepted`: the action's argument names, or empty for any.
  bool addArg(xmlNode* arg, const UpgradeActionIf& action, const std::vector<std::string>& accepted,
              ActionArguments& args);
  bool collectImmClass(xmlDoc* doc, xmlNode* classNode, const std::string& category, const char* immFileName,
                       ImmClasses& classes);
  void reportFailure(const char* fmt, ...) __attribute__((format(printf, 2, 3)));

  // Stands in for a null handler; ictiHandler_ then points to it.
  std::unique_ptr<IctiHandlerIf> loggedFailures_;
  IctiHandlerIf* ictiHandler_;
  std::map<std::string, UpgradeActionIf*> actions_;
  bool validateOnly_ = false;
  std::string fileName_;
};

#endif
