#include "VoskOamUpgraderApp.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "ListText.h"
#include "LoggedLines.h"

namespace voskoamupgrader {
namespace {

// The steps of the run over fakes that record each call, with what it was
// handed, into one list and return the result the test chose for the step.
struct Steps {
  std::vector<std::string> calls;
  AppResult results[3] = {APP_RESULT_OK, APP_RESULT_OK, APP_RESULT_OK};  // appdata search, parsing, IMM search
};

struct FakeFilesManager : FilesManagerBase {
  explicit FakeFilesManager(Steps& steps) : steps_(steps) {}
  AppResult findAppdataFiles() override {
    steps_.calls.push_back("findAppdataFiles");
    addAppdataFile("/pkg/a.xml");
    addAppdataFile("/pkg/b.xml");
    return steps_.results[0];
  }
  AppResult findSchemasImmFiles(const std::set<std::string>& names) override {
    steps_.calls.push_back("findSchemasImmFiles " + listToString(names));
    for (const std::string& name : names) setSchemaImmFile(name, "/imm/" + name + "_imm.xml");
    return steps_.results[2];
  }
  Steps& steps_;
};

struct FakeAppdataParser : AppdataParserBase {
  explicit FakeAppdataParser(Steps& steps) : steps_(steps) {}
  AppResult getSchemasNamesFromXml(const std::vector<std::string>& files) override {
    steps_.calls.push_back("getSchemasNamesFromXml " + listToString(files));
    addSchemaName("Beta");
    addSchemaName("Alpha");
    return steps_.results[1];
  }
  Steps& steps_;
};

struct RecordingClient : TavClientIfBase {
  RecordingClient(Steps& steps, char** argv) : steps_(steps), argv_(argv) {}
  void upgrade(const std::vector<SchemaData>& schemas, std::vector<UpgradeActionIf*>& actions, int argc,
               char** argv) override {
    std::string call = "upgrade";
    for (const SchemaData& s : schemas) call += " " + s.schemaName + "|" + s.schemaPath + "|" + s.boardType + "|" + s.immNs;
    call += " actions=" + std::to_string(actions.size()) + " argc=" + std::to_string(argc);
    steps_.calls.push_back(call + (argv == argv_ ? " argv" : " other argv"));
  }
  Steps& steps_;
  char** argv_;
};

// The codes the whole front can be driven to are run in FrontProcessTest.
TEST(RunAppTest, RunsTheStepsInOrderAndStopsAtTheFirstFailureWithItsCodeAndMessage) {
  const std::vector<std::string> allCalls = {
      "findAppdataFiles", "getSchemasNamesFromXml [/pkg/a.xml,/pkg/b.xml]", "findSchemasImmFiles [Alpha,Beta]",
      "upgrade Alpha|/imm/Alpha_imm.xml|Alpha| Beta|/imm/Beta_imm.xml|Beta| actions=0 argc=2 argv"};
  const std::string found = "INFO: Found 2 schemas to be upgraded, schema list: [Alpha,Beta]";
  const struct {
    int failingStep;  // 3: none
    int code;
    std::vector<std::string> log;
  } cases[] = {
      {0, 2, {"ERROR: Failed to find mods files, result : APP_RESULT_FAILED_TO_FIND_MODS"}},
      {1, 4, {"ERROR: Failed to parse mods files result : APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE"}},
      {2, 17, {found, "ERROR: Failed to find IMM file, result : NOT_DECODED (17)"}},
      {3, 0, {found}},  // everything else of a successful run is trace only
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    LogRecorder::installed().clear();
    Steps steps;
    if (c.failingStep < 3) steps.results[c.failingStep] = static_cast<AppResult>(c.code);
    char program[] = "upgr", socket[] = "/tmp/wrapper";
    char* argv[] = {program, socket, nullptr};
    FakeFilesManager files(steps);
    FakeAppdataParser parser(steps);
    RecordingClient client(steps, argv);

    EXPECT_EQ(c.code, runApp(2, argv, files, parser, client));
    EXPECT_EQ(std::vector<std::string>(allCalls.begin(), allCalls.begin() + c.failingStep + 1), steps.calls);
    EXPECT_EQ(c.log, loggedLines());
  }
}

}  // namespace
}  // namespace voskoamupgrader
