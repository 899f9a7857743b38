// vosk-log-demo <boardType>...: asks the load-module handler for the
// modification files of each board type, as the upgrade framework does before
// it starts the schema threads, prints the paths found and closes the
// persistent log. Against the simulated node the log is
// $VOSK_SIM_OUT/log/saLogUpgrade/upgrade.log.

#include <cstdio>
#include <string>
#include <vector>

#include "client/LmhiWrapper.h"
#include "client/ModificationFileLookup.h"
#include "common/PersistentLog.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s <boardType>...\n", argv[0]);
    return 2;
  }
  LmhiWrapper lmhi;
  for (int i = 1; i < argc; ++i) {
    std::vector<std::string> files;
    getModificationFiles(lmhi, argv[i], &files);
    std::printf("%s: %zu modification files\n", argv[i], files.size());
    for (const std::string& file : files) std::printf("  %s\n", file.c_str());
  }
  PersistentLog::instance().close();
  return 0;
}
