#include "SimLmhi.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "SimFaults.h"
#include "TempDir.h"
#include "lmhi.h"

namespace {

struct Module {
  std::string name;
  std::vector<std::string> fileNames;
  std::vector<std::string> paths;
};

std::vector<Module> modules(const LmhiLms& answer) {
  std::vector<Module> result;
  for (uint32_t i = 0; i < answer.nLms; ++i) {
    const LmhiLoadModule& lm = answer.lms[i];
    Module m{lm.lmName, {}, {}};
    EXPECT_STREQ("", lm.lmId);
    EXPECT_STREQ("", lm.lmRevision);
    for (uint32_t j = 0; j < lm.nFiles; ++j) {
      m.fileNames.push_back(lm.files[j].fileName);
      m.paths.push_back(lm.files[j].path);
    }
    result.push_back(m);
  }
  return result;
}

class SimLmhiTest : public testing::Test {
 protected:
  void SetUp() override {
    setenv("VOSK_SIM_ROOT", node.path().c_str(), 1);
    unsetenv("VOSK_SIM_FAULTS");
    SimFaults::reload();
    tag = node.path() + "/lmhi/RadioNode/modification_files";
    node.write("lmhi/RadioNode/modification_files/CXP9/b.xml", "b");
    node.write("lmhi/RadioNode/modification_files/CXP9/a.xml", "a");
    node.write("lmhi/RadioNode/modification_files/CXP1/z.xml", "z");
    node.write("lmhi/RadioNode/modification_files/CXP1/nested/ignored.xml", "folders in a load module are no files");
    node.write("lmhi/RadioNode/modification_files/stray.xml", "files beside load modules are no load modules");
    node.write("lmhi/RadioNode/other_tag/CXP5/c.xml", "c");
  }
  void TearDown() override {
    unsetenv("VOSK_SIM_ROOT");
    unsetenv("VOSK_SIM_FAULTS");
    SimFaults::reload();
  }

  int getLms(const char* boardType, const char* tag, LmhiLms* answer) {
    std::string b = boardType, t = tag;
    return Lmhi_get_lms(b.data(), t.data(), answer);
  }

  TempDir node;
  std::string tag;
};

TEST_F(SimLmhiTest, LoadModulesAndTheirFilesComeInNameOrderWithAbsolutePaths) {
  LmhiLms answer{};
  ASSERT_EQ(simlmhi::kOk, getLms("RadioNode", "modification_files", &answer));
  std::vector<Module> found = modules(answer);
  ASSERT_EQ(2u, found.size());
  EXPECT_EQ("CXP1", found[0].name);
  EXPECT_EQ(std::vector<std::string>{"z.xml"}, found[0].fileNames);
  EXPECT_EQ(std::vector<std::string>{tag + "/CXP1/z.xml"}, found[0].paths);
  EXPECT_EQ("CXP9", found[1].name);
  EXPECT_EQ((std::vector<std::string>{"a.xml", "b.xml"}), found[1].fileNames);
  EXPECT_EQ((std::vector<std::string>{tag + "/CXP9/a.xml", tag + "/CXP9/b.xml"}), found[1].paths);
  Lmhi_free_buffers(&answer);
  EXPECT_EQ(0u, answer.nLms);
  EXPECT_EQ(nullptr, answer.lms);
}

TEST_F(SimLmhiTest, ARelativeNodeRootGivesAbsolutePaths) {
  char* previous = get_current_dir_name();
  ASSERT_EQ(0, chdir(node.path().c_str()));
  setenv("VOSK_SIM_ROOT", ".", 1);
  LmhiLms answer{};
  int rc = getLms("RadioNode", "other_tag", &answer);
  std::vector<Module> found = modules(answer);
  Lmhi_free_buffers(&answer);
  ASSERT_EQ(0, chdir(previous));
  std::free(previous);

  ASSERT_EQ(simlmhi::kOk, rc);
  ASSERT_EQ(1u, found.size());
  EXPECT_EQ(std::vector<std::string>{node.path() + "/lmhi/RadioNode/other_tag/CXP5/c.xml"}, found[0].paths);
}

TEST_F(SimLmhiTest, RefusedCallsLeaveAnEmptyAnswer) {
  struct Case {
    const char* name;
    const char* boardType;
    const char* tag;
    const char* root;
    int expected;
  };
  const std::string root = node.path();
  const Case cases[] = {
      {"unknown board type", "Lrat", "modification_files", root.c_str(), simlmhi::kNotFound},
      {"unknown tag", "RadioNode", "other", root.c_str(), simlmhi::kNotFound},
      {"tag with a separator", "RadioNode", "modification_files/stray.xml", root.c_str(), simlmhi::kInvalidArgument},
      {"board type leaves the tree", "..", "lmhi", root.c_str(), simlmhi::kInvalidArgument},
      {"empty board type", "", "modification_files", root.c_str(), simlmhi::kInvalidArgument},
      {"null board type", nullptr, "modification_files", root.c_str(), simlmhi::kInvalidArgument},
      {"null tag", "RadioNode", nullptr, root.c_str(), simlmhi::kInvalidArgument},
      {"no node", "RadioNode", "modification_files", nullptr, simlmhi::kNoNode},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    if (c.root != nullptr) {
      setenv("VOSK_SIM_ROOT", c.root, 1);
    } else {
      unsetenv("VOSK_SIM_ROOT");
    }
    LmhiLms answer{7, reinterpret_cast<LmhiLoadModule*>(&answer)};
    std::string b = c.boardType != nullptr ? c.boardType : "", t = c.tag != nullptr ? c.tag : "";
    EXPECT_EQ(c.expected, Lmhi_get_lms(c.boardType != nullptr ? b.data() : nullptr,
                                       c.tag != nullptr ? t.data() : nullptr, &answer));
    EXPECT_EQ(0u, answer.nLms);
    EXPECT_EQ(nullptr, answer.lms);
  }
  EXPECT_EQ(simlmhi::kInvalidArgument, getLms("RadioNode", "modification_files", nullptr));
}

TEST_F(SimLmhiTest, FreeingNothingIsHarmless) {
  LmhiLms answer{};
  Lmhi_free_buffers(&answer);
  Lmhi_free_buffers(nullptr);
  EXPECT_EQ(0u, answer.nLms);
}

}  // namespace
