// The wrapper and the lookup over the simulated load-module handler.

#include "client/LmhiWrapper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "LogRecorder.h"
#include "TempDir.h"
#include "client/ModificationFileLookup.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class LmhiWrapperTest : public testing::Test {
 protected:
  void SetUp() override {
    node.write("lmhi/RadioNode/modification_files/CXP2/RadioNode_1_0_0_to_2_0_0.xml", "<x/>");
    node.write("lmhi/RadioNode/modification_files/CXP1/RadioNode_0_9_0_to_1_0_0.xml", "<x/>");
    setenv("VOSK_SIM_ROOT", node.path().c_str(), 1);
  }
  void TearDown() override { unsetenv("VOSK_SIM_ROOT"); }

  TempDir node;
  LmhiWrapper lmhi;
};

TEST_F(LmhiWrapperTest, AsksTheHandlerWithBoardTypeAndTag) {
  LmhiLms answer{};
  ASSERT_EQ(0, lmhi.getLms("RadioNode", "modification_files", &answer));
  ASSERT_EQ(2u, answer.nLms);
  EXPECT_STREQ("CXP1", answer.lms[0].lmName);
  ASSERT_EQ(1u, answer.lms[0].nFiles);
  EXPECT_EQ(node.path() + "/lmhi/RadioNode/modification_files/CXP1/RadioNode_0_9_0_to_1_0_0.xml",
            answer.lms[0].files[0].path);
  lmhi.freeBuffers(&answer);
  EXPECT_EQ(0u, answer.nLms);
  EXPECT_EQ(nullptr, answer.lms);

  EXPECT_NE(0, lmhi.getLms("RadioNode", "other_tag", &answer));
  EXPECT_NE(0, lmhi.getLms("Lrat", "modification_files", &answer));
}

TEST_F(LmhiWrapperTest, TheLookupListsTheSimulatedNodesFiles) {
  std::vector<std::string> files;
  getModificationFiles(lmhi, "RadioNode", &files);
  std::string tag = node.path() + "/lmhi/RadioNode/modification_files/";
  EXPECT_THAT(files, ElementsAre(tag + "CXP1/RadioNode_0_9_0_to_1_0_0.xml", tag + "CXP2/RadioNode_1_0_0_to_2_0_0.xml"));
  EXPECT_TRUE(LogRecorder::installed().contains("Found 2 modification files through LMHI using tag RadioNode"));

  std::vector<std::string> none;
  getModificationFiles(lmhi, "Lrat", &none);
  EXPECT_THAT(none, IsEmpty());
  EXPECT_TRUE(LogRecorder::installed().contains(
      "Could not get list of modification files from LMHI using tag modification_files, boardType Lrat, "
      "return code was 1"));
}

}  // namespace
