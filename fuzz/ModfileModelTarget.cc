// Fuzz target: a modification file run with the built-in actions against a
// small model in memory, whose groups are then turned into write records.

#include <memory>
#include <vector>

#include "FuzzInput.h"
#include "FuzzModel.h"
#include "actions/BuiltInActions.h"
#include "parser/XmlHandler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzQuietProcess();
  FuzzFile file(data, size);
  FuzzModel model;
  std::vector<std::unique_ptr<UpgradeActionIf>> actions = createBuiltInActions();
  XmlHandler parser(&model);
  for (const std::unique_ptr<UpgradeActionIf>& action : actions) parser.addAction(action.get());
  parser.parseModificationFile(file.path().c_str(), false);
  model.writeAll();
  return 0;
}
