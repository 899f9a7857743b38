#include "actions/RenameMoTypeAction.h"

#include <cctype>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "common/MessageFormatter.h"
#include "icti/DistinguishedName.h"
#include "runtime/Filter.h"

namespace {

// What one run needs beside the instance: the dependants of the renamed
// instances, indexed once by the old name of the renamed instance they hang
// on, so that each instance step touches only its own dependants.
struct RenamePlan {
  struct StructAttribute {
    std::string attribute;
    std::string structType;
    InstanceGroupIf* group;
  };
  struct Descendants {
    std::string className;
    InstanceGroupIf* group;
    std::unordered_map<std::string, std::vector<InstanceIf*>> below;
  };
  struct Reference {
    AttributeInternalIf* attribute;
    uint32_t index;
  };
  struct Referrers {
    std::string attribute;
    std::string className;
    InstanceGroupIf* group;
    // Distinguished names of the referring instances without the attribute.
    std::vector<std::string> lacking;
    std::unordered_map<std::string, std::vector<Reference>> to;
  };

  // `name` with the renamed class's RDNs renamed.
  std::string rename(const std::string& name) const {
    return RenameMoTypeAction::renameRdns(name, oldRdnAttribute, newRdnAttribute);
  }

  std::string oldRdnAttribute;
  std::string newRdnAttribute;
  std::vector<StructAttribute> structAttributes;
  std::vector<Descendants> descendants;
  std::vector<Referrers> referrers;
};


std::string withLowerInitial(std::string name) {
  if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  return name;
}

// The values of key1, key2, ... up to the first missing number.
std::vector<std::string> numbered(ActionArgumentsIf& args, const std::string& key) {
  std::vector<std::string> values;
  std::string value;
  while (args.getArgument(key + std::to_string(values.size() + 1), value)) values.push_back(value);
  return values;
}

// While `result` holds: every keyN present needs its partnerN.
bool comeInPairs(ActionArgumentsIf& args, const std::string& key, const std::string& partner, bool result) {
  std::string value;
  for (int n = 1; result && args.getArgument(key + std::to_string(n), value); ++n) {
    result = args.getArgument(partner + std::to_string(n), value);
  }
  return result;
}

// The RDN of a renamed instance: a name derived from the class ("fooId=1")
// follows the class ("barId=1"); any other (a struct's "id=3", a whole RDN
// that the naming attribute holds) is the instance's own and stays.
std::string renamedRdn(const std::string& rdn, const std::string& newRdnAttribute) {
  const size_t equals = rdn.find('=');
  if (equals == std::string::npos || equals < 2 || rdn.compare(equals - 2, 2, "Id") != 0) return rdn;
  return newRdnAttribute + rdn.substr(equals);
}

// The part of `name` from its first RDN "<rdnAttribute>=..." on: the name of
// the renamed instance that `name` is or lies below. Empty when there is none.
std::string renamedAncestor(const std::string& name, const std::string& rdnAttribute) {
  for (size_t start = 0; start < name.size();) {
    if (name.compare(start, rdnAttribute.size(), rdnAttribute) == 0 && name[start + rdnAttribute.size()] == '=') {
      return name.substr(start);
    }
    size_t separator = DistinguishedName::nextSeparator(name, start);
    if (separator == std::string::npos) break;
    start = separator + 1;
  }
  return std::string();
}

RenamePlan::Descendants planDescendants(IctiHandlerIf* handler, const std::string& className,
                                        const std::string& oldRdnAttribute) {
  RenamePlan::Descendants descendants{className, handler->getInstanceGroup(className), {}};
  if (descendants.group == nullptr) return descendants;
  for (InstanceIf* instance : descendants.group->getInstances()) {
    std::string ancestor = renamedAncestor(instance->getParentName(), oldRdnAttribute);
    if (!ancestor.empty()) descendants.below[ancestor].push_back(instance);
  }
  return descendants;
}

RenamePlan::Referrers planReferrers(IctiHandlerIf* handler, const std::string& attribute, const std::string& className,
                                    const std::string& oldRdnAttribute) {
  RenamePlan::Referrers referrers{attribute, className, handler->getInstanceGroup(className), {}, {}};
  if (referrers.group == nullptr) return referrers;
  for (InstanceIf* instance : referrers.group->getInstances()) {
    AttributeInternalIf* reference = instance->getAttribute(attribute);
    if (reference == nullptr) {
      referrers.lacking.push_back(instance->getLdn());
      continue;
    }
    for (uint32_t index = 0; index < reference->getNumberOfValues(); ++index) {
      const std::optional<std::string> value = reference->readValueAtIndex(index);
      std::string ancestor = value ? renamedAncestor(*value, oldRdnAttribute) : std::string();
      if (!ancestor.empty()) referrers.to[ancestor].push_back({reference, index});
    }
  }
  return referrers;
}

// Numbered pairs were checked by validateArgs: every structAttrN has its
// structTypeN and every morefAttrN its referringMoTypeN.
RenamePlan makePlan(IctiHandlerIf* handler, ActionArgumentsIf& args, const std::string& oldClass,
                    const std::string& newClass) {
  RenamePlan plan;
  plan.oldRdnAttribute = withLowerInitial(oldClass) + "Id";
  plan.newRdnAttribute = withLowerInitial(newClass) + "Id";
  std::vector<std::string> structTypes = numbered(args, "structType");
  for (const std::string& attribute : numbered(args, "structAttr")) {
    const std::string& type = structTypes.at(plan.structAttributes.size());
    plan.structAttributes.push_back({attribute, type, handler->getInstanceGroup(type)});
  }
  for (const std::string& className : numbered(args, "descendant")) {
    plan.descendants.push_back(planDescendants(handler, className, plan.oldRdnAttribute));
  }
  std::vector<std::string> referringTypes = numbered(args, "referringMoType");
  for (const std::string& attribute : numbered(args, "morefAttr")) {
    const std::string& className = referringTypes.at(plan.referrers.size());
    plan.referrers.push_back(planReferrers(handler, attribute, className, plan.oldRdnAttribute));
  }
  return plan;
}

void report(IctiHandlerIf* handler, const std::string& reason) { handler->failUpgrade(reason.c_str()); }

// Every class the rename depends on must exist in one of the models (the new
// class need not: a later file may rename it again). Each one that does not
// is reported.
bool classesDefined(IctiHandlerIf* handler, ActionArgumentsIf& args) {
  bool defined = true;
  for (const char* key : {"structType", "descendant", "referringMoType"}) {
    const std::vector<std::string> classes = numbered(args, key);
    for (size_t n = 0; n < classes.size(); ++n) {
      const std::string argument = key + std::to_string(n + 1);
      defined = UpgradeAction::requireDefinedClass(handler, "RenameMoTypeAction", argument.c_str(), classes[n]) &&
                defined;
    }
  }
  return defined;
}

// The struct instances that the instance's struct attributes name, and the
// names in the attributes.
bool renameStructs(InstanceIf& instance, const RenamePlan& plan, IctiHandlerIf* handler) {
  bool complete = true;
  for (const RenamePlan::StructAttribute& structAttribute : plan.structAttributes) {
    if (structAttribute.group == nullptr) {
      report(handler, MessageFormatter::plain("No struct MO type %s", structAttribute.structType.c_str()));
      complete = false;
      continue;
    }
    AttributeInternalIf* attribute = instance.getAttribute(structAttribute.attribute);
    const uint32_t count = attribute != nullptr ? attribute->getNumberOfValues() : 0;
    for (uint32_t index = 0; index < count; ++index) {
      const std::string structName = attribute->readValueAtIndex(index).value_or("");
      InstanceIf* structInstance = structAttribute.group->getInstance(structName);
      if (structInstance == nullptr) {
        report(handler, MessageFormatter::plain("Not able to retrieve struct instance %s", structName.c_str()));
        complete = false;
        continue;
      }
      structInstance->setParentName(plan.rename(structInstance->getParentName()));
      attribute->setValueAtIndex(index, plan.rename(structName).c_str());
    }
  }
  return complete;
}

bool renameDescendants(const std::string& oldLdn, const RenamePlan& plan, IctiHandlerIf* handler) {
  bool complete = true;
  for (const RenamePlan::Descendants& descendants : plan.descendants) {
    if (descendants.group == nullptr) {
      report(handler, MessageFormatter::plain("No instance group %s", descendants.className.c_str()));
      complete = false;
      continue;
    }
    auto below = descendants.below.find(oldLdn);
    if (below == descendants.below.end()) continue;
    for (InstanceIf* descendant : below->second) descendant->setParentName(plan.rename(descendant->getParentName()));
  }
  return complete;
}

bool renameReferences(const std::string& oldLdn, const RenamePlan& plan, IctiHandlerIf* handler) {
  bool complete = true;
  for (const RenamePlan::Referrers& referrers : plan.referrers) {
    if (referrers.group == nullptr) {
      report(handler, MessageFormatter::plain("Not able to get referring MO type %s", referrers.className.c_str()));
      complete = false;
      continue;
    }
    for (const std::string& lacking : referrers.lacking) {
      report(handler, MessageFormatter::plain("No reference attribute %s on instance %s", referrers.attribute.c_str(),
                                              lacking.c_str()));
      complete = false;
    }
    auto to = referrers.to.find(oldLdn);
    if (to == referrers.to.end()) continue;
    for (const RenamePlan::Reference& reference : to->second) {
      const std::string value = reference.attribute->readValueAtIndex(reference.index).value_or("");
      reference.attribute->setValueAtIndex(reference.index, plan.rename(value).c_str());
    }
  }
  return complete;
}

// Renames one instance and, once everything it needs was found, moves it
// into the new group.
bool renameInstance(InstanceIf& instance, ActionContext& context, const RenamePlan& plan) {
  IctiHandlerIf* handler = &context.handler;
  const std::string oldLdn = instance.getLdn();

  if (!instance.setRdn(renamedRdn(instance.getRdn(), plan.newRdnAttribute))) {
    report(handler, MessageFormatter::plain("RenameMoTypeAction: %s cannot be named %s", oldLdn.c_str(),
                                            plan.newRdnAttribute.c_str()));
    return true;
  }
  const std::string parentName = instance.getParentName();
  const std::string renamedParent = plan.rename(parentName);
  if (renamedParent != parentName) instance.setParentName(renamedParent);

  // Each step reports what it misses and goes on, so that one run names
  // every missing piece.
  bool complete = renameStructs(instance, plan, handler);
  // Descendants are renamed within the struct attributes' loop: a rename
  // without `structAttr1` leaves the names below the renamed instances alone.
  if (!plan.structAttributes.empty()) complete = renameDescendants(oldLdn, plan, handler) && complete;
  complete = renameReferences(oldLdn, plan, handler) && complete;
  if (complete) {
    context.group->detachInstance(&instance);
    context.targetGroup->addInstance(&instance);
  }
  return true;
}

}  // namespace

