#include "AppResult.h"

#include <gtest/gtest.h>

#include "ListText.h"

namespace voskoamupgrader {
namespace {

TEST(AppResultTest, DecodesEveryCodeByNameAndOthersAsNotDecoded) {
  const struct {
    int value;
    const char* text;
  } cases[] = {
      {0, "APP_RESULT_OK"},
      {1, "APP_RESULT_NO_WPK_ROOT"},
      {2, "APP_RESULT_FAILED_TO_FIND_MODS"},
      {3, "APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE"},
      {4, "APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE"},
      {5, "APP_RESULT_FAILED_TO_FIND_IMM_FILE"},
      {6, "APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME"},
      {7, "NOT_DECODED (7)"},
      {17, "NOT_DECODED (17)"},
      {-1, "NOT_DECODED (-1)"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.text, appResultToString(static_cast<AppResult>(c.value))) << c.value;
  }
}

TEST(ListTextTest, BracketsAndJoinsWithCommasWithoutBlanks) {
  EXPECT_EQ("[]", listToString(std::vector<std::string>{}));
  EXPECT_EQ("[a]", listToString(std::vector<std::string>{"a"}));
  EXPECT_EQ("[b,a,c d]", listToString(std::vector<std::string>{"b", "a", "c d"}));
  EXPECT_EQ("[]", listToString(std::set<std::string>{}));
  EXPECT_EQ("[A,B,a]", listToString(std::set<std::string>{"a", "B", "A"}));
}

}  // namespace
}  // namespace voskoamupgrader
