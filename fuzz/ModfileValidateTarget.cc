// Fuzz target: a modification file checked without a model, as an author
// validates it: every built-in action validates its arguments.

#include <memory>
#include <vector>

#include "FuzzInput.h"
#include "actions/BuiltInActions.h"
#include "parser/XmlHandler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  std::vector<std::unique_ptr<UpgradeActionIf>> actions;
  XmlHandler parser(nullptr);
  for (UpgradeActionIf* action : createBuiltInActions()) {
    actions.emplace_back(action);
    parser.addAction(action);
  }
  parser.parseModificationFile(file.path().c_str(), true);
  return 0;
}
