#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "LogRecorder.h"
#include "actions/RemoveAttributeAction.h"
#include "safcImmCt.h"

namespace {

class RemoveAttributeActionTest : public testing::Test {
 protected:
  RemoveAttributeActionTest() {
    InstanceGroup& cells = handler.group("Cell");
    first = cells.createInstance("ME=1", "1", false, "");
    second = cells.createInstance("ME=1", "2", false, "");
    setValues(*first, "obsolete", SA_IMM_ATTR_SAINT32T, {"1", "2"});
    setValues(*second, "obsolete", SA_IMM_ATTR_SAINT32T, {"3"});
  }

  bool run(const ArgumentList& list) {
    auto args = makeArguments(list);
    return action.execute(&handler, handler.getInstanceGroup("Cell", "", false), *args);
  }

  RemoveAttributeAction action;
  InMemoryIctiHandler handler;
  InstanceIf* first;
  InstanceIf* second;
};

TEST_F(RemoveAttributeActionTest, RemovesFromTheInstancesTheFilterAdmits) {
  EXPECT_TRUE(run({{"name", "obsolete"}, {"ldnValue", "cellId=2,ME=1"}}));
  EXPECT_EQ((std::vector<std::string>{"1", "2"}), valuesOf(*first, "obsolete"));
  EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*second, "obsolete"));
  EXPECT_TRUE(run({{"name", "obsolete"}}));
  EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*first, "obsolete"));
}

TEST_F(RemoveAttributeActionTest, InstanceWithoutTheAttributeSucceeds) {
  first->eraseAttribute("obsolete");
  LogRecorder::installed().clear();
  EXPECT_TRUE(run({{"name", "obsolete"}}));
  EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*second, "obsolete"));
  EXPECT_EQ(1u, LogRecorder::installed().count("Tried to remove non-existing Attribute obsolete"));
  EXPECT_TRUE(handler.failures.empty());
}

TEST_F(RemoveAttributeActionTest, FailureTexts) {
  auto withoutName = makeArguments({{"value", "x"}});
  EXPECT_FALSE(action.execute(&handler, handler.getInstanceGroup("Cell", "", false), *withoutName));
  auto complete = makeArguments({{"name", "obsolete"}, {"value", "x"}});
  EXPECT_FALSE(action.execute(&handler, nullptr, *complete));
  EXPECT_EQ((std::vector<std::string>{
                "RemoveAttributeAction requires argument name",
                "Action Failed: RemoveAttribute: No instance group to operate on. Action arguments: name = obsolete, "
                "value = x ",
            }),
            handler.failures);
  EXPECT_EQ((std::vector<std::string>{"1", "2"}), valuesOf(*first, "obsolete"));
}

}  // namespace
