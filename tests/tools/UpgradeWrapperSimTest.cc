// Whole runs of the wrapper against a fake upgrader (FakeUpgrader.cc).

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

struct RunCase {
  const char* name;
  std::vector<const char*> options;  // besides --node and --program
  int exitStatus;
  std::vector<std::string> reportParts;  // each must occur in the report
};

void PrintTo(const RunCase& c, std::ostream* out) { *out << c.name; }

class WrapperRunTest : public testing::TestWithParam<RunCase> {
 protected:
  // Runs the wrapper; @out in an option stands for the test's output folder.
  int run(const std::vector<const char*>& extra, std::string* report, std::string* problems = nullptr) {
    std::vector<std::string> texts = {"upgrade-wrapper-sim", "--node", node(), "--program", FAKE_UPGRADER};
    for (const char* option : extra) texts.push_back(option == std::string("@out") ? dir.path() + "/out" : option);
    std::vector<const char*> argv;
    for (const std::string& text : texts) argv.push_back(text.c_str());
    WrapperOptions options;
    std::string error;
    EXPECT_TRUE(WrapperOptions::parse(static_cast<int>(argv.size()), argv.data(), &options, &error)) << error;
    std::ostringstream out;
    std::ostringstream err;
    int status = UpgradeWrapperSim("/nowhere/upgrade-wrapper-sim", {"PATH=/usr/bin:/bin"}, out, err).run(options);
    *report = out.str();
    if (problems != nullptr) *problems = err.str();
    return status;
  }

  std::string node() const { return dir.path() + "/node"; }

  TempDir dir;
};

