// The front's run sequence: find the appdata file, read the schema names from
// it, find each schema's IMM file, and hand the schemas, ordered by name, to
// the upgrade framework together with the unchanged command line.
//
// Returns only when the front fails, with the code that becomes the exit
// status, or when `client` returns (the framework's own client never does).

#ifndef VOSK_FRONT_VOSK_OAM_UPGRADER_APP_H
#define VOSK_FRONT_VOSK_OAM_UPGRADER_APP_H

#include "AppResult.h"
#include "AppdataParserBase.h"
#include "FilesManagerBase.h"
#include "TavClientIfBase.h"

namespace voskoamupgrader {

AppResult runApp(int argc, char** argv, FilesManagerBase& filesManager, AppdataParserBase& appdataParser,
                 TavClientIfBase& client);

}  // namespace voskoamupgrader

#endif
