// Fuzz target: the simulated node's versions file, looked up for the schema
// its first line names and for one it may not list.

#include <sstream>
#include <string>

#include "FuzzInput.h"
#include "SimImmVersions.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  std::string firstWord;
  std::istringstream(std::string(reinterpret_cast<const char*>(data), size)) >> firstWord;
  for (const std::string& schema : {firstWord, std::string("RadioNode")}) {
    SafcImmCtSchemaVersionT_2 from{}, to{};
    std::string why;
    SimImmVersions::find(file.path(), schema, &from, &to, &why);
  }
  return 0;
}
