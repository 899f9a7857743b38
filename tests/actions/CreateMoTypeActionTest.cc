#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "LogRecorder.h"
#include "actions/CreateMoTypeAction.h"

namespace {

TEST(CreateMoTypeActionTest, CreatesAnEmptyGroupAlsoWithoutTheMoGroup) {
  CreateMoTypeAction action;
  InMemoryIctiHandler handler;
  auto args = makeArguments({{"moTypeName", "Fresh"}});
  EXPECT_TRUE(action.execute(&handler, nullptr, *args));
  ASSERT_TRUE(handler.has("Fresh"));
  EXPECT_EQ(0u, handler.group("Fresh").getNumberOfInstances());
  EXPECT_TRUE(LogRecorder::installed().contains("moTypeName is Fresh"));
}

TEST(CreateMoTypeActionTest, ExistingClassKeepsItsGroupAndSucceeds) {
  CreateMoTypeAction action;
  InMemoryIctiHandler handler;
  InstanceGroup& existing = handler.group("Fresh");
  existing.createInstance("", "1", false, "");
  auto args = makeArguments({{"moTypeName", "Fresh"}});
  EXPECT_TRUE(action.execute(&handler, &existing, *args));
  EXPECT_EQ(&existing, handler.getInstanceGroup("Fresh", "", false));
  EXPECT_EQ(std::vector<std::string>{"freshId=1"}, ldnsOf(existing));
  EXPECT_TRUE(handler.failures.empty());
}

TEST(CreateMoTypeActionTest, MissingNameFails) {
  CreateMoTypeAction action;
  InMemoryIctiHandler handler;
  auto args = makeArguments({{"name", "Fresh"}});
  EXPECT_FALSE(action.execute(&handler, nullptr, *args));
  EXPECT_FALSE(handler.has("Fresh"));
  EXPECT_EQ(std::vector<std::string>{"validateArgs failed in CreateMoType. Action did not have mandatory value "
                                     "moTypeName."},
            handler.failures);
}

}  // namespace
