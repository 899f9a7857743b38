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
  std::vector<std::unique_ptr<UpgradeActionIf>> actions = createBuiltInActions();
  XmlHandler parser(nullptr);
  for (const std::unique_ptr<UpgradeActionIf>& action : actions) parser.addAction(action.get());
  parser.parseModificationFile(file.path().c_str(), true);
  return 0;
}
