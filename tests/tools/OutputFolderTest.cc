#include "OutputFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TempDir.h"

namespace wrappersim {
namespace {

TEST(OutputFolderTest, PrepareEmptiesAnEarlierRunsFolder) {
  TempDir dir;
  OutputFolder folder(dir.path() + "/node/out");
  std::string reason;
  ASSERT_TRUE(folder.prepare(dir.path() + "/node", &reason)) << reason;
  dir.write("node/out/rollback", "UPGRADE FAIL: old\n");
  dir.write("node/out/model/RadioNode.xml", "<x/>");
  ASSERT_TRUE(folder.prepare(dir.path() + "/node", &reason)) << reason;
  EXPECT_FALSE(TempDir::exists(dir.path() + "/node/out/rollback"));
  EXPECT_FALSE(TempDir::exists(dir.path() + "/node/out/model"));
  EXPECT_FALSE(folder.rollbackRequested());
}

TEST(OutputFolderTest, PrepareRefusesFoldersItMustNotWipe) {
  TempDir dir;
  dir.write("node/versions", "RadioNode 1_0_0 2_0_0\n");
  dir.write("home/notes.txt", "keep me");
  std::string reason;
  EXPECT_FALSE(OutputFolder(dir.path()).prepare(dir.path() + "/node", &reason));
  EXPECT_NE(std::string::npos, reason.find("contains the node"));
  EXPECT_FALSE(OutputFolder(dir.path() + "/node").prepare(dir.path() + "/node", &reason));
  EXPECT_FALSE(OutputFolder(dir.path() + "/home").prepare(dir.path() + "/node", &reason));
  EXPECT_NE(std::string::npos, reason.find("not written by an earlier run"));
  EXPECT_EQ("keep me", TempDir::read(dir.path() + "/home/notes.txt"));
  EXPECT_TRUE(TempDir::exists(dir.path() + "/node/versions"));
}

TEST(OutputFolderTest, LogIsReadOldestRotationFirst) {
  TempDir dir;
  OutputFolder folder(dir.path());
  dir.write("log/saLogUpgrade/upgrade.log", "newest\n");
  dir.write("log/saLogUpgrade/upgrade.log.1", "middle");
  dir.write("log/saLogUpgrade/upgrade.log.3", "oldest\n");
  EXPECT_EQ((std::vector<std::string>{folder.logDirectory() + "/upgrade.log.3", folder.logDirectory() +
                                      "/upgrade.log.1", folder.logDirectory() + "/upgrade.log"}),
            folder.logFiles());
  EXPECT_EQ("oldest\nmiddle\nnewest\n", folder.readLog());
}

TEST(OutputFolderTest, RollbackReasonsOneALine) {
  TempDir dir;
  OutputFolder folder(dir.path());
  EXPECT_TRUE(folder.rollbackReasons().empty());
  dir.write("rollback", "UPGRADE FAIL: one\n\nUPGRADE FAIL: two");
  EXPECT_TRUE(folder.rollbackRequested());
  EXPECT_EQ((std::vector<std::string>{"UPGRADE FAIL: one", "UPGRADE FAIL: two"}), folder.rollbackReasons());
}

TEST(OutputFolderTest, ModelFilesAreTheXmlFilesInNameOrder) {
  TempDir dir;
  OutputFolder folder(dir.path());
  dir.write("model/Transport.xml", "");
  dir.write("model/Equipment.xml", "");
  dir.write("model/RadioNode.xml.tmp", "");
  dir.write("discarded/RadioNode.xml", "");
  EXPECT_EQ((std::vector<std::string>{dir.path() + "/model/Equipment.xml", dir.path() + "/model/Transport.xml"}),
            folder.modelFiles());
  EXPECT_EQ(std::vector<std::string>{dir.path() + "/discarded/RadioNode.xml"}, folder.discardedFiles());
}

}  // namespace
}  // namespace wrappersim
