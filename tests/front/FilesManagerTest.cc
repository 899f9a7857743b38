#include "FilesManager.h"

#include <dirent.h>
#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdlib>
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

// Replaces every "%R" in `text` by `root`.
std::string expand(std::string text, const std::string& root) {
  for (size_t at = text.find("%R"); at != std::string::npos; at = text.find("%R", at + root.size())) {
    text.replace(at, 2, root);
  }
  return text;
}

std::vector<std::string> expand(const std::vector<std::string>& texts, const std::string& root) {
  std::vector<std::string> result;
  for (const std::string& text : texts) result.push_back(expand(text, root));
  return result;
}

TEST(FilesManagerTest, FindsTheAppdataFileBelowThePackageRoot) {
  TempDir withAppdata;
  withAppdata.write(kAppdata.substr(1), "<r/>");
  TempDir withoutAppdata;
  withoutAppdata.write("appdata/other.xml", "<r/>");
  const struct {
    std::string root;
    AppResult result;
    std::vector<std::string> found;
    std::vector<std::string> log;
  } cases[] = {
      {"", APP_RESULT_NO_WPK_ROOT, {}, {"ERROR: Unable to get WPK_PATH environment variable."}},
      {withAppdata.path(), APP_RESULT_OK, {"%R" + kAppdata}, {}},
      {withoutAppdata.path(), APP_RESULT_FAILED_TO_FIND_MODS, {}, {"ERROR: Unable to find mods file: %R" + kAppdata}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.root);
    LogRecorder::installed().clear();
    FilesManager files(c.root);
    EXPECT_EQ(c.result, files.findAppdataFiles());
    EXPECT_EQ(expand(c.found, c.root), files.appdataFiles());
    EXPECT_EQ(expand(c.log, c.root), loggedLines());
  }
}

TEST(FilesManagerTest, TakesThePackageRootFromTheEnvironment) {
  TempDir package;
  package.write(kAppdata.substr(1), "<r/>");
  setenv("WPK_PATH", package.path().c_str(), 1);
  FilesManager withRoot;
  setenv("WPK_PATH", "", 1);
  FilesManager withEmptyRoot;
  unsetenv("WPK_PATH");
  FilesManager withoutRoot;

  EXPECT_EQ(APP_RESULT_OK, withRoot.findAppdataFiles());
  EXPECT_EQ(std::vector<std::string>{package.path() + kAppdata}, withRoot.appdataFiles());
  EXPECT_EQ(APP_RESULT_NO_WPK_ROOT, withEmptyRoot.findAppdataFiles());
  EXPECT_EQ(APP_RESULT_NO_WPK_ROOT, withoutRoot.findAppdataFiles());
}

