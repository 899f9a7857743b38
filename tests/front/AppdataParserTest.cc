#include "AppdataParser.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "LoggedLines.h"
#include "TempDir.h"

namespace voskoamupgrader {
namespace {

std::string withPath(const std::string& text, const std::string& path) {
  size_t at = text.find("%F");
  return at == std::string::npos ? text : text.substr(0, at) + path + text.substr(at + 2);
}

TEST(AppdataParserTest, CollectsTheBoardTypeOfEveryOutermostLmlist) {
  const std::string noNames = "INFO: No schema names found in the file %F";
  const struct {
    const char* name;
    const char* content;
    AppResult result;
    std::set<std::string> names;
    std::vector<std::string> log;
  } cases[] = {
      {"names are sorted",
       R"(<r><lmlist boardType="B"/><lmlist boardType="A"/></r>)",
       APP_RESULT_OK,
       {"A", "B"},
       {}},
      {"at any depth, the root included",
       R"(<lmlist boardType="Root"><x/></lmlist>)",
       APP_RESULT_OK,
       {"Root"},
       {}},
      {"deep below other elements",
       R"(<a><b><c/><c><lmlist boardType="Deep"/></c></b><lmlist boardType="Top"/></a>)",
       APP_RESULT_OK,
       {"Deep", "Top"},
       {}},
      {"an lmlist inside an lmlist is not seen",
       R"(<r><lmlist boardType="Outer"><x><lmlist boardType="Inner"/></x></lmlist></r>)",
       APP_RESULT_OK,
       {"Outer"},
       {}},
      {"other attributes are ignored",
       R"(<r><lmlist name="n" boardType="A" tag="t"/></r>)",
       APP_RESULT_OK,
       {"A"},
       {}},
      {"a duplicate is kept once and is no error",
       R"(<r><lmlist boardType="A"/><x><lmlist boardType="A"/></x></r>)",
       APP_RESULT_OK,
       {"A"},
       {}},
      {"text and comments are skipped",
       R"(<!-- <lmlist boardType="C0"/> --><r>text<!-- <lmlist boardType="C1"/> --><lmlist boardType="A"/></r>)",
       APP_RESULT_OK,
       {"A"},
       {}},
      {"lmlist without boardType", R"(<r><lmlist name="A"/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"empty boardType", R"(<r><lmlist boardType=""/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"boardType of other elements", R"(<r boardType="X"><lm boardType="Y"/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"not well-formed",
       R"(<r><lmlist boardType="A"></r>)",
       APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE,
       {},
       {"ERROR: Error returned while reading xml file: %F",
        "ERROR: Unable to detect schema name from modification file: %F"}},
      {"empty file",
       "",
       APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE,
       {},
       {"ERROR: Error returned while reading xml file: %F",
        "ERROR: Unable to detect schema name from modification file: %F"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    TempDir dir;
    std::string path = dir.write("appdata.xml", c.content);
    std::vector<std::string> log;
    for (const std::string& line : c.log) log.push_back(withPath(line, path));

    AppdataParser parser;
    EXPECT_EQ(c.result, parser.getSchemasNamesFromXml({path}));
    EXPECT_EQ(c.names, parser.schemaNames());
    EXPECT_EQ(log, loggedLines());
  }
}

TEST(AppdataParserTest, AMissingFileFails) {
  AppdataParser parser;
  EXPECT_EQ(APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, parser.getSchemasNamesFromXml({"/nonexistent/appdata.xml"}));
  EXPECT_EQ((std::vector<std::string>{"ERROR: Error returned while reading xml file: /nonexistent/appdata.xml",
                                      "ERROR: Unable to detect schema name from modification file: "
                                      "/nonexistent/appdata.xml"}),
            loggedLines());
}

TEST(AppdataParserTest, NamesAccumulateOverFilesAndCallsUntilAFileFails) {
  TempDir dir;
  std::string first = dir.write("first.xml", R"(<r><lmlist boardType="B"/></r>)");
  std::string withoutNames = dir.write("none.xml", "<r/>");
  std::string second = dir.write("second.xml", R"(<r><lmlist boardType="D"/></r>)");
  std::string broken = dir.write("broken.xml", "<r>");
  std::string last = dir.write("last.xml", R"(<r><lmlist boardType="C"/></r>)");

  AppdataParser parser;
  // A file without names after one with names is not reported: the set is
  // not empty.
  EXPECT_EQ(APP_RESULT_OK, parser.getSchemasNamesFromXml({first, withoutNames}));
  EXPECT_TRUE(loggedLines().empty());
  // Names read before the failed file stay; files after it are not read.
  EXPECT_EQ(APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, parser.getSchemasNamesFromXml({second, broken, last}));
  EXPECT_EQ((std::set<std::string>{"B", "D"}), parser.schemaNames());
  EXPECT_EQ(APP_RESULT_OK, parser.getSchemasNamesFromXml({last}));
  EXPECT_EQ((std::set<std::string>{"B", "C", "D"}), parser.schemaNames());
}

TEST(AppdataParserTest, OnlyAnEmptySetAfterAFileIsReported) {
  TempDir dir;
  std::string withoutNames = dir.write("none.xml", "<r/>");
  std::string withNames = dir.write("names.xml", R"(<r><lmlist boardType="A"/></r>)");

  AppdataParser parser;
  EXPECT_EQ(APP_RESULT_OK, parser.getSchemasNamesFromXml({withoutNames, withNames}));
  EXPECT_EQ(std::vector<std::string>{"INFO: No schema names found in the file " + withoutNames}, loggedLines());
  EXPECT_EQ(std::set<std::string>{"A"}, parser.schemaNames());
}

xmlDocPtr documentWithoutRoot(const char*) { return xmlNewDoc(BAD_CAST "1.0"); }

TEST(AppdataParserTest, ADocumentWithoutRootElementFails) {
  AppdataParser parser(documentWithoutRoot);
  EXPECT_EQ(APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE, parser.getSchemasNamesFromXml({"/pkg/a.xml", "/pkg/b.xml"}));
  EXPECT_EQ((std::vector<std::string>{"ERROR: Error returned while parsing xml file: /pkg/a.xml",
                                      "ERROR: Unable to detect schema name from modification file: /pkg/a.xml"}),
            loggedLines());
  EXPECT_TRUE(parser.schemaNames().empty());
}

}  // namespace
}  // namespace voskoamupgrader
