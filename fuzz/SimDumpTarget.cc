// Fuzz target: a node dump (IMM XML) of the simulated node's old model, read
// as a session reads it: the class definitions, the index of the objects,
// each class's objects as records, and a stream of all objects as a copy
// takes them.

#include <set>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "SimImmDumpReader.h"
#include "SimImmOldModel.h"
#include "SimImmReadRecords.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  std::vector<SimImmClass> classes;
  SimImmDumpReader::Handler definitions;
  definitions.onClass = [&classes](SimImmClass&& cls) {
    classes.push_back(std::move(cls));
    return true;
  };
  SimImmDumpReader reader;
  if (!reader.read(file.path(), definitions)) return 0;

  SimImmOldModel model({file.path()});
  std::set<std::string> names;
  std::string why;
  for (const SimImmClass& cls : classes) {
    names.insert(cls.name);
    SimImmReadRecords records(cls);
    model.objectsOf(
        cls.name, [&records](const SimImmObject& object, std::string* reason) { return records.add(object, reason); },
        &why);
    records.finish();
  }
  model.streamObjects(
      names, [](const SimImmObject& object, std::string*) { return !object.dn.empty(); }, &why);
  return 0;
}
