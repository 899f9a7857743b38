#include "SimLmhi.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "TempDir.h"
#include "lmhi.h"

namespace {

// Faults are injected by the whole runs (FaultMatrixTest); this test runs without.
TEST(SimLmhiTest, RefusedCallsLeaveAnEmptyAnswer) {
  TempDir node;
  node.write("lmhi/RadioNode/modification_files/CXP1/a.xml", "a");
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
      {"tag with a separator", "RadioNode", "modification_files/stray.xml", root.c_str(), simlmhi::kInvalidArgument},
      {"board type leaves the tree", "..", "lmhi", root.c_str(), simlmhi::kInvalidArgument},
      {"null board type", nullptr, "modification_files", root.c_str(), simlmhi::kInvalidArgument},
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
  char board[] = "RadioNode", tag[] = "modification_files";
  EXPECT_EQ(simlmhi::kInvalidArgument, Lmhi_get_lms(board, tag, nullptr));
  unsetenv("VOSK_SIM_ROOT");
}

}  // namespace
