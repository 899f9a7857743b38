// A FIFO where the package or the node should have a file: the run ends
// with a failure that names the file, and nothing is written. Before, the
// upgrader blocked on it for ever.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

namespace fs = std::filesystem;

TEST(FifoInPlaceOfFileTest, FailsCleanlyNamingTheFile) {
  const struct {
    const char* file;  // below the copy of examples/service
    int exitStatus;    // the wrapper's: 1 rolled back, 2 the front failed
  } cases[] = {
      {"package/appdata/voskOamUpgradeModLm.xml", 2},
      {"package/share/services/imm/Services_imm_classes.xml", 1},
      {"node/imm/old/Services.xml", 1},
      {"node/versions", 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    TempDir scratch;
    fs::copy(std::string(EXAMPLES_DIR) + "/service", scratch.path(), fs::copy_options::recursive);
    const std::string fifo = scratch.path() + "/" + c.file;
    ASSERT_TRUE(fs::remove(fifo));
    ASSERT_EQ(0, ::mkfifo(fifo.c_str(), 0600));
    RunResult run = WholeRun(RunFolders{scratch.path() + "/package", scratch.path() + "/node",
                                        scratch.path() + "/out", scratch.path()})
                        .run();
    EXPECT_EQ(c.exitStatus, run.exitStatus) << run.report;
    EXPECT_EQ(std::vector<std::string>{}, run.modelFiles());
    const std::string named = fs::path(c.file).filename().string();
    EXPECT_TRUE(run.loggedParts(named) > 0 || run.report.find(named) != std::string::npos ||
                run.errors.find(named) != std::string::npos)
        << run.report;
  }
}

}  // namespace
}  // namespace e2e
