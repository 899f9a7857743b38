#include "ImmModel.h"

#include "SimImmDumpReader.h"

namespace modtool {

bool ImmModel::read(const std::vector<std::string>& files, Progress* progress, std::string* why) {
  for (const std::string& file : files) {
    SimImmDumpReader reader;
    SimImmDumpReader::Handler handler;
    handler.onClass = [this](SimImmClass&& cls) {
      const std::string name = cls.name;
      classes_[name] = std::move(cls);
      return true;
    };
    handler.onObject = [this, progress](SimImmObject&& object) {
      const std::string dn = object.dn;
      objects_[dn] = std::move(object);
      progress->update("reading models", static_cast<long>(objects_.size()));
      return true;
    };
    if (!reader.read(file, handler)) {
      *why = reader.error();
      return false;
    }
  }
  return true;
}

}  // namespace modtool
