#include "LineSplitter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace wrappersim {
namespace {

std::vector<std::string> feed(LineSplitter* splitter, const char* text) {
  return splitter->feed(text, std::strlen(text));
}

TEST(LineSplitterTest, LinesSplitAcrossReads) {
  LineSplitter splitter;
  EXPECT_TRUE(feed(&splitter, "Entering the never").empty());
  EXPECT_EQ((std::vector<std::string>{"Entering the never ending", ""}), feed(&splitter, " ending\n\nsleep was"));
  EXPECT_EQ((std::vector<std::string>{"sleep was disturbed"}), feed(&splitter, " disturbed\ntail"));
  EXPECT_EQ("tail", splitter.takeRest());
  EXPECT_EQ("", splitter.takeRest());
}

}  // namespace
}  // namespace wrappersim
