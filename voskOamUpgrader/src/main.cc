// vosk-oam-upgrader: started by the upgrade wrapper with the path of its
// socket as the only argument. Exits only when the front fails, with the
// front's result code; otherwise the framework signals the wrapper and the
// process sleeps until it is killed.

#include "AppdataParser.h"
#include "FilesManager.h"
#include "TavClientIf.h"
#include "VoskOamUpgraderApp.h"
#include "common/PersistentLog.h"
#include "env/PlatformEnv.h"

int main(int argc, char** argv) {
  Env& env = PlatformEnv::instance();
  PersistentLog::chooseEnv(env);
  voskoamupgrader::FilesManager filesManager(env);
  voskoamupgrader::AppdataParser appdataParser;
  voskoamupgrader::TavClientIf client;
  return voskoamupgrader::runApp(argc, argv, filesManager, appdataParser, client);
}
