// Values the node refuses or reads in unusual forms. Values of every type
// going through a whole run unchanged are the whole runs' business.

#include "SimImmValueCodec.h"

#include <gtest/gtest.h>

#include <cstring>

#include "safcImmCt.h"

namespace {

TEST(SimImmValueCodecTest, TextsThatAreNoValueOfTheTypeAreRefused) {
  struct Case {
    int type;
    std::string text;
  };
  const Case cases[] = {
      {SA_IMM_ATTR_SAINT32T, "12x"},        {SA_IMM_ATTR_SAINT32T, "2147483648"}, {SA_IMM_ATTR_SAINT32T, ""},
      {SA_IMM_ATTR_SAINT32T, " 1"},         {SA_IMM_ATTR_SAUINT32T, "-1"},        {SA_IMM_ATTR_SAUINT32T, "4294967296"},
      {SA_IMM_ATTR_SAINT64T, "9223372036854775808"}, {SA_IMM_ATTR_SAUINT64T, "+1"}, {SA_IMM_ATTR_SATIMET, "soon"},
      {SA_IMM_ATTR_SADOUBLET, "1.5.2"},     {SA_IMM_ATTR_SAFLOATT, ""},            {SA_IMM_ATTR_SAANYT, "abc"},
      {SA_IMM_ATTR_SAANYT, "zz"},           {SA_IMM_ATTR_SANAMET, std::string(600, 'n')},
      {SA_IMM_ATTR_SAINT32T, "08"},         {SA_IMM_ATTR_SAUINT32T, "0x"},        {SA_IMM_ATTR_SAUINT32T, "0x100000000"},
  };
  for (const Case& c : cases) {
    SimImmArena arena;
    void* value = arena.allocate(SimImmValueCodec::valueSize(c.type));
    std::string why;
    EXPECT_FALSE(SimImmValueCodec::parse(c.type, c.text, value, arena, &why)) << c.type << " \"" << c.text << "\"";
    EXPECT_FALSE(why.empty());
  }
}

// Values marked xs:base64Binary: bytes for SA_ANY_T, text for strings and
// names; no other type, and nothing that is no base64.
TEST(SimImmValueCodecTest, Base64ValuesAreDecodedForTheTypesThatTakeThem) {
  struct Case {
    int type;
    const char* base64;
    const char* formatted;  // null: refused
  };
  const Case cases[] = {
      {SA_IMM_ATTR_SAANYT, "AAEC/w==", "000102ff"}, {SA_IMM_ATTR_SAANYT, "", ""},
      {SA_IMM_ATTR_SASTRINGT, "aGk=", "hi"},         {SA_IMM_ATTR_SASTRINGT, " aGVs\n bG8= ", "hello"},
      {SA_IMM_ATTR_SANAMET, "YT0x", "a=1"},          {SA_IMM_ATTR_SAINT32T, "AQ==", nullptr},
      {SA_IMM_ATTR_SASTRINGT, "aGk", nullptr},       {SA_IMM_ATTR_SASTRINGT, "a=k=", nullptr},
      {SA_IMM_ATTR_SASTRINGT, "AGk=", nullptr},  // a zero byte
  };
  for (const Case& c : cases) {
    SimImmArena arena;
    void* value = arena.allocate(SimImmValueCodec::valueSize(c.type));
    std::string why, text;
    const bool parsed = SimImmValueCodec::parse(c.type, SimImmValue{c.base64, true}, value, arena, &why);
    ASSERT_EQ(c.formatted != nullptr, parsed) << c.base64 << ": " << why;
    if (!parsed) continue;
    ASSERT_TRUE(SimImmValueCodec::format(c.type, value, &text, &why)) << why;
    EXPECT_EQ(c.formatted, text);
  }
}

TEST(SimImmValueCodecTest, NameRecordsAreReadUpToTheirLengthOrTerminator) {
  SaNameT name{};
  name.length = 700;  // longer than the record: the text ends at its terminator
  std::memset(name.value, 'q', sizeof name.value);
  name.value[SA_MAX_NAME_LENGTH - 1] = '\0';
  std::string text, why;
  ASSERT_TRUE(SimImmValueCodec::format(SA_IMM_ATTR_SANAMET, &name, &text, &why));
  EXPECT_EQ(599u, text.size());
  name.length = 2;
  ASSERT_TRUE(SimImmValueCodec::format(SA_IMM_ATTR_SANAMET, &name, &text, &why));
  EXPECT_EQ("qq", text);
}

}  // namespace