TEST(FilesManagerTest, MatchesImmFilesBySchemaName) {
  const std::string walkFailed =
      "ERROR: Execution of find schemas failed, result = APP_RESULT_FAILED_TO_FIND_IMM_FILE";
  const struct {
    const char* name;
    std::vector<std::string> files;  // below the package root
    std::set<std::string> schemas;
    AppResult result;
    std::map<std::string, std::string> mapped;  // schema -> path below the root
    std::vector<std::string> log;
  } cases[] = {
      {"file in an imm directory at any depth",
       {"share/x/imm/Foo_imm_classes.xml"},
       {"Foo"},
       APP_RESULT_OK,
       {{"Foo", "share/x/imm/Foo_imm_classes.xml"}},
       {}},
      {"several schemas, files of other schemas ignored",
       {"share/a/imm/Foo_imm.xml", "share/b/imm/FooBar_imm.xml", "share/b/imm/Other_imm.xml", "share/b/imm/readme"},
       {"Foo", "FooBar"},
       APP_RESULT_OK,
       {{"Foo", "share/a/imm/Foo_imm.xml"}, {"FooBar", "share/b/imm/FooBar_imm.xml"}},
       {}},
      {"file name without the _imm marker fails the search",
       {"share/imm/Foo_classes.xml"},
       {"Foo"},
       APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME,
       {},
       {"ERROR: Unable to detect schema name when parsing find command output, expected path pattern: "
        "*<SchemaName>_*.xml, found line: %R/share/imm/Foo_classes.xml"}},
      {"schema name must be followed by an underscore",
       {"share/imm/FooBar_imm.xml"},
       {"Foo"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {"ERROR: Ignored schemas due to missed imm files: [Foo]"}},
      {"the longer schema name matches its own file",
       {"share/imm/FooBar_imm.xml"},
       {"FooBar"},
       APP_RESULT_OK,
       {{"FooBar", "share/imm/FooBar_imm.xml"}},
       {}},
      {"not in a directory named imm, not xml, or a directory",
       {"share/ximm/Foo_imm.xml", "share/imm2/Foo_imm.xml", "share/Foo_imm.xml", "share/imm/Foo_imm.txt",
        "share/imm/Foo_imm.xml/readme"},
       {"Foo"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {"ERROR: Ignored schemas due to missed imm files: [Foo]"}},
      {"only schema names in the file name are tried",
       {"share/imm/Foo_dir/Bar_imm.xml"},
       {"Foo", "Bar"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {"ERROR: Ignored schemas due to missed imm files: [Bar,Foo]"}},
      {"the schema is read from the file name up to the first _imm",
       {"share/imm/Foo_v2_imm.xml"},
       {"Foo"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {"ERROR: Ignored schemas due to missed imm files: [Foo]"}},
      {"missing schemas are listed in name order",
       {"share/imm/B_imm.xml"},
       {"C", "A", "B"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {{"B", "share/imm/B_imm.xml"}},
       {"ERROR: Ignored schemas due to missed imm files: [A,C]"}},
      {"no share folder",
       {"appdata/voskOamUpgradeModLm.xml"},
       {"Foo"},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {walkFailed}},
      {"a schema name that is no valid expression",
       {"share/imm/Foo\\(_imm.xml"},
       {"Foo\\("},
       APP_RESULT_FAILED_TO_FIND_IMM_FILE,
       {},
       {"ERROR: Regular expression compilation failed with error: " + std::to_string(REG_EPAREN), walkFailed}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    TempDir package;
    for (const std::string& file : c.files) package.write(file, "<imm/>");
    std::map<std::string, std::string> mapped;
    for (const auto& [schema, path] : c.mapped) mapped[schema] = package.path() + "/" + path;

    FilesManager files(package.path());
    EXPECT_EQ(c.result, files.findSchemasImmFiles(c.schemas));
    EXPECT_EQ(mapped, files.schemaImmFiles());
    EXPECT_EQ(expand(c.log, package.path()), loggedLines());
  }
}

// The order in which the directory lists the names of `names`.
std::vector<std::string> directoryOrder(const std::string& directory, const std::set<std::string>& names) {
  std::vector<std::string> order;
  DIR* dir = opendir(directory.c_str());
  for (const dirent* entry = readdir(dir); entry != nullptr; entry = readdir(dir)) {
    if (names.count(entry->d_name) != 0) order.push_back(entry->d_name);
  }
  closedir(dir);
  return order;
}

TEST(FilesManagerTest, TheImmFileMetLastWins) {
  TempDir package;
  package.write("share/a/imm/Foo_imm.xml", "");
  package.write("share/b/imm/Foo_imm_classes.xml", "");
  std::vector<std::string> order = directoryOrder(package.path() + "/share", {"a", "b"});
  ASSERT_EQ(2u, order.size());
  std::string last = package.path() + "/share/" + order[1] + (order[1] == "a" ? "/imm/Foo_imm.xml"
                                                                               : "/imm/Foo_imm_classes.xml");

  FilesManager files(package.path());
  EXPECT_EQ(APP_RESULT_OK, files.findSchemasImmFiles({"Foo"}));
  EXPECT_EQ((std::map<std::string, std::string>{{"Foo", last}}), files.schemaImmFiles());
}

TEST(FilesManagerTest, AnEntryThatCannotBeExaminedFailsTheWholeSearch) {
  TempDir package;
  package.write("share/imm/Foo_imm.xml", "");
  std::filesystem::create_directories(package.path() + "/share/deep/er");
  std::filesystem::create_symlink(package.path() + "/nowhere", package.path() + "/share/deep/er/dangling");

  FilesManager files(package.path());
  EXPECT_EQ(APP_RESULT_FAILED_TO_FIND_IMM_FILE, files.findSchemasImmFiles({"Foo"}));
  EXPECT_TRUE(files.schemaImmFiles().empty());
  EXPECT_EQ(std::vector<std::string>{"ERROR: Execution of find schemas failed, result = "
                                     "APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
            loggedLines());
}

TEST(FilesManagerTest, AnUnreadableDirectoryFailsTheWholeSearch) {
  if (geteuid() == 0) GTEST_SKIP() << "every directory is readable for root";
  TempDir package;
  package.write("share/imm/Foo_imm.xml", "");
  std::string locked = package.path() + "/share/locked";
  package.write("share/locked/file", "");
  ASSERT_EQ(0, chmod(locked.c_str(), 0));

  FilesManager files(package.path());
  EXPECT_EQ(APP_RESULT_FAILED_TO_FIND_IMM_FILE, files.findSchemasImmFiles({"Foo"}));
  EXPECT_EQ(std::vector<std::string>{"ERROR: Execution of find schemas failed, result = "
                                     "APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
            loggedLines());
  chmod(locked.c_str(), 0700);
}

TEST(FilesManagerTest, AnEmptySchemaSetSearchesNothing) {
  // The root does not exist: any look at the disk would fail.
  FilesManager files("/nonexistent/package/root");
  EXPECT_EQ(APP_RESULT_OK, files.findSchemasImmFiles({}));
  EXPECT_TRUE(files.schemaImmFiles().empty());
  EXPECT_TRUE(loggedLines().empty());
}

TEST(FilesManagerTest, WithoutAPackageRootTheSchemaSearchFailsSilently) {
  FilesManager files("");
  EXPECT_EQ(APP_RESULT_NO_WPK_ROOT, files.findSchemasImmFiles({"Foo"}));
  EXPECT_EQ(APP_RESULT_NO_WPK_ROOT, files.findSchemasImmFiles({}));
  EXPECT_TRUE(loggedLines().empty());
}

}  // namespace
}  // namespace voskoamupgrader
