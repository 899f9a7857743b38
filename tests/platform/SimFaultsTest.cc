#include "SimFaults.h"

#include <gtest/gtest.h>

namespace {

TEST(SimFaultsTest, MalformedItemsAreSetAsideAndTheRestApplies) {
  struct Case {
    const char* items;
    size_t malformed;
  };
  const Case cases[] = {{"", 0},          {"Initialize", 1},   {"=3", 1},          {"Initialize=abc", 1},
                        {"Initialize=0", 1}, {"Initialize=3x0", 1}, {"Initialize=3xz", 1}, {",,Finalize=2,", 0},
                        {"Finalize=2+", 1},  {"Finalize=2+-1", 1}, {"Finalize=2x1+3", 0}, {"Finalize=2+0", 0}};
  for (const Case& c : cases) {
    SimFaults faults(c.items);
    EXPECT_EQ(c.malformed, faults.malformedItems().size()) << c.items;
  }
  SimFaults faults("bad,Finalize=2");
  EXPECT_EQ(2, faults.inject("Finalize"));
}

}  // namespace
