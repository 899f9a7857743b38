#include "parser/UpgradePathCalculator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogRecorder.h"

namespace {

using Files = std::vector<std::string>;

std::string mod(const char* from, const char* to) { return std::string("modification_") + from + "_to_" + to + ".xml"; }

// A chain over files in any order, a direct file hidden by an earlier one and a cycle are modtool's plans
// (PathPlanTest).
TEST(UpgradePathCalculatorTest, ChainsFilesGreedily) {
  const struct {
    const char* title;
    Files files;
    const char* from;
    const char* to;
    Files expected;
    const char* logged;  // the failure line, or null
  } cases[] = {
      {"unrelated files ignored", {mod("0_9_0", "1_0_0"), mod("1_0_0", "1_1_0"), mod("1_1_0", "1_2_0")}, "1_0_0",
       "1_1_0", {mod("1_0_0", "1_1_0")}, nullptr},
      {"direct file first in list wins", {mod("1_0_0", "2_0_0"), mod("1_0_0", "1_1_0"), mod("1_1_0", "2_0_0")},
       "1_0_0", "2_0_0", {mod("1_0_0", "2_0_0")}, nullptr},
      {"equal versions still take a step", {mod("2_0_0", "2_0_0")}, "2_0_0", "2_0_0", {mod("2_0_0", "2_0_0")},
       nullptr},
      {"leading zero is another version", {mod("1_09_0", "2_0_0")}, "1_9_0", "2_0_0", {},
       "A modfile with from-version 1_9_0 could not be found"},
      {"names without markers never match",
       {"1_0_0_to_2_0_0.xml", "modification_1_0_0-2_0_0.xml", "modification_1_0_0_to_2_0_0.txt",
        "/" + mod("1_0_0", "2_0_0") + "/readme.txt", "modification_1_0_0_to_2_0_0", mod("1_0_0", "2_0_0")},
       "1_0_0", "2_0_0", {mod("1_0_0", "2_0_0")}, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.title);
    LogRecorder::installed().clear();
    EXPECT_EQ(c.expected, UpgradePathCalculator().calculatePath(c.files, c.from, c.to));
    const std::vector<std::string> expectedLog = c.logged ? std::vector<std::string>{c.logged} : std::vector<std::string>{};
    std::vector<std::string> failures;
    for (const std::string& text : LogRecorder::installed().texts()) {
      if (text.rfind("Modification file ", 0) != 0) failures.push_back(text);
    }
    EXPECT_EQ(expectedLog, failures);
  }
}

// Authors see what each candidate is taken for before the chain is walked.
TEST(UpgradePathCalculatorTest, TellsWhatEachFileIsTakenFor) {
  LogRecorder::installed().clear();
  UpgradePathCalculator().calculatePath(
      {mod("1_0_0", "1_1_0"), mod("1_0_0", "2_0_0"), "/" + mod("1_1_0", "2_0_0") + "/readme.txt"}, "1_0_0", "2_0_0");
  EXPECT_EQ((std::vector<std::string>{
                "Modification file modification_1_0_0_to_1_1_0.xml takes the schema from 1_0_0 to 1_1_0",
                "Modification file modification_1_0_0_to_2_0_0.xml (from 1_0_0 to 2_0_0) is never used: "
                "modification_1_0_0_to_1_1_0.xml starts at 1_0_0 too and comes first",
                "Modification file /modification_1_1_0_to_2_0_0.xml/readme.txt is ignored: its name is not "
                "modification_<from>_to_<to>.xml",
                "A modfile with from-version 1_1_0 could not be found"}),
            LogRecorder::installed().texts());
}

}  // namespace
