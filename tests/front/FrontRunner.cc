// The front as the product runs it, with a framework client that prints the
// schemas it is handed, one line each ("<name>\t<path>\t<board type>\t<IMM
// namespace>"), and ends the process with status 0 instead of upgrading.

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "AppdataParser.h"
#include "FilesManager.h"
#include "TavClientIfBase.h"
#include "VoskOamUpgraderApp.h"

namespace {

class PrintingClient : public voskoamupgrader::TavClientIfBase {
 public:
  void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int, char**) override {
    for (const SchemaData& s : schemas) {
      std::printf("%s\t%s\t%s\t%s\n", s.schemaName.c_str(), s.schemaPath.c_str(), s.boardType.c_str(),
                  s.immNs.c_str());
    }
    std::fflush(stdout);
    std::exit(actions.empty() ? EXIT_SUCCESS : EXIT_FAILURE);
  }
};

voskoamupgrader::FilesManager g_filesManager;
voskoamupgrader::AppdataParser g_appdataParser;

}  // namespace

int main(int argc, char** argv) {
  PrintingClient client;
  return voskoamupgrader::runApp(argc, argv, g_filesManager, g_appdataParser, client);
}
