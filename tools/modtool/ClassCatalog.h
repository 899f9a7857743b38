// The class definitions `check` judges names and types by: those of the new
// model (the package's IMM class files) and those of the old model (a node
// dump), each read with the simulated node's IMM XML reader.

#ifndef VOSK_TOOLS_MODTOOL_CLASS_CATALOG_H
#define VOSK_TOOLS_MODTOOL_CLASS_CATALOG_H

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "SimImmClass.h"

namespace modtool {

class ClassCatalog {
 public:
  enum class Model { kOld, kNew };

  // Adds the definitions of one IMM XML file to one side; its objects are not
  // read. False, with `why` set, when the file cannot be read.
  bool addFile(Model model, const std::string& path, std::string* why);

  // Whether definitions of that side were given at all.
  bool has(Model model) const { return given_[index(model)]; }
  // A class or attribute that an earlier file of the same check introduces
  // (created, added, renamed to): later files of a chain may name it
  // although neither model has it. An empty `attribute` introduces the class.
  void introduce(const std::string& className, const std::string& attribute);
  bool introduced(const std::string& className, const std::string& attribute) const;

  // A class of one side, or null.
  const SimImmClass* find(Model model, const std::string& className) const;
  // True when no side that was given defines the class.
  bool unknownClass(const std::string& className) const;
  // True when the class is known and no side that was given defines the
  // attribute (the naming attribute counts) for it.
  bool unknownAttribute(const std::string& className, const std::string& attribute) const;
  // The attribute's definition, the new model's first; null when none.
  const SimImmAttrDef* attribute(const std::string& className, const std::string& attribute) const;

  // The names a misspelling may have meant: every class, or every attribute
  // of the class, on the sides given.
  std::vector<std::string> classNames() const;
  std::vector<std::string> attributeNames(const std::string& className) const;
  // Both sides given: a name neither defines is sure to fail the upgrade.
  bool complete() const { return has(Model::kOld) && has(Model::kNew); }
  // "neither the old nor the new model defines", "the new model's class
  // files do not define" or "the old model does not define": the verdict on
  // a name that unknownClass or unknownAttribute gave.
  std::string definesNot() const;

 private:
  static int index(Model model) { return model == Model::kOld ? 0 : 1; }

  std::map<std::string, SimImmClass> classes_[2];
  std::set<std::pair<std::string, std::string>> introduced_;
  bool given_[2] = {false, false};
};

}  // namespace modtool

#endif
