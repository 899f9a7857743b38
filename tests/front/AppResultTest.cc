#include "AppResult.h"

#include <gtest/gtest.h>

namespace voskoamupgrader {
namespace {

// The codes 1, 2, 3, 5 and 6 are read in the run's failure messages (FrontProcessTest).
TEST(AppResultTest, DecodesTheTableAndNothingPastIt) {
  const struct {
    int value;
    const char* text;
  } cases[] = {{0, "APP_RESULT_OK"},
               {4, "APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE"},
               {6, "APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"},
               {7, "NOT_DECODED (7)"},
               {-1, "NOT_DECODED (-1)"}};
  for (const auto& c : cases) EXPECT_EQ(c.text, appResultToString(static_cast<AppResult>(c.value))) << c.value;
}

}  // namespace
}  // namespace voskoamupgrader
