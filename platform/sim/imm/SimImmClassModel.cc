#include "SimImmClassModel.h"

#include "SimImmDumpReader.h"

bool SimImmClassModel::load(const std::vector<std::string>& files, std::string* why) {
  std::string duplicate;
  SimImmDumpReader::Handler handler;
  handler.onClass = [&](SimImmClass&& cls) {
    if (classes_.count(cls.name) != 0) {
      duplicate = "class " + cls.name + " is defined twice";
      return false;
    }
    std::string name = cls.name;
    classes_.emplace(std::move(name), std::move(cls));
    return true;
  };
  for (const std::string& file : files) {
    SimImmDumpReader reader;
    if (!reader.read(file, handler)) {
      *why = reader.error();
      return false;
    }
    if (!duplicate.empty()) {
      *why = file + ": " + duplicate;
      return false;
    }
  }
  return true;
}

const SimImmClass* SimImmClassModel::find(const std::string& className) const {
  auto found = classes_.find(className);
  return found != classes_.end() ? &found->second : nullptr;
}
