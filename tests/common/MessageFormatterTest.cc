#include "common/MessageFormatter.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

class MessageFormatterTest : public testing::Test {
 protected:
  void TearDown() override { MessageFormatter::setPrefix(nullptr); }
};

// Every record of the whole runs shows the schema thread's prefix.
TEST_F(MessageFormatterTest, OtherThreadsKeepTheirOwnBuffer) {
  MessageFormatter::setPrefix("Main");
  const char* mine = MessageFormatter::format("mine");
  std::string theirs;
  std::thread([&] { theirs = MessageFormatter::format("theirs"); }).join();
  EXPECT_EQ("theirs", theirs);
  EXPECT_STREQ("Main: mine", mine);
}

TEST_F(MessageFormatterTest, AMessageMayQuoteThePreviousOne) {
  MessageFormatter::setPrefix("S");
  const char* first = MessageFormatter::format("first");
  EXPECT_STREQ("S: again S: first", MessageFormatter::format("again %s", first));
  const char* same = MessageFormatter::format("x");
  EXPECT_EQ(same, MessageFormatter::copy(same));
  EXPECT_STREQ("S: x", same);
}

TEST_F(MessageFormatterTest, PlainTextsCarryNoPrefixAndAreNotCut) {
  MessageFormatter::setPrefix("S");
  std::string longText(3000, 'b');
  EXPECT_EQ("reason 7", MessageFormatter::plain("reason %d", 7));
  EXPECT_EQ(longText, MessageFormatter::plain("%s", longText.c_str()));
  EXPECT_EQ("", MessageFormatter::plain("%s", ""));
}

TEST_F(MessageFormatterTest, LongTextsAreCutNotOverflowed) {
  std::string longText(5000, 'a');
  MessageFormatter::setPrefix(std::string(5000, 'p').c_str());
  std::string message = MessageFormatter::format("%s", longText.c_str());
  EXPECT_EQ(MessageFormatter::kPrefixLimit + 2 + MessageFormatter::kMessageArea - 1, message.size());
  EXPECT_EQ(": a", message.substr(MessageFormatter::kPrefixLimit, 3));
}

}  // namespace
