#include "SimFaults.h"

#include <gtest/gtest.h>

namespace {

TEST(SimFaultsTest, ItemsApplyByCallSubjectAndCount) {
  SimFaults faults("Initialize=31x2,ReadInstances@EUtranCellFDD=9,Finalize=2");
  EXPECT_EQ(31, faults.inject("Initialize"));
  EXPECT_EQ(31, faults.inject("Initialize", "RadioNode"));
  EXPECT_EQ(0, faults.inject("Initialize"));
  EXPECT_EQ(0, faults.inject("ReadInstances", "Cell"));
  EXPECT_EQ(0, faults.inject("ReadInstances"));
  EXPECT_EQ(9, faults.inject("ReadInstances", "EUtranCellFDD"));
  EXPECT_EQ(9, faults.inject("ReadInstances", "EUtranCellFDD"));
  for (int i = 0; i < 5; ++i) EXPECT_EQ(2, faults.inject("Finalize"));
  EXPECT_EQ(0, faults.inject("WriteInstances"));
  EXPECT_TRUE(faults.malformedItems().empty());
}

TEST(SimFaultsTest, MalformedItemsAreSetAsideAndTheRestApplies) {
  struct Case {
    const char* items;
    size_t malformed;
  };
  const Case cases[] = {{"", 0},          {"Initialize", 1},   {"=3", 1},          {"Initialize=abc", 1},
                        {"Initialize=0", 1}, {"Initialize=3x0", 1}, {"Initialize=3xz", 1}, {",,Finalize=2,", 0}};
  for (const Case& c : cases) {
    SimFaults faults(c.items);
    EXPECT_EQ(c.malformed, faults.malformedItems().size()) << c.items;
  }
  SimFaults faults("bad,Finalize=2");
  EXPECT_EQ(2, faults.inject("Finalize"));
}

}  // namespace
