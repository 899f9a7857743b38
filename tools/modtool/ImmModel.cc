#include "ImmModel.h"

#include "SimImmArena.h"
#include "SimImmDumpReader.h"
#include "SimImmValueCodec.h"

namespace modtool {

void ImmModel::canonicalize(SimImmObject* object) const {
  auto cls = classes_.find(object->className);
  if (cls == classes_.end()) return;
  SimImmArena arena;
  for (SimImmAttrValues& attr : object->attrs) {
    const SimImmAttrDef* def = cls->second.find(attr.name);
    if (def == nullptr) continue;
    std::vector<char> buffer(SimImmValueCodec::valueSize(def->type));
    for (SimImmValue& value : attr.values) {
      std::string text;
      std::string why;
      if (SimImmValueCodec::parse(def->type, value, buffer.data(), arena, &why) &&
          SimImmValueCodec::format(def->type, buffer.data(), &text, &why)) {
        value = {text, false};
      }
    }
  }
}

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
      canonicalize(&object);
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
