#include "VoskOamUpgraderApp.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "LoggedLines.h"

namespace voskoamupgrader {
namespace {

// The fakes record every call into one shared list, so that a test sees the
// order of the steps and which ones were left out.
class FakeFilesManager : public FilesManagerBase {
 public:
  explicit FakeFilesManager(std::vector<std::string>& calls) : calls_(calls) {}

  AppResult findAppdataFiles() override {
    calls_.push_back("findAppdataFiles");
    for (const std::string& path : appdataFilesToFind) addAppdataFile(path);
    return appdataResult;
  }

  AppResult findSchemasImmFiles(const std::set<std::string>& schemaNames) override {
    calls_.push_back("findSchemasImmFiles");
    namesAsked = schemaNames;
    for (const auto& [name, path] : immFilesToFind) setSchemaImmFile(name, path);
    return immResult;
  }

  AppResult appdataResult = APP_RESULT_OK;
  std::vector<std::string> appdataFilesToFind = {"/pkg/appdata/voskOamUpgradeModLm.xml"};
  AppResult immResult = APP_RESULT_OK;
  std::map<std::string, std::string> immFilesToFind;
  std::set<std::string> namesAsked;

 private:
  std::vector<std::string>& calls_;
};

class FakeAppdataParser : public AppdataParserBase {
 public:
  explicit FakeAppdataParser(std::vector<std::string>& calls) : calls_(calls) {}

  AppResult getSchemasNamesFromXml(const std::vector<std::string>& appdataFiles) override {
    calls_.push_back("getSchemasNamesFromXml");
    filesGiven = appdataFiles;
    for (const std::string& name : namesToFind) addSchemaName(name);
    return result;
  }

  AppResult result = APP_RESULT_OK;
  std::vector<std::string> namesToFind;
  std::vector<std::string> filesGiven;

 private:
  std::vector<std::string>& calls_;
};

class RecordingClient : public TavClientIfBase {
 public:
  explicit RecordingClient(std::vector<std::string>& calls) : calls_(calls) {}

  void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
               char** argv) override {
    calls_.push_back("upgrade");
    for (const SchemaData& s : schemas) {
      schemasGiven.push_back(s.schemaName + "|" + s.schemaPath + "|" + s.boardType + "|" + s.immNs);
    }
    actionCount = actions.size();
    argcGiven = argc;
    argvGiven = argv;
  }

  std::vector<std::string> schemasGiven;
  size_t actionCount = 99;
  int argcGiven = 0;
  char** argvGiven = nullptr;

 private:
  std::vector<std::string>& calls_;
};

// The run sequence over fakes, with a command line of two arguments.
struct FrontUnderTest {
  AppResult run() { return runApp(2, argv, files, parser, client); }

  char program[8] = "upgr";
  char socket[16] = "/tmp/wrapper";
  char* argv[3] = {program, socket, nullptr};
  std::vector<std::string> calls;
  FakeFilesManager files{calls};
  FakeAppdataParser parser{calls};
  RecordingClient client{calls};
};

const std::vector<std::string> kAllCalls = {"findAppdataFiles", "getSchemasNamesFromXml", "findSchemasImmFiles",
                                             "upgrade"};

TEST(RunAppTest, StopsAtTheFirstFailedStepWithItsCodeAndMessage) {
  const std::string found = "INFO: Found 1 schemas to be upgraded, schema list: [A]";
  const struct {
    int failingStep;  // 0 appdata search, 1 appdata parsing, 2 IMM file search
    int code;
    std::vector<std::string> log;
  } cases[] = {
      {0, 1, {"ERROR: Failed to find mods files, result : APP_RESULT_NO_WPK_ROOT"}},
      {0, 2, {"ERROR: Failed to find mods files, result : APP_RESULT_FAILED_TO_FIND_MODS"}},
      {1, 3, {"ERROR: Failed to parse mods files result : APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"}},
      {1, 4, {"ERROR: Failed to parse mods files result : APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE"}},
      {2, 5, {found, "ERROR: Failed to find IMM file, result : APP_RESULT_FAILED_TO_FIND_IMM_FILE"}},
      {2, 6, {found, "ERROR: Failed to find IMM file, result : APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"}},
      {2, 17, {found, "ERROR: Failed to find IMM file, result : NOT_DECODED (17)"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    LogRecorder::installed().clear();
    FrontUnderTest front;
    front.parser.namesToFind = {"A"};
    AppResult code = static_cast<AppResult>(c.code);
    AppResult& failing = c.failingStep == 0   ? front.files.appdataResult
                         : c.failingStep == 1 ? front.parser.result
                                              : front.files.immResult;
    failing = code;

    EXPECT_EQ(code, front.run());
    EXPECT_EQ(std::vector<std::string>(kAllCalls.begin(), kAllCalls.begin() + c.failingStep + 1), front.calls);
    EXPECT_EQ(c.log, loggedLines());
  }
}

TEST(RunAppTest, HandsTheSchemasInNameOrderWithTheCommandLineUnchanged) {
  FrontUnderTest front;
  FakeFilesManager& files = front.files;
  FakeAppdataParser& parser = front.parser;
  RecordingClient& client = front.client;
  files.appdataFilesToFind = {"/pkg/appdata/voskOamUpgradeModLm.xml", "/other.xml"};
  parser.namesToFind = {"Beta", "Alpha"};
  files.immFilesToFind = {{"Beta", "/pkg/share/imm/Beta_imm.xml"}, {"Alpha", "/pkg/share/x/imm/Alpha_imm.xml"}};

  EXPECT_EQ(APP_RESULT_OK, front.run());

  EXPECT_EQ(kAllCalls, front.calls);
  EXPECT_EQ(files.appdataFilesToFind, parser.filesGiven);
  EXPECT_EQ((std::set<std::string>{"Alpha", "Beta"}), files.namesAsked);
  EXPECT_EQ((std::vector<std::string>{"Alpha|/pkg/share/x/imm/Alpha_imm.xml|Alpha|",
                                      "Beta|/pkg/share/imm/Beta_imm.xml|Beta|"}),
            client.schemasGiven);
  EXPECT_EQ(0u, client.actionCount);
  EXPECT_EQ(2, client.argcGiven);
  EXPECT_EQ(front.argv, client.argvGiven);
  // Everything else of a successful run is trace only.
  EXPECT_EQ(std::vector<std::string>{"INFO: Found 2 schemas to be upgraded, schema list: [Alpha,Beta]"},
            loggedLines());
}

TEST(RunAppTest, AnEmptySchemaListStillGoesToTheFramework) {
  FrontUnderTest front;

  EXPECT_EQ(APP_RESULT_OK, front.run());

  EXPECT_EQ(kAllCalls, front.calls);
  EXPECT_TRUE(front.client.schemasGiven.empty());
  EXPECT_EQ(0u, front.client.actionCount);
  EXPECT_EQ(std::vector<std::string>{"INFO: Found 0 schemas to be upgraded, schema list: []"}, loggedLines());
}

}  // namespace
}  // namespace voskoamupgrader
