#include "SimImmValueCodec.h"

#include <gtest/gtest.h>

#include <cstring>

#include "SimImmObject.h"
#include "safcImmCt.h"

namespace {

TEST(SimImmValueCodecTest, TextsOfEveryTypeParseAndFormatBackUnchanged) {
  struct Case {
    int type;
    const char* text;
    const char* formatted = nullptr;  // null: the text itself
  };
  const Case cases[] = {
      {SA_IMM_ATTR_SAINT32T, "-2147483648"},  {SA_IMM_ATTR_SAINT32T, "2147483647"},
      {SA_IMM_ATTR_SAUINT32T, "4294967295"},  {SA_IMM_ATTR_SAINT64T, "-9223372036854775808"},
      {SA_IMM_ATTR_SAUINT64T, "18446744073709551615"}, {SA_IMM_ATTR_SATIMET, "1700000000000000000"},
      {SA_IMM_ATTR_SAFLOATT, "0.1"},          {SA_IMM_ATTR_SADOUBLET, "0.1"},
      {SA_IMM_ATTR_SAFLOATT, "10.0067215"},   {SA_IMM_ATTR_SADOUBLET, "0.30000000000000004"},
      {SA_IMM_ATTR_SADOUBLET, "-1.25e+300"},  {SA_IMM_ATTR_SANAMET, "a=1,b=2"},
      {SA_IMM_ATTR_SANAMET, ""},              {SA_IMM_ATTR_SASTRINGT, " with blanks & <marks> "},
      {SA_IMM_ATTR_SAANYT, "00ff10a7"},       {SA_IMM_ATTR_SAANYT, ""},
      {SA_IMM_ATTR_SAANYT, "0AfF", "0aff"},
      // Integers are read in base 0, as C reads them.
      {SA_IMM_ATTR_SAUINT32T, "0x0002010f", "131343"}, {SA_IMM_ATTR_SAINT32T, "-0x10", "-16"},
      {SA_IMM_ATTR_SAINT32T, "017", "15"},    {SA_IMM_ATTR_SAUINT64T, "0XFFFFFFFFFFFFFFFF", "18446744073709551615"},
      {SA_IMM_ATTR_SATIMET, "0x2540BE400", "10000000000"}, {SA_IMM_ATTR_SAINT64T, "00", "0"},
  };
  for (const Case& c : cases) {
    SimImmArena arena;
    void* value = arena.allocate(SimImmValueCodec::valueSize(c.type));
    std::string why, text;
    ASSERT_TRUE(SimImmValueCodec::parse(c.type, c.text, value, arena, &why)) << c.text << ": " << why;
    ASSERT_TRUE(SimImmValueCodec::format(c.type, value, &text, &why)) << why;
    EXPECT_EQ(c.formatted != nullptr ? c.formatted : c.text, text) << SimImmValueCodec::nameOfType(c.type);
  }
}

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

// In a value "\," is a comma and "\\" a backslash; any other backslash is
// itself.
TEST(SimImmObjectTest, DnsSplitAtTheFirstUnescapedCommaAndJoinBack) {
  struct Case {
    const char* dn;
    bool ok;
    const char* attr;
    const char* value;
    const char* parent;
  };
  const Case cases[] = {
      {"a=1", true, "a", "1", ""},
      {"a=1,b=2,c=3", true, "a", "1", "b=2,c=3"},
      {"a=x\\,y,b=2", true, "a", "x,y", "b=2"},
      {"a=x\\\\,b=2", true, "a", "x\\", "b=2"},
      {"a=x\\\\\\,y,b=2", true, "a", "x\\,y", "b=2"},
      {"a=C:\\dir\\,b=2", true, "a", "C:\\dir,b=2", ""},
      {"a=C:\\dir,b=2", true, "a", "C:\\dir", "b=2"},
      {"a=end\\\\", true, "a", "end\\", ""},
      {"a=,b=2", true, "a", "", "b=2"},
      {"noequals,b=2", false, "", "", ""},
      {"=1,b=2", false, "", "", ""},
  };
  for (const Case& c : cases) {
    std::string attr, value, parent;
    ASSERT_EQ(c.ok, SimImmObject::splitDn(c.dn, &attr, &value, &parent)) << c.dn;
    if (!c.ok) continue;
    EXPECT_EQ(c.attr, attr) << c.dn;
    EXPECT_EQ(c.value, value) << c.dn;
    EXPECT_EQ(c.parent, parent) << c.dn;
    EXPECT_EQ(c.dn, SimImmObject::makeDn(attr, value, parent));
  }
  std::string attr, value, parent;
  ASSERT_TRUE(SimImmObject::splitDn("a=end\\", &attr, &value, &parent));
  EXPECT_EQ("end\\", value) << "a backslash at the end stands for itself";
  for (const char* written : {"\\,", "\\\\", "x\\", "\\", ",,,", "a\\b,c\\\\,\\"}) {
    ASSERT_TRUE(SimImmObject::splitDn(SimImmObject::makeDn("a", written, "b=1"), &attr, &value, &parent)) << written;
    EXPECT_EQ(written, value);
    EXPECT_EQ("b=1", parent) << written;
  }
}

// The naming attribute holds the RDN's value, or the whole RDN when the dn
// names another attribute or the value holds "=": either way the dn comes
// back from what the attribute holds.
TEST(SimImmObjectTest, NamingValuesFollowTheConventionOfTheDnAndGiveItBack) {
  struct Case {
    const char* dn;
    const char* rdnAttr;
    const char* namingValue;
  };
  const Case cases[] = {
      {"fooId=1,topId=1", "fooId", "1"},
      {"fooId=a\\,b", "fooId", "a,b"},
      {"svcStreamCfg=alarm,svcApp=logging", "svcStream", "svcStreamCfg=alarm"},
      {"x=a\\,b,p=1", "svcStream", "x=a\\,b"},
      {"fooId=a=b,p=1", "fooId", "fooId=a=b"},
  };
  for (const Case& c : cases) {
    std::string namingValue, parent, dn;
    ASSERT_TRUE(SimImmObject::namingValueOf(c.dn, c.rdnAttr, &namingValue, &parent)) << c.dn;
    EXPECT_EQ(c.namingValue, namingValue) << c.dn;
    ASSERT_TRUE(SimImmObject::dnOfNamingValue(c.rdnAttr, namingValue, parent, &dn)) << c.dn;
    EXPECT_EQ(c.dn, dn);
  }
  std::string dn;
  for (const char* noRdn : {"=1", "a=1,b=2", "a=1,"}) {
    EXPECT_FALSE(SimImmObject::dnOfNamingValue("a", noRdn, "p=1", &dn)) << noRdn;
  }
}

}  // namespace
