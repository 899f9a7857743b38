#include "AppdataParser.h"

#include <libxml/tree.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "LoggedLines.h"
#include "TempDir.h"

namespace voskoamupgrader {
namespace {

TEST(AppdataParserTest, CollectsTheBoardTypeOfEveryOutermostLmlist) {
  const std::string noNames = "INFO: No schema names found in the file ";
  const std::vector<std::string> unreadable = {"ERROR: Error returned while reading xml file: ",
                                               "ERROR: Unable to detect schema name from modification file: "};
  const struct {
    const char* name;
    const char* content;  // nullptr: no file
    AppResult result;
    std::set<std::string> names;
    std::vector<std::string> log;  // each followed by the file's path
  } cases[] = {
      {"names are sorted", R"(<r><lmlist boardType="B"/><lmlist boardType="A"/></r>)", APP_RESULT_OK, {"A", "B"}, {}},
      {"the root element", R"(<lmlist boardType="Root"><x/></lmlist>)", APP_RESULT_OK, {"Root"}, {}},
      {"deep below other elements", R"(<a><b><c/><c><lmlist boardType="Deep"/></c></b><lmlist boardType="Top"/></a>)",
       APP_RESULT_OK, {"Deep", "Top"}, {}},
      {"an lmlist inside an lmlist is not seen",
       R"(<r><lmlist boardType="Outer"><x><lmlist boardType="Inner"/></x></lmlist></r>)", APP_RESULT_OK, {"Outer"}, {}},
      {"a duplicate is kept once, other attributes are ignored",
       R"(<r><lmlist name="n" boardType="A"/><x><lmlist boardType="A"/></x></r>)", APP_RESULT_OK, {"A"}, {}},
      {"text and comments are skipped",
       R"(<!-- <lmlist boardType="C0"/> --><r>text<!-- <lmlist boardType="C1"/> --><lmlist boardType="A"/></r>)",
       APP_RESULT_OK, {"A"}, {}},
      {"lmlist without boardType", R"(<r><lmlist name="A"/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"empty boardType", R"(<r><lmlist boardType=""/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"boardType of other elements", R"(<r boardType="X"><lm boardType="Y"/></r>)", APP_RESULT_OK, {}, {noNames}},
      {"not well-formed", R"(<r><lmlist boardType="A"></r>)", APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, {}, unreadable},
      {"empty file", "", APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, {}, unreadable},
      {"missing file", nullptr, APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE, {}, unreadable},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    TempDir dir;
    std::string path = c.content != nullptr ? dir.write("appdata.xml", c.content) : dir.path() + "/none.xml";
    std::vector<std::string> log;
    for (const std::string& line : c.log) log.push_back(line + path);

    AppdataParser parser;
    EXPECT_EQ(c.result, parser.getSchemasNamesFromXml({path}));
    EXPECT_EQ(c.names, parser.schemaNames());
    EXPECT_EQ(log, loggedLines());
  }
}

xmlDocPtr documentWithoutRoot(const char*) { return xmlNewDoc(BAD_CAST "1.0"); }

TEST(AppdataParserTest, ADocumentWithoutRootElementFails) {
  AppdataParser parser(documentWithoutRoot);
  EXPECT_EQ(APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE, parser.getSchemasNamesFromXml({"/pkg/a.xml", "/pkg/b.xml"}));
  EXPECT_EQ((std::vector<std::string>{"ERROR: Error returned while parsing xml file: /pkg/a.xml",
                                      "ERROR: Unable to detect schema name from modification file: /pkg/a.xml"}),
            loggedLines());
}

}  // namespace
}  // namespace voskoamupgrader
