// `plan` on lists of modification files: the path, where the chain breaks,
// and the files that can never be used.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PathPlan.h"

namespace modtool {
namespace {

struct PlanCase {
  const char* name;
  std::vector<std::string> files;
  const char* from;
  const char* to;
  PathPlan::Kind kind;
  size_t steps;  // of the path, or of the chain as far as it goes
  const char* missing;
  const char* repeated;
  std::vector<std::string> unusable;
  std::vector<std::string> offPath;
};

const PlanCase kCases[] = {
    {"TwoSteps", {"a/modification_1_1_0_to_2_0_0.xml", "b/modification_1_0_0_to_1_1_0.xml"}, "1_0_0", "2_0_0",
     PathPlan::Kind::kPath, 2, "", "", {}, {}},
    {"ShadowedAlternativeBreaksTheChain",
     {"modification_1_0_0_to_1_1_0.xml", "modification_1_0_0_to_2_0_0.xml"}, "1_0_0", "2_0_0",
     PathPlan::Kind::kNoPath, 1, "1_1_0", "", {"modification_1_0_0_to_2_0_0.xml"}, {}},
    {"Cycle", {"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_1_0_0.xml"}, "1_0_0", "2_0_0",
     PathPlan::Kind::kNoPath, 2, "", "modification_1_0_0_to_1_1_0.xml", {}, {}},
    {"NameWithoutVersions", {"mod_1_0_0_to_2_0_0.xml", "modification_1_0_0_to_2_0_0.xml"}, "1_0_0", "2_0_0",
     PathPlan::Kind::kPath, 1, "", "", {"mod_1_0_0_to_2_0_0.xml"}, {}},
    {"SameVersion", {"modification_1_0_0_to_2_0_0.xml"}, "2_0_0", "2_0_0", PathPlan::Kind::kSameVersion, 0, "", "",
     {}, {"modification_1_0_0_to_2_0_0.xml"}},
    {"NewSchema", {}, "0_0_0", "1_0_0", PathPlan::Kind::kNewSchema, 0, "", "", {}, {}},
};

class PathPlanTest : public ::testing::TestWithParam<PlanCase> {};

TEST_P(PathPlanTest, TellsThePathOrWhereItBreaks) {
  const PlanCase& c = GetParam();
  const PathPlan plan = PathPlan::make(c.files, c.from, c.to);
  EXPECT_EQ(plan.kind, c.kind) << c.name;
  EXPECT_EQ(plan.steps.size(), c.steps) << c.name;
  EXPECT_EQ(plan.missingVersion, c.missing) << c.name;
  EXPECT_EQ(plan.repeatedFile, c.repeated) << c.name;
  std::vector<std::string> unusable;
  for (const UnusableFile& file : plan.unusable) unusable.push_back(file.file);
  EXPECT_EQ(unusable, c.unusable) << c.name;
  EXPECT_EQ(plan.offPath, c.offPath) << c.name;
}

INSTANTIATE_TEST_SUITE_P(Plans, PathPlanTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<PlanCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace modtool
