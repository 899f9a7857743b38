// vosk-oam-upgrader: started by the upgrade wrapper with the path of its
// socket as the only argument. Exits only when the front fails, with the
// front's result code; otherwise the framework signals the wrapper and the
// process sleeps until it is killed.

#include "AppdataParser.h"
#include "FilesManager.h"
#include "TavClientIf.h"
#include "VoskOamUpgraderApp.h"

namespace voskoamupgrader {

// Built before main, in this order.
FilesManager filesManager;
AppdataParser appdataParser;

AppResult runApp(int argc, char** argv) {
  TavClientIf client;
  return runApp(argc, argv, filesManager, appdataParser, client);
}

}  // namespace voskoamupgrader

int main(int argc, char** argv) { return voskoamupgrader::runApp(argc, argv); }
