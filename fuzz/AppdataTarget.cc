// Fuzz target: the package's appdata file, as the front reads the schemas
// to upgrade from it.

#include "AppdataParser.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  voskoamupgrader::AppdataParser parser;
  parser.getSchemasNamesFromXml({file.path()});
  return 0;
}
