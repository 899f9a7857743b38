#include <gtest/gtest.h>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "LogRecorder.h"
#include "actions/DeleteMoTypeAction.h"

namespace {

TEST(DeleteMoTypeActionTest, RemovesTheGroupOfTheClass) {
  DeleteMoTypeAction action;
  InMemoryIctiHandler handler;
  handler.group("Old").createInstance("", "1", false, "");
  handler.group("Other");
  auto args = makeArguments({});
  EXPECT_TRUE(action.execute(&handler, handler.getInstanceGroup("Old", "", false), *args));
  EXPECT_FALSE(handler.has("Old"));
  EXPECT_TRUE(handler.has("Other"));
}

TEST(DeleteMoTypeActionTest, AbsentClassIsNoFailure) {
  DeleteMoTypeAction action;
  InMemoryIctiHandler handler;
  auto args = makeArguments({{"name", "ignored"}});
  EXPECT_TRUE(action.execute(&handler, nullptr, *args));
  EXPECT_TRUE(handler.failures.empty());
  EXPECT_EQ(1u, LogRecorder::installed().count("DeleteMoTypeAction::execute(): trying to delete a MO Type that does "
                                               "not exist. This is not a failure so continue."));
}

}  // namespace
