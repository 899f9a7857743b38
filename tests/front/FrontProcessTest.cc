// Runs the front as a process against package trees and checks its exit
// status, what it hands over and what it leaves in the persistent log. A step
// that fails ends the run: no later step logs, nothing is handed over.

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "TempDir.h"

namespace {

// Replaces every "%P" in `texts` by `package` and every "%N" by `node`.
std::vector<std::string> expand(std::vector<std::string> texts, const TempDir& package, const TempDir& node) {
  for (std::string& text : texts) {
    for (size_t at; (at = text.find("%P")) != std::string::npos;) text.replace(at, 2, package.path());
    for (size_t at; (at = text.find("%N")) != std::string::npos;) text.replace(at, 2, node.path());
  }
  return texts;
}

const char kAppdata[] = "appdata/voskOamUpgradeModLm.xml";
const std::vector<std::string> kNoRoot = {"ERROR Unable to get WPK_PATH environment variable.",
                                          "ERROR Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT"};

TEST(FrontProcessTest, ExitStatusSchemasHandedOverAndLog) {
  const struct {
    const char* name;
    const char* wpkPath;  // nullptr: unset; "%P" stands for the package root
    std::vector<std::pair<std::string, std::string>> files;  // path below the root, content
    int exitStatus;
    std::vector<std::string> lines;  // standard output: the schemas handed over
    std::vector<std::string> log;    // "<severity> <text>"
  } cases[] = {
      {"no package root", nullptr, {}, 1, {}, kNoRoot},
      {"empty package root", "", {}, 1, {}, kNoRoot},
      {"no appdata file", "%P", {{"appdata/other.xml", "<r/>"}}, 2, {},
       {"ERROR Unable to find mods file: %P/appdata/voskOamUpgradeModLm.xml",
        "ERROR Failed to find mods files, result : APP_RESULT_FAILED_TO_FIND_MODS"}},
      {"appdata file not well-formed", "%P", {{kAppdata, "<r><lmlist boardType=\"A\"></r>"}}, 3, {},
       {"ERROR Error returned while reading xml file: %P/appdata/voskOamUpgradeModLm.xml",
        "ERROR Unable to detect schema name from modification file: %P/appdata/voskOamUpgradeModLm.xml",
        "ERROR Failed to parse mods files result : APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"}},
      {"a schema without IMM file", "%P",
       {{kAppdata, R"(<r><lmlist boardType="A"/><lmlist boardType="B"/></r>)"}, {"share/imm/A_imm.xml", ""}}, 5, {},
       {"INFO Found 2 schemas to be upgraded, schema list: [A,B]",
        "ERROR Ignored schemas due to missed imm files: [B]",
        "ERROR Failed to find IMM file, result : APP_RESULT_FAILED_TO_FIND_IMM_FILE"}},
      {"an IMM file without the _imm marker", "%P",
       {{kAppdata, R"(<r><lmlist boardType="A"/></r>)"}, {"share/imm/A_classes.xml", ""}}, 6, {},
       {"INFO Found 1 schemas to be upgraded, schema list: [A]",
        "ERROR Unable to detect schema name when parsing find command output, expected path pattern: "
        "*<SchemaName>_*.xml, found line: %P/share/imm/A_classes.xml",
        "ERROR Failed to find IMM file, result : APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"}},
      {"schemas in name order", "%P",
       {{kAppdata, R"(<a><lmlist boardType="Zeta" name="z"/><g><lmlist boardType="Alpha"/></g><lmlist boardType="Mid"/></a>)"},
        {"share/z/imm/Zeta_imm_classes.xml", ""}, {"share/imm/Alpha_imm.xml", ""}, {"share/a/b/imm/Mid_imm.xml", ""},
        {"share/imm/Unlisted_imm.xml", ""}},
       0,
       {"argc=2 %N/wrapper.socket", "Alpha\t%P/share/imm/Alpha_imm.xml\tAlpha\t", "Mid\t%P/share/a/b/imm/Mid_imm.xml\tMid\t",
        "Zeta\t%P/share/z/imm/Zeta_imm_classes.xml\tZeta\t"},
       {"INFO Found 3 schemas to be upgraded, schema list: [Alpha,Mid,Zeta]"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempDir node;
    TempDir package;
    for (const auto& [path, content] : c.files) package.write(path, content);
    std::string command = "env -i VOSK_SIM_ROOT=" + node.path();
    if (c.wpkPath != nullptr) command += " WPK_PATH='" + expand({c.wpkPath}, package, node)[0] + "'";
    command += std::string(" ") + FRONT_RUNNER + " " + node.path() + "/wrapper.socket 2>/dev/null";

    FILE* output = popen(command.c_str(), "r");
    ASSERT_NE(nullptr, output);
    std::vector<std::string> lines;
    for (char line[4096]; fgets(line, sizeof line, output) != nullptr;) lines.emplace_back(line, strlen(line) - 1);
    int status = pclose(output);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(c.exitStatus, WEXITSTATUS(status));
    EXPECT_EQ(expand(c.lines, package, node), lines);

    // A record reads "[<time>] <id> <severity> <text>"; severities are "ER" and "IN".
    std::vector<std::string> log;
    for (const std::string& line : TempDir::lines(node.path() + "/out/log/saLogUpgrade/upgrade.log")) {
      size_t severity = line.find(' ', line.find("] ") + 2) + 1;
      log.push_back((line.compare(severity, 3, "ER ") == 0 ? "ERROR " : "INFO ") + line.substr(severity + 3));
    }
    EXPECT_EQ(expand(c.log, package, node), log);
  }
}

}  // namespace