// The instances are renamed by executeAction's own walk, which also hands
// them the rename's plan.
RenameMoTypeAction::RenameMoTypeAction() : UpgradeAction("RenameMoTypeAction", nullptr,
                    {"newName", "name", "structAttr#", "structType#", "descendant#", "morefAttr#", "referringMoType#"}) {}

std::string RenameMoTypeAction::renameRdns(const std::string& name, const std::string& oldRdnAttribute,
                                           const std::string& newRdnAttribute) {
  std::string renamed;
  renamed.reserve(name.size() + newRdnAttribute.size());
  size_t start = 0;
  for (;;) {
    size_t comma = DistinguishedName::nextSeparator(name, start);
    size_t end = comma == std::string::npos ? name.size() : comma;
    bool matches = name.compare(start, oldRdnAttribute.size(), oldRdnAttribute) == 0 &&
                   start + oldRdnAttribute.size() < end && name[start + oldRdnAttribute.size()] == '=';
    if (matches) {
      renamed.append(newRdnAttribute)
          .append(name, start + oldRdnAttribute.size(), end - start - oldRdnAttribute.size());
    } else {
      renamed.append(name, start, end - start);
    }
    if (comma == std::string::npos) return renamed;
    renamed.push_back(',');
    start = comma + 1;
  }
}

