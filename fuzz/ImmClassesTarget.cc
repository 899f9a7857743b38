// Fuzz target: an IMM class file, as the schema's driver lists its
// configuration and persistent runtime classes.

#include "FuzzInput.h"
#include "parser/XmlHandler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  XmlHandler parser(nullptr);
  parser.getImmClasses(file.path().c_str(), "SA_CONFIG");
  parser.getImmClasses(file.path().c_str(), "SA_RUNTIME");
  return 0;
}