TEST_P(WrapperRunTest, ExitStatusAndReport) {
  std::string report;
  EXPECT_EQ(GetParam().exitStatus, run(GetParam().options, &report));
  for (std::string part : GetParam().reportParts) {
    for (size_t at; (at = part.find("@node")) != std::string::npos;) part.replace(at, 5, node());
    EXPECT_NE(std::string::npos, report.find(part)) << "missing: " << part << "\nreport:\n" << report;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Outcomes, WrapperRunTest,
    testing::Values(
        RunCase{"ConnectIsSuccess", {"--env", "FAKE_MODE=connect"}, 0,
                {"Outcome: success, the upgrader connected to the wrapper socket\n"}},
        RunCase{"LoopLineWithoutConnectIsRollback", {"--env", "FAKE_MODE=loop"}, 1,
                {"Outcome: upgrade failed, the upgrader entered the never-ending loop without a connect; the node "
                 "rolls back\nRollback reasons: none recorded\n"}},
        RunCase{"FrontFailure", {"--env", "FAKE_MODE=exit=5"}, 2,
                {"Outcome: front failed with exit status 5 (APP_RESULT_FAILED_TO_FIND_IMM_FILE)\n"}},
        RunCase{"ExitZeroIsNoFrontFailure", {"--env", "FAKE_MODE=exit=0"}, 3,
                {"Outcome: crash, the upgrader exited with unexpected status 0 (APP_RESULT_OK)\n"}},
        RunCase{"AbortIsACrash", {"--env", "FAKE_MODE=abort"}, 3,
                {"Outcome: crash, the upgrader was ended by signal 6 (SIGABRT)\n"}},
        RunCase{"NothingHappensUntilTheTimeOut", {"--env", "FAKE_MODE=hang", "--timeout", "0.3"}, 3,
                {"Outcome: time-out, no outcome within 0.3 s\n"}},
        RunCase{"FailedRunReportsReasonsPathAndDiscardedModel", {"--env", "FAKE_MODE=failed-run"}, 1,
                {"Rollback reasons (2):\n  UPGRADE FAIL: Application identity: wmtName = voskOamUpgrader, "
                 "wmtNumber = CXC1740923, wmtRevision = R4A12, wpkRevision = R4A12. Failed to process modification "
                 "file /lmhi/Transport/modification_files/LM1/modification_1_0_0_to_1_1_0.xml\n",
                 "wpkRevision = R4A12. Final Fail\n",
                 "Schemas (1):\n  Transport\n    versions: 1_0_0 -> 1_1_0 (conversion)\n"
                 "    conversion path: 1 modification files\n"
                 "      1. /lmhi/Transport/modification_files/LM1/modification_1_0_0_to_1_1_0.xml: FAILURE\n"
                 "    result: failed\n    discarded model: @node/out/discarded/Transport.xml\n"}},
        RunCase{"VerboseForwardsTheSingleSocketArgument", {"--env", "FAKE_MODE=args", "-v"}, 1,
                {"[upgrader] argc=2 [@node/out/upgradeWrapper.sock]\n"
                 "[upgrader] Entering the never ending loop, if you want to terminate this program you are going to "
                 "have to kill it.\nOutcome: upgrade failed"}},
        RunCase{"ArgsGiveOtherArgumentCounts", {"--env", "FAKE_MODE=args", "-v", "--args", "@socket two"}, 1,
                {"[upgrader] argc=3 [@node/out/upgradeWrapper.sock] [two]\n"}},
        RunCase{"NoArgsAtAll", {"--env", "FAKE_MODE=args", "-v", "--args", ""}, 1, {"[upgrader] argc=1\n"}},
        RunCase{"EnvironmentOfTheUpgrader",
                {"--env", "FAKE_MODE=env", "--env", "FAKE_PRINT=WPK_PATH,VOSK_SIM_OUT,RESTART_TYPE,WMT_NAME,VOSK_SIM_FAULTS",
                 "-v", "--faults", "Initialize=31x2", "--restart-type", "WARM", "--out", "@out"},
                1,
                {"[upgrader] WPK_PATH=<unset>\n", "[upgrader] RESTART_TYPE=WARM\n",
                 "[upgrader] WMT_NAME=voskOamUpgrader\n", "[upgrader] VOSK_SIM_FAULTS=Initialize=31x2\n"}}),
    [](const testing::TestParamInfo<RunCase>& info) { return std::string(info.param.name); });

TEST_F(WrapperRunTest, QuietRunPrintsNothingOfTheUpgrader) {
  std::string report;
  run({"--env", "FAKE_MODE=args"}, &report);
  EXPECT_EQ(0u, report.find("Outcome: upgrade failed"));
  EXPECT_EQ(std::string::npos, report.find("argc="));
}

TEST_F(WrapperRunTest, OutputFolderOptionDecidesWhereTheSimulatedNodeWrites) {
  std::string report;
  EXPECT_EQ(1, run({"--env", "FAKE_MODE=failed-run", "--out", "@out"}, &report));
  EXPECT_TRUE(TempDir::exists(dir.path() + "/out/discarded/Transport.xml"));
  EXPECT_NE(std::string::npos, report.find("discarded model: " + dir.path() + "/out/discarded/Transport.xml\n"));
}

TEST_F(WrapperRunTest, ARunStartsFromAnEmptyOutputFolder) {
  std::string report;
  EXPECT_EQ(1, run({"--env", "FAKE_MODE=failed-run"}, &report));
  EXPECT_EQ(0, run({"--env", "FAKE_MODE=connect"}, &report));
  EXPECT_EQ(std::string::npos, report.find("Rollback reasons"));
  EXPECT_FALSE(TempDir::exists(node() + "/out/discarded"));
}

TEST_F(WrapperRunTest, SetupProblemsEndWithStatusFour) {
  std::string report;
  std::string problems;
  dir.write("node/out/precious.txt", "x");
  EXPECT_EQ(UpgradeWrapperSim::kSetupFailed, run({"--env", "FAKE_MODE=connect"}, &report, &problems));
  EXPECT_NE(std::string::npos, problems.find("not written by an earlier run")) << problems;
  EXPECT_TRUE(report.empty());

  EXPECT_EQ(UpgradeWrapperSim::kSetupFailed,
            run({"--out", "@out", "--program", "/no/such/upgrader"}, &report, &problems));
  EXPECT_NE(std::string::npos, problems.find("cannot start /no/such/upgrader")) << problems;

  std::string longSocket = "/tmp/" + std::string(120, 's');
  EXPECT_EQ(UpgradeWrapperSim::kSetupFailed, run({"--out", "@out", "--socket", longSocket.c_str()}, &report, &problems));
  EXPECT_NE(std::string::npos, problems.find("choose a shorter one with --socket")) << problems;
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
std::string runBinary(const std::string& arguments, int* status) {
  FILE* pipe = popen((std::string(WRAPPER_BINARY) + " " + arguments + " 2>&1").c_str(), "r");
  std::string output;
  char buffer[512];
  for (size_t size; (size = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, size);
  int wait = pclose(pipe);
  *status = WIFEXITED(wait) ? WEXITSTATUS(wait) : -1;
  return output;
}

TEST(UpgradeWrapperSimBinaryTest, HelpAndWrongCommandLine) {
  int status = -1;
  EXPECT_EQ(0u, runBinary("--help", &status).find("Usage: upgrade-wrapper-sim --node DIR [options]"));
  EXPECT_EQ(0, status);
  std::string output = runBinary("--node /tmp --timeout never", &status);
  EXPECT_EQ(UpgradeWrapperSim::kSetupFailed, status);
  EXPECT_EQ(0u, output.find("upgrade-wrapper-sim: --timeout needs a positive number of seconds, not 'never'"));
}

TEST(UpgradeWrapperSimBinaryTest, RunsAFakeUpgrader) {
  TempDir dir;
  int status = -1;
  std::string output = runBinary("--node " + dir.path() + " --program " + FAKE_UPGRADER + " --env FAKE_MODE=exit=3",
                                 &status);
  EXPECT_EQ(2, status);
  EXPECT_EQ(0u, output.find("Outcome: front failed with exit status 3 (APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE)\n"));
}

}  // namespace
}  // namespace wrappersim
