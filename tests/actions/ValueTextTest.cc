#include <gtest/gtest.h>

#include <string>

#include "actions/ValueText.h"
#include "safcImmCt.h"

namespace {

struct FitCase {
  uint32_t type;
  std::string text;
  bool fits;
};

class ValueTextFitsTest : public ::testing::TestWithParam<FitCase> {};

TEST_P(ValueTextFitsTest, JudgesTheTextByTheType) {
  EXPECT_EQ(GetParam().fits, ValueText::fits(GetParam().type, GetParam().text))
      << ValueText::typeName(GetParam().type) << " '" << GetParam().text << "'";
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, ValueTextFitsTest,
    ::testing::Values(
        FitCase{SA_IMM_ATTR_SAINT32T, "2147483647", true}, FitCase{SA_IMM_ATTR_SAINT32T, "2147483648", false},
        FitCase{SA_IMM_ATTR_SAINT32T, "-2147483648", true}, FitCase{SA_IMM_ATTR_SAINT32T, "-2147483649", false},
        FitCase{SA_IMM_ATTR_SAINT32T, "+7", true}, FitCase{SA_IMM_ATTR_SAINT32T, "12x", false},
        FitCase{SA_IMM_ATTR_SAINT32T, "", false}, FitCase{SA_IMM_ATTR_SAINT32T, " 5", false},
        FitCase{SA_IMM_ATTR_SAINT32T, "-", false}, FitCase{SA_IMM_ATTR_SAINT32T, "1.5", false},
        FitCase{SA_IMM_ATTR_SAUINT32T, "4294967295", true}, FitCase{SA_IMM_ATTR_SAUINT32T, "4294967296", false},
        FitCase{SA_IMM_ATTR_SAUINT32T, "-1", false}, FitCase{SA_IMM_ATTR_SAUINT32T, "0", true},
        FitCase{SA_IMM_ATTR_SAINT64T, "9223372036854775807", true},
        FitCase{SA_IMM_ATTR_SAINT64T, "9223372036854775808", false},
        FitCase{SA_IMM_ATTR_SAINT64T, "-9223372036854775808", true},
        FitCase{SA_IMM_ATTR_SAUINT64T, "18446744073709551615", true},
        FitCase{SA_IMM_ATTR_SAUINT64T, "18446744073709551616", false}, FitCase{SA_IMM_ATTR_SAUINT64T, "-0", false},
        FitCase{SA_IMM_ATTR_SADOUBLET, "1.500000", true}, FitCase{SA_IMM_ATTR_SADOUBLET, "-2e3", true},
        FitCase{SA_IMM_ATTR_SADOUBLET, "1.5x", false}, FitCase{SA_IMM_ATTR_SADOUBLET, "", false},
        FitCase{SA_IMM_ATTR_SASTRINGT, "", true}, FitCase{SA_IMM_ATTR_SASTRINGT, "any text", true},
        FitCase{SA_IMM_ATTR_SANAMET, std::string(599, 'n'), true},
        FitCase{SA_IMM_ATTR_SANAMET, std::string(600, 'n'), false}, FitCase{SA_IMM_ATTR_SAANYT, "00ff", false}));

TEST(ValueTextTest, ZeroIsRecognisedInEveryNumberForm) {
  EXPECT_TRUE(ValueText::isZero(SA_IMM_ATTR_SAINT32T, "-0"));
  EXPECT_TRUE(ValueText::isZero(SA_IMM_ATTR_SAUINT64T, "+0"));
  EXPECT_TRUE(ValueText::isZero(SA_IMM_ATTR_SADOUBLET, "0.000"));
  EXPECT_FALSE(ValueText::isZero(SA_IMM_ATTR_SADOUBLET, "0.001"));
  EXPECT_FALSE(ValueText::isZero(SA_IMM_ATTR_SAINT32T, "10"));
}

}  // namespace
