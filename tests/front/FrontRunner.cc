// The front as the product runs it, with a framework client that prints the
// command line it is handed ("argc=<n> <argv[1]>") and the schemas, one line
// each ("<name>\t<path>\t<board type>\t<IMM namespace>"), and ends the
// process instead of upgrading: status 0 when it was handed no actions.

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "AppdataParser.h"
#include "FilesManager.h"
#include "TavClientIfBase.h"
#include "VoskOamUpgraderApp.h"
#include "env/PlatformEnv.h"

namespace {

class PrintingClient : public voskoamupgrader::TavClientIfBase {
 public:
  void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
               char** argv) override {
    std::printf("argc=%d %s\n", argc, argc > 1 ? argv[1] : "");
    for (const SchemaData& s : schemas) {
      std::printf("%s\t%s\t%s\t%s\n", s.schemaName.c_str(), s.schemaPath.c_str(), s.boardType.c_str(),
                  s.immNs.c_str());
    }
    std::fflush(stdout);
    std::exit(actions.empty() ? EXIT_SUCCESS : EXIT_FAILURE);
  }
};

}  // namespace

int main(int argc, char** argv) {
  voskoamupgrader::FilesManager filesManager(PlatformEnv::instance());
  voskoamupgrader::AppdataParser appdataParser;
  PrintingClient client;
  return voskoamupgrader::runApp(argc, argv, filesManager, appdataParser, client);
}
