// The action base's steps (a missing group, invalid arguments, every instance visited with a filter) are
// tested through real actions in tests/actions.

#include "runtime/UpgradeAction.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(RdnValueTest, ValueOfTheFirstRdnUnescaped) {
  const std::pair<const char*, const char*> cases[] = {
      {"aId=1,bId=2", "1"}, {"aId=,bId=2", ""},  {"aId=x=y,b=1", "x=y"},        {"noEquals", ""},
      {"a,b=2,c=3", ""},    {"aId=x\\,y,b=1", "x,y"}, {"aId=x\\\\,b=1", "x\\"}, {"id=struct 1", "struct 1"}};
  for (const auto& [ldn, value] : cases) EXPECT_EQ(value, UpgradeAction::rdnValue(ldn)) << ldn;
}

}  // namespace