bool RenameMoTypeAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string newName;
  bool result = args.getArgument("newName", newName);
  if (!result) {
    ictiHandler->failUpgrade("RenameMoTypeAction requires argument newName.");
  } else if (!isPlainName(newName)) {
    fail(ictiHandler, "RenameMoTypeAction: newName %s is no class name", newName.c_str());
    return false;
  }
  // Each pair check runs only while everything before it holds, but reports
  // whenever the result is false at its end.
  result = comeInPairs(args, "structAttr", "structType", result);
  if (!result)
    ictiHandler->failUpgrade("RenameMoTypeAction requires structAttrN and structTypeN arguments to come in pair.");
  result = comeInPairs(args, "morefAttr", "referringMoType", result);
  if (!result) {
    ictiHandler->failUpgrade("RenameMoTypeAction requires morefAttrN and referringMoTypeN arguments to come in pair.");
  }
  return result;
}

void RenameMoTypeAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  fail(ictiHandler,
       "Action Failed: renameMoType: No instance group to operate on. Renaming a non-existing MO class is not "
       "permitted. Action arguments: name = %s, value = %s ",
       argumentValue(args, "name").c_str(), argumentValue(args, "newName").c_str());
}

bool RenameMoTypeAction::executeAction(IctiHandlerIf* ictiHandler, InstanceGroupIf* instanceGroup,
                                       ActionArgumentsIf& args) {
  if (instanceGroup->isStructGroup()) {
    ictiHandler->failUpgrade("RenameMoTypeAction can not be performed on struct MO types");
    return false;
  }
  const std::string newName = argumentValue(args, "newName");
  if (!classesDefined(ictiHandler, args)) return false;
  InstanceGroupIf* newGroup = ictiHandler->addInstanceGroup(newName);
  if (newGroup == nullptr) {
    fail(ictiHandler, "RenameMoTypeAction: class %s exists already with instances; %s cannot be renamed into it",
         newName.c_str(), instanceGroup->getClassName().c_str());
    return false;
  }

  const std::string oldClass = instanceGroup->getClassName();
  const RenamePlan plan = makePlan(ictiHandler, args, oldClass, newName);
  Filter filter(&args);
  ActionContext context{*ictiHandler, args, filter, instanceGroup, newGroup};
  if (!instanceGroup->forEachInstance([&](InstanceIf& instance) { return renameInstance(instance, context, plan); })) {
    return false;
  }
  // What is left did not reach the new group.
  for (InstanceIf* instance : instanceGroup->getInstances()) instanceGroup->eraseInstance(instance->getLdn());
  return ictiHandler->removeInstanceGroup(oldClass);
}
