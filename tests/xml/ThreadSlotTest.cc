#include "xml/ThreadSlot.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

struct FirstTag;
struct SecondTag;
using First = ThreadSlot<FirstTag, int*>;
using Second = ThreadSlot<SecondTag, int*>;

TEST(ThreadSlotTest, EachTagHasItsOwnValue) {
  int a = 1, b = 2;
  First::set(&a);
  Second::set(&b);
  EXPECT_EQ(&a, First::get());
  EXPECT_EQ(&b, Second::get());
  First::set(nullptr);
  Second::set(nullptr);
}

TEST(ThreadSlotTest, EachThreadHasItsOwnValue) {
  static int mine = 1;
  static int theirs = 2;
  First::Scope keep(&mine);
  int* seenByOther = &mine;
  std::thread([&seenByOther] {
    seenByOther = First::get();
    First::set(&theirs);
  }).join();
  EXPECT_EQ(nullptr, seenByOther);
  EXPECT_EQ(&mine, First::get());
}

TEST(ThreadSlotTest, ScopeRestoresThePreviousValue) {
  int outer = 1, inner = 2;
  {
    First::Scope keepOuter(&outer);
    {
      First::Scope keepInner(&inner);
      EXPECT_EQ(&inner, First::get());
    }
    EXPECT_EQ(&outer, First::get());
  }
  EXPECT_EQ(nullptr, First::get());
}

}  // namespace
