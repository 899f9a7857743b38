#include "xml/ThreadSlot.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

struct FirstTag;
struct SecondTag;
using First = ThreadSlot<FirstTag, int*>;
using Second = ThreadSlot<SecondTag, int*>;

TEST(ThreadSlotTest, EachTagAndThreadHasItsOwnValueAndScopesRestore) {
  static int outer = 1, inner = 2, theirs = 3;
  {
    First::Scope keepOuter(&outer);
    Second::Scope keepSecond(&inner);
    {
      First::Scope keepInner(&inner);
      EXPECT_EQ(&inner, First::get());
    }
    EXPECT_EQ(&outer, First::get());
    EXPECT_EQ(&inner, Second::get());
    int* seenByOther = &outer;
    std::thread([&seenByOther] {
      seenByOther = First::get();
      First::set(&theirs);
    }).join();
    EXPECT_EQ(nullptr, seenByOther);
    EXPECT_EQ(&outer, First::get());
  }
  EXPECT_EQ(nullptr, First::get());
  EXPECT_EQ(nullptr, Second::get());
}

}  // namespace
