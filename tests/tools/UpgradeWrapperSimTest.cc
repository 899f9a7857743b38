// Runs of the wrapper against a fake upgrader (FakeUpgrader.cc): what the
// whole runs of tests/e2e do not reach (a time-out, an exit that is no front
// failure, the upgrader's environment, a setup that fails).

#include "UpgradeWrapperSim.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "WrapperOptions.h"

namespace wrappersim {
namespace {

// Replaces every "@dir" in `text` by `dir`.
std::string expand(std::string text, const std::string& dir) {
  for (size_t at; (at = text.find("@dir")) != std::string::npos;) text.replace(at, 4, dir);
  return text;
}

TEST(UpgradeWrapperSimTest, ExitStatusAndReport) {
  const struct {
    const char* name;
    std::vector<const char*> options;  // besides --node @dir/node and --program; @dir is the test's folder
    int exitStatus;
    // Each occurs in the report, or in the problems for a setup failure; "!text" does not.
    std::vector<std::string> parts;
    std::vector<const char*> files = {};  // below @dir before the run
  } cases[] = {
      {"exit 0 is no front failure", {"--env", "FAKE_MODE=exit=0"}, 3,
       {"Outcome: crash, the upgrader exited with unexpected status 0 (APP_RESULT_OK)\n"}},
      {"nothing happens until the time-out", {"--env", "FAKE_MODE=hang", "--timeout", "0.3"}, 3,
       {"Outcome: time-out, no outcome within 0.3 s\n"}},
      {"a run starts from an empty output folder", {"--env", "FAKE_MODE=connect"}, 0,
       {"Outcome: success", "!Rollback reasons", "!old"}, {"node/out/.upgrade-wrapper-sim", "node/out/rollback"}},
      // The wrapper decides package, node, restart type, identity and faults over what it inherited, then the
      // --env settings in command-line order.
      {"environment of the upgrader",
       {"--env", "FAKE_MODE=env", "--env", "FAKE_PRINT=WPK_PATH,VOSK_SIM_ROOT,VOSK_SIM_OUT,RESTART_TYPE,RESTART_TYPE_3,"
        "WMT_NAME,WMT_NO,WMT_REV,UP_NO,UP_REV,WPK_REV,VOSK_SIM_FAULTS", "-v", "--faults", "Initialize=31x2",
        "--restart-type", "WARM"},
       1,
       {"[upgrader] WPK_PATH=<unset>\n[upgrader] VOSK_SIM_ROOT=@dir/node\n[upgrader] VOSK_SIM_OUT=@dir/node/out\n"
        "[upgrader] RESTART_TYPE=WARM\n[upgrader] RESTART_TYPE_3=DYNAMIC\n[upgrader] WMT_NAME=voskOamUpgrader\n"
        "[upgrader] WMT_NO=CXC1740923\n[upgrader] WMT_REV=R4A12\n[upgrader] UP_NO=CXP9024418_6\n"
        "[upgrader] UP_REV=R21B\n[upgrader] WPK_REV=R4A12\n[upgrader] VOSK_SIM_FAULTS=Initialize=31x2\n"}},
      {"env settings come last",
       {"--package", "/pkg/", "--env", "WMT_NAME=other", "--env", "RESTART_TYPE", "--env", "X=1", "--env", "X=2",
        "--env", "FAKE_MODE=env", "--env", "FAKE_PRINT=WPK_PATH,WMT_NAME,RESTART_TYPE,X,VOSK_SIM_FAULTS", "-v"},
       1,
       {"[upgrader] WPK_PATH=/pkg/\n[upgrader] WMT_NAME=other\n[upgrader] RESTART_TYPE=<unset>\n[upgrader] X=2\n"
        "[upgrader] VOSK_SIM_FAULTS=<unset>\n"}},
      {"an output folder not written by an earlier run", {"--env", "FAKE_MODE=connect"}, 4,
       {"not written by an earlier run"}, {"node/out/precious.txt"}},
      {"an output folder that contains the node", {"--out", "@dir"}, 4, {"contains the node"}},
      {"an upgrader that is no program", {"--program", "@dir/plain"}, 4, {"cannot start @dir/plain: Permission denied"},
       {"plain"}},
      {"a socket path that is no socket", {"--socket", "@dir/plain"}, 4, {"@dir/plain exists and is no socket"},
       {"plain"}},
  };
  const std::vector<std::string> inherited = {"PATH=/usr/bin:/bin", "WPK_PATH=/stale", "VOSK_SIM_FAULTS=Initialize=2",
                                             "WMT_NAME=mine", "RESTART_TYPE_3=DYNAMIC"};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempDir dir;
    for (const char* file : c.files) dir.write(file, "UPGRADE FAIL: old\n");
    std::vector<std::string> texts = {"upgrade-wrapper-sim", "--node", dir.path() + "/node", "--program", FAKE_UPGRADER};
    for (const char* option : c.options) texts.push_back(expand(option, dir.path()));
    std::vector<const char*> argv;
    for (const std::string& text : texts) argv.push_back(text.c_str());
    WrapperOptions options;
    std::string error;
    ASSERT_TRUE(WrapperOptions::parse(static_cast<int>(argv.size()), argv.data(), &options, &error)) << error;

    std::ostringstream out, problems;
    EXPECT_EQ(c.exitStatus, UpgradeWrapperSim("/nowhere/wrapper", inherited, out, problems).run(options));
    const bool setupFailed = c.exitStatus == UpgradeWrapperSim::kSetupFailed;
    if (setupFailed) {
      EXPECT_EQ("", out.str());
    }
    const std::string text = setupFailed ? problems.str() : out.str();
    for (const std::string& part : c.parts) {
      bool absent = part[0] == '!';
      EXPECT_EQ(absent, text.find(expand(part.substr(absent ? 1 : 0), dir.path())) == std::string::npos)
          << part << "\nin:\n" << text;
    }
  }
}

TEST(UpgradeWrapperSimTest, DefaultProgramIsLookedUpBesideTheToolAndInTheBuildTree) {
  TempDir dir;
  std::string self = dir.write("build/tools/upgrade-wrapper-sim", "");
  EXPECT_EQ("", UpgradeWrapperSim::defaultProgram(self));
  std::string inTree = dir.write("build/voskOamUpgrader/src/vosk-oam-upgrader", "");
  chmod(inTree.c_str(), 0755);
  EXPECT_EQ(inTree, UpgradeWrapperSim::defaultProgram(self));
  std::string beside = dir.write("build/tools/vosk-oam-upgrader", "");
  EXPECT_EQ(inTree, UpgradeWrapperSim::defaultProgram(self)) << "not executable";
  chmod(beside.c_str(), 0755);
  EXPECT_EQ(beside, UpgradeWrapperSim::defaultProgram(self));
}

// The program itself: only what main adds to the library.
TEST(UpgradeWrapperSimTest, TheProgramPrintsUsageOrProblems) {
  const struct {
    std::string arguments;
    int status;
    std::string outputStart;
  } cases[] = {
      {"--help", 0, "Usage: upgrade-wrapper-sim --node DIR [options]"},
      {"--node /tmp --timeout never", 4,
       "upgrade-wrapper-sim: --timeout needs a positive number of seconds, not 'never'"},
  };
  for (const auto& c : cases) {
    FILE* pipe = popen((std::string(WRAPPER_BINARY) + " " + c.arguments + " 2>&1").c_str(), "r");
    std::string output;
    char buffer[512];
    for (size_t size; (size = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, size);
    int status = pclose(pipe);
    EXPECT_EQ(c.status, WIFEXITED(status) ? WEXITSTATUS(status) : -1) << c.arguments;
    EXPECT_EQ(0u, output.find(c.outputStart)) << output;
  }
}

}  // namespace
}  // namespace wrappersim
