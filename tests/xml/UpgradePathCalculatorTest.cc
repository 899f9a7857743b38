#include "xml/UpgradePathCalculator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LogRecorder.h"

namespace {

using Files = std::vector<std::string>;

struct PathCase {
  const char* title;
  Files files;
  const char* from;
  const char* to;
  Files expected;
  const char* logged;  // the failure line, or null
};

void PrintTo(const PathCase& c, std::ostream* os) { *os << c.title; }

class PathTest : public testing::TestWithParam<PathCase> {};

TEST_P(PathTest, ChainsFilesGreedily) {
  const PathCase& c = GetParam();
  UpgradePathCalculator calculator;
  EXPECT_EQ(c.expected, calculator.calculatePath(c.files, c.from, c.to));
  if (c.logged != nullptr) {
    EXPECT_EQ(1u, LogRecorder::installed().count(c.logged)) << testing::PrintToString(LogRecorder::installed().texts());
  } else {
    EXPECT_TRUE(LogRecorder::installed().texts().empty());
  }
}

const PathCase kPathCases[] = {
    {"SingleStep", {"/up/modification_1_0_0_to_2_0_0.xml"}, "1_0_0", "2_0_0",
     {"/up/modification_1_0_0_to_2_0_0.xml"}, nullptr},
    {"ChainInListOrder",
     {"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_2_0_0.xml"}, "1_0_0", "2_0_0",
     {"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_2_0_0.xml"}, nullptr},
    {"ChainInReverseListOrder",
     {"/b/modification_1_1_0_to_2_0_0.xml", "/a/modification_1_0_0_to_1_1_0.xml"}, "1_0_0", "2_0_0",
     {"/a/modification_1_0_0_to_1_1_0.xml", "/b/modification_1_1_0_to_2_0_0.xml"}, nullptr},
    {"UnrelatedFilesAreIgnored",
     {"modification_0_9_0_to_1_0_0.xml", "modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_1_2_0.xml"},
     "1_0_0", "1_1_0", {"modification_1_0_0_to_1_1_0.xml"}, nullptr},
    {"FirstMatchHidesDirectFile",
     {"modification_1_0_0_to_1_1_0.xml", "modification_1_0_0_to_2_0_0.xml"}, "1_0_0", "2_0_0", {},
     "A modfile with from-version 1_1_0 could not be found"},
    {"DirectFileFirstInListWins",
     {"modification_1_0_0_to_2_0_0.xml", "modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_2_0_0.xml"},
     "1_0_0", "2_0_0", {"modification_1_0_0_to_2_0_0.xml"}, nullptr},
    {"CycleIsRefused",
     {"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_1_0_0.xml"}, "1_0_0", "3_0_0", {},
     "A modfile, modification_1_0_0_to_1_1_0.xml, was found more than once in the upgrade path"},
    {"EqualVersionsStillTakeAStep",
     {"modification_2_0_0_to_2_0_0.xml"}, "2_0_0", "2_0_0", {"modification_2_0_0_to_2_0_0.xml"}, nullptr},
    {"NoStartingFile", {"modification_1_0_0_to_2_0_0.xml"}, "0_9_0", "2_0_0", {},
     "A modfile with from-version 0_9_0 could not be found"},
    {"VersionsAreTextNotNumbers",
     {"modification_1_9_0_to_1_10_0.xml", "modification_1_10_0_to_1_11_0.xml"}, "1_9_0", "1_11_0",
     {"modification_1_9_0_to_1_10_0.xml", "modification_1_10_0_to_1_11_0.xml"}, nullptr},
    {"LeadingZeroIsAnotherVersion", {"modification_1_09_0_to_2_0_0.xml"}, "1_9_0", "2_0_0", {},
     "A modfile with from-version 1_9_0 could not be found"},
    {"NewSchemaFromNothing", {"modification_0_0_0_to_1_0_0.xml"}, "0_0_0", "1_0_0",
     {"modification_0_0_0_to_1_0_0.xml"}, nullptr},
    {"NamesWithoutMarkersNeverMatch",
     {"1_0_0_to_2_0_0.xml", "modification_1_0_0-2_0_0.xml", "modification_1_0_0_to_2_0_0.txt",
      "modification_1_0_0_to_2_0_0.xml"},
     "1_0_0", "2_0_0", {"modification_1_0_0_to_2_0_0.xml"}, nullptr},
    {"EmptyList", {}, "1_0_0", "2_0_0", {}, "A modfile with from-version 1_0_0 could not be found"},
};

INSTANTIATE_TEST_SUITE_P(Cases, PathTest, testing::ValuesIn(kPathCases),
                         [](const testing::TestParamInfo<PathCase>& info) { return info.param.title; });

struct NameCase {
  const char* file;
  bool valid;
  const char* from;
  const char* to;
};

TEST(PathNamesTest, ReadsBothVersionsOrRefusesTheName) {
  const NameCase cases[] = {
      {"modification_1_0_0_to_2_0_0.xml", true, "1_0_0", "2_0_0"},
      {"/pkg/lm/modification_3_1_4_to_3_2_0.xml", true, "3_1_4", "3_2_0"},
      {"modification__to_.xml", true, "", ""},
      {"modification_1_0_0.xml", false, "", ""},
      {"modification_1_0_0_to_2_0_0", false, "", ""},
      {"x.xml/modification_1_0_0_to_2_0_0", false, "", ""},
      {"/node/lmhi/Radio/modification_files/LM1/modification_1_0_0_to_2_0_0.xml", true, "1_0_0", "2_0_0"},
      {"/modification_1_0_0_to_2_0_0.xml/readme.txt", false, "", ""},
      {"", false, "", ""},
  };
  UpgradePathCalculator calculator;
  for (const NameCase& c : cases) {
    std::string from = "unset";
    std::string to = "unset";
    EXPECT_EQ(c.valid, calculator.getFromVersion(c.file, from)) << c.file;
    EXPECT_EQ(c.valid, calculator.getToVersion(c.file, to)) << c.file;
    if (c.valid) {
      EXPECT_EQ(c.from, from) << c.file;
      EXPECT_EQ(c.to, to) << c.file;
    }
  }
}

}  // namespace
