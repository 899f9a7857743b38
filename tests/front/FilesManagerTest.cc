#include "FilesManager.h"

#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "LoggedLines.h"
#include "TempDir.h"

namespace voskoamupgrader {
namespace {

const std::string kAppdata = "/appdata/voskOamUpgradeModLm.xml";

// Replaces every "%R" in each of `texts` by `root`.
std::vector<std::string> expand(std::vector<std::string> texts, const std::string& root) {
  for (std::string& text : texts) {
    for (size_t at; (at = text.find("%R")) != std::string::npos;) text.replace(at, 2, root);
  }
  return texts;
}

// The appdata search is run with the whole front in OutcomeTest (tests/e2e).
TEST(FilesManagerTest, MatchesImmFilesBySchemaName) {
  const std::string walkFailed =
      "ERROR: Execution of find schemas failed, result = APP_RESULT_FAILED_TO_FIND_IMM_FILE";
  const std::string ignoredFoo = "ERROR: Ignored schemas due to missed imm files: [Foo]";
  const AppResult noImmFile = APP_RESULT_FAILED_TO_FIND_IMM_FILE;
  const struct {
    const char* name;
    std::vector<std::string> files;  // below the package root; a trailing '@' makes a dangling link
    std::set<std::string> schemas;
    AppResult result;
    std::map<std::string, std::string> mapped;  // schema -> path below the root
    std::vector<std::string> log;
  } cases[] = {
      {"several schemas at any depth, files of other schemas ignored",
       {"share/a/imm/Foo_imm.xml", "share/b/x/imm/FooBar_imm_classes.xml", "share/b/imm/Other_imm.xml", "share/b/imm/readme"},
       {"Foo", "FooBar"}, APP_RESULT_OK,
       {{"Foo", "share/a/imm/Foo_imm.xml"}, {"FooBar", "share/b/x/imm/FooBar_imm_classes.xml"}}, {}},
      {"schema name not followed by an underscore", {"share/imm/FooBar_imm.xml"}, {"Foo"}, noImmFile, {}, {ignoredFoo}},
      {"not in a directory named imm, not xml, or a directory",
       {"share/ximm/Foo_imm.xml", "share/imm2/Foo_imm.xml", "share/Foo_imm.xml", "share/imm/Foo_imm.txt",
        "share/imm/Foo_imm.xml/readme"},
       {"Foo"}, noImmFile, {}, {ignoredFoo}},
      {"only schema names in the file name are tried", {"share/imm/Foo_dir/Bar_imm.xml"}, {"Foo", "Bar"}, noImmFile,
       {}, {"ERROR: Ignored schemas due to missed imm files: [Bar,Foo]"}},
      {"the schema name ends at the first _imm", {"share/imm/Foo_v2_imm.xml"}, {"Foo"}, noImmFile, {}, {ignoredFoo}},
      {"missing schemas listed in name order", {"share/imm/B_imm.xml"}, {"C", "A", "B"}, noImmFile,
       {{"B", "share/imm/B_imm.xml"}}, {"ERROR: Ignored schemas due to missed imm files: [A,C]"}},
      {"no share folder", {kAppdata.substr(1)}, {"Foo"}, noImmFile, {}, {walkFailed}},
      {"an entry that cannot be examined", {"share/imm/Foo_imm.xml", "share/deep/er/dangling@"}, {"Foo"}, noImmFile,
       {}, {"ERROR: Cannot read %R/share/deep/er/dangling: No such file or directory", walkFailed}},
      {"a schema name that is no valid expression", {"share/imm/Foo\\(_imm.xml"}, {"Foo\\("}, noImmFile, {},
       {"ERROR: Regular expression compilation failed with error: " + std::to_string(REG_EPAREN), walkFailed}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    TempDir package;
    for (const std::string& file : c.files) {
      if (file.back() != '@') {
        package.write(file, "<imm/>");
        continue;
      }
      std::string link = package.path() + "/" + file.substr(0, file.size() - 1);
      std::filesystem::create_directories(std::filesystem::path(link).parent_path());
      std::filesystem::create_symlink(package.path() + "/nowhere", link);
    }
    std::map<std::string, std::string> mapped;
    for (const auto& [schema, path] : c.mapped) mapped[schema] = package.path() + "/" + path;

    FilesManager files(package.path());
    EXPECT_EQ(c.result, files.findSchemasImmFiles(c.schemas));
    EXPECT_EQ(mapped, files.schemaImmFiles());
    EXPECT_EQ(expand(c.log, package.path()), loggedLines());
  }
}

// Which of two files holds the schema's classes cannot be told: the search
// fails and names both.
TEST(FilesManagerTest, TwoImmFilesOfOneSchemaFailTheSearch) {
  TempDir package;
  const std::string a = package.write("share/a/imm/Foo_imm.xml", "");
  const std::string b = package.write("share/b/imm/Foo_imm_notes.xml", "");
  FilesManager files(package.path());
  EXPECT_EQ(APP_RESULT_FAILED_TO_FIND_IMM_FILE, files.findSchemasImmFiles({"Foo"}));
  std::vector<std::string> lines = loggedLines();
  ASSERT_EQ(1u, lines.size());
  EXPECT_EQ(0u, lines[0].find("ERROR: Schema Foo has more than one IMM file, keep one of: [")) << lines[0];
  EXPECT_NE(std::string::npos, lines[0].find(a)) << lines[0];
  EXPECT_NE(std::string::npos, lines[0].find(b)) << lines[0];
}

TEST(FilesManagerTest, AnUnreadableDirectoryFailsTheWholeSearch) {
  if (geteuid() == 0) GTEST_SKIP() << "every directory is readable for root";
  TempDir package;
  package.write("share/imm/Foo_imm.xml", "");
  std::string locked = package.write("share/locked/file", "");
  locked.resize(locked.rfind('/'));
  ASSERT_EQ(0, chmod(locked.c_str(), 0));
  FilesManager files(package.path());
  EXPECT_EQ(APP_RESULT_FAILED_TO_FIND_IMM_FILE, files.findSchemasImmFiles({"Foo"}));
  chmod(locked.c_str(), 0700);
  EXPECT_EQ(std::vector<std::string>{"ERROR: Execution of find schemas failed, result = "
                                     "APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
            loggedLines());
}

}  // namespace
}  // namespace voskoamupgrader
