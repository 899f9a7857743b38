// Runs the front as a process against package trees and checks its exit
// status, the schemas it hands over and what it leaves in the persistent log.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TempDir.h"

namespace {

struct FrontRun {
  int exitStatus = -1;
  std::vector<std::string> lines;  // standard output
  std::vector<std::string> log;    // persistent-log texts
};

// Starts the front with the given package root (none when null) and the
// simulated node below `node`, and waits for its end.
FrontRun runFront(const TempDir& node, const char* wpkPath) {
  std::vector<std::string> environment = {"VOSK_SIM_ROOT=" + node.path()};
  if (wpkPath != nullptr) environment.push_back(std::string("WPK_PATH=") + wpkPath);
  std::vector<char*> envp;
  for (std::string& entry : environment) envp.push_back(entry.data());
  envp.push_back(nullptr);
  std::string program = FRONT_RUNNER;
  std::string socketPath = node.path() + "/wrapper.socket";
  char* argv[] = {program.data(), socketPath.data(), nullptr};

  FrontRun run;
  int output[2];
  if (pipe(output) != 0) return run;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, output[0]);
  pid_t pid;
  int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv, envp.data());
  posix_spawn_file_actions_destroy(&actions);
  close(output[1]);
  std::string text;
  char buffer[4096];
  for (ssize_t n; (n = read(output[0], buffer, sizeof buffer)) > 0;) text.append(buffer, n);
  close(output[0]);
  if (spawned != 0) return run;

  int status = 0;
  waitpid(pid, &status, 0);
  if (WIFEXITED(status)) run.exitStatus = WEXITSTATUS(status);
  for (size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    run.lines.push_back(text.substr(start, end - start));
  }
  // A record reads "[<time>] <id> <severity> <text>".
  for (const std::string& line : TempDir::lines(node.path() + "/out/log/saLogUpgrade/upgrade.log")) {
    size_t textStart = line.find(' ', line.find(' ', line.find("] ") + 2) + 1);
    run.log.push_back(textStart == std::string::npos ? line : line.substr(textStart + 1));
  }
  return run;
}

const char* kAppdata = "appdata/voskOamUpgradeModLm.xml";

enum class WpkPath { kUnset, kEmpty, kPackage };

TEST(FrontProcessTest, ExitsWithTheCodeOfTheFailedStep) {
  const struct {
    const char* name;
    WpkPath wpkPath;
    std::vector<std::pair<std::string, std::string>> files;  // path below the root, content
    int exitStatus;
    std::string lastLog;
  } cases[] = {
      {"no package root", WpkPath::kUnset, {}, 1, "Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT"},
      {"empty package root", WpkPath::kEmpty, {}, 1, "Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT"},
      {"no appdata file",
       WpkPath::kPackage,
       {{"appdata/other.xml", "<r/>"}},
       2,
       "Failed to find mods files, result : APP_RESULT_FAILED_TO_FIND_MODS"},
      {"appdata file not well-formed",
       WpkPath::kPackage,
       {{kAppdata, "<r><lmlist boardType=\"A\"></r>"}},
       3,
       "Failed to parse mods files result : APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"},
      {"a schema without IMM file",
       WpkPath::kPackage,
       {{kAppdata, R"(<r><lmlist boardType="A"/><lmlist boardType="B"/></r>)"}, {"share/imm/A_imm.xml", ""}},
       5,
       "Failed to find IMM file, result : APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
      {"an IMM file without the _imm marker",
       WpkPath::kPackage,
       {{kAppdata, R"(<r><lmlist boardType="A"/></r>)"}, {"share/imm/A_classes.xml", ""}},
       6,
       "Failed to find IMM file, result : APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempDir node;
    TempDir package;
    for (const auto& [path, content] : c.files) package.write(path, content);

    const char* wpkPath = c.wpkPath == WpkPath::kPackage ? package.path().c_str()
                          : c.wpkPath == WpkPath::kEmpty ? ""
                                                         : nullptr;
    FrontRun run = runFront(node, wpkPath);
    EXPECT_EQ(c.exitStatus, run.exitStatus);
    EXPECT_TRUE(run.lines.empty());
    ASSERT_FALSE(run.log.empty());
    EXPECT_EQ(c.lastLog, run.log.back());
  }
}

TEST(FrontProcessTest, HandsTheSchemasOverInNameOrder) {
  TempDir node;
  TempDir package;
  package.write(kAppdata, R"(<appdata>
  <lmlist boardType="Zeta" name="z"/>
  <group><lmlist boardType="Alpha"/></group>
  <lmlist boardType="Mid"/>
</appdata>)");
  std::string zeta = package.write("share/z/imm/Zeta_imm_classes.xml", "");
  std::string alpha = package.write("share/imm/Alpha_imm.xml", "");
  std::string mid = package.write("share/a/b/imm/Mid_imm.xml", "");
  package.write("share/imm/Unlisted_imm.xml", "");

  FrontRun run = runFront(node, package.path().c_str());
  EXPECT_EQ(0, run.exitStatus);
  EXPECT_EQ((std::vector<std::string>{"Alpha\t" + alpha + "\tAlpha\t", "Mid\t" + mid + "\tMid\t",
                                      "Zeta\t" + zeta + "\tZeta\t"}),
            run.lines);
  EXPECT_EQ(std::vector<std::string>{"Found 3 schemas to be upgraded, schema list: [Alpha,Mid,Zeta]"}, run.log);
}

TEST(FrontProcessTest, AnAppdataFileWithoutSchemasHandsOverAnEmptyList) {
  TempDir node;
  TempDir package;
  std::string appdata = package.write(kAppdata, R"(<appdata><lmlist name="x"/></appdata>)");

  FrontRun run = runFront(node, package.path().c_str());
  EXPECT_EQ(0, run.exitStatus);
  EXPECT_TRUE(run.lines.empty());
  EXPECT_EQ((std::vector<std::string>{"No schema names found in the file " + appdata,
                                      "Found 0 schemas to be upgraded, schema list: []"}),
            run.log);
}

}  // namespace
