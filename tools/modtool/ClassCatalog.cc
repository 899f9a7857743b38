#include "ClassCatalog.h"

#include "SimImmDumpReader.h"

namespace modtool {

bool ClassCatalog::addFile(Model model, const std::string& path, std::string* why) {
  SimImmDumpReader reader;
  SimImmDumpReader::Handler handler;
  auto& classes = classes_[index(model)];
  handler.onClass = [&classes](SimImmClass&& cls) {
    const std::string name = cls.name;
    classes[name] = std::move(cls);
    return true;
  };
  given_[index(model)] = true;
  if (!reader.read(path, handler)) {
    *why = reader.error();
    return false;
  }
  return true;
}

const SimImmClass* ClassCatalog::find(Model model, const std::string& className) const {
  const auto& classes = classes_[index(model)];
  auto found = classes.find(className);
  return found == classes.end() ? nullptr : &found->second;
}

void ClassCatalog::introduce(const std::string& className, const std::string& attribute) {
  introduced_.emplace(className, attribute);
}

bool ClassCatalog::introduced(const std::string& className, const std::string& attribute) const {
  return introduced_.count({className, attribute}) != 0;
}

bool ClassCatalog::unknownClass(const std::string& className) const {
  if ((!has(Model::kOld) && !has(Model::kNew)) || introduced(className, "")) return false;
  return find(Model::kOld, className) == nullptr && find(Model::kNew, className) == nullptr;
}

bool ClassCatalog::unknownAttribute(const std::string& className, const std::string& name) const {
  return !unknownClass(className) && (has(Model::kOld) || has(Model::kNew)) && attribute(className, name) == nullptr &&
         !introduced(className, name);
}

const SimImmAttrDef* ClassCatalog::attribute(const std::string& className, const std::string& name) const {
  for (Model model : {Model::kNew, Model::kOld}) {
    const SimImmClass* cls = find(model, className);
    const SimImmAttrDef* def = cls == nullptr ? nullptr : cls->find(name);
    if (def != nullptr) return def;
  }
  return nullptr;
}

std::vector<std::string> ClassCatalog::classNames() const {
  std::set<std::string> names;
  for (const auto& classes : classes_) {
    for (const auto& entry : classes) names.insert(entry.first);
  }
  return {names.begin(), names.end()};
}

std::vector<std::string> ClassCatalog::attributeNames(const std::string& className) const {
  std::set<std::string> names;
  for (Model model : {Model::kOld, Model::kNew}) {
    const SimImmClass* cls = find(model, className);
    if (cls == nullptr) continue;
    names.insert(cls->rdn.name);
    for (const SimImmAttrDef& def : cls->attrs) names.insert(def.name);
  }
  return {names.begin(), names.end()};
}

std::string ClassCatalog::definesNot() const {
  if (complete()) return "neither the old nor the new model defines";
  return has(Model::kNew) ? "the new model's class files do not define" : "the old model does not define";
}

}  // namespace modtool
