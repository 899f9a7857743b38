#include "OutputFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TempDir.h"

namespace wrappersim {
namespace {

TEST(OutputFolderTest, ReadsLogOldestRotationFirstRollbackReasonsAndModelFilesInNameOrder) {
  TempDir dir;
  OutputFolder folder(dir.path());
  EXPECT_TRUE(folder.rollbackReasons().empty());
  const std::string log = dir.path() + "/log/saLogUpgrade/upgrade.log";
  dir.write("log/saLogUpgrade/upgrade.log", "newest\n");
  dir.write("log/saLogUpgrade/upgrade.log.1", "middle");
  dir.write("log/saLogUpgrade/upgrade.log.3", "oldest\n");
  dir.write("rollback", "UPGRADE FAIL: one\n\nUPGRADE FAIL: two");
  dir.write("model/Transport.xml", "");
  dir.write("model/Equipment.xml", "");
  dir.write("model/RadioNode.xml.tmp", "");
  dir.write("discarded/RadioNode.xml", "");

  EXPECT_EQ((std::vector<std::string>{log + ".3", log + ".1", log}), folder.logFiles());
  EXPECT_EQ("oldest\nmiddle\nnewest\n", folder.readLog());
  EXPECT_EQ((std::vector<std::string>{"UPGRADE FAIL: one", "UPGRADE FAIL: two"}), folder.rollbackReasons());
  EXPECT_EQ((std::vector<std::string>{dir.path() + "/model/Equipment.xml", dir.path() + "/model/Transport.xml"}),
            folder.modelFiles());
  EXPECT_EQ(std::vector<std::string>{dir.path() + "/discarded/RadioNode.xml"}, folder.discardedFiles());
}

}  // namespace
}  // namespace wrappersim
