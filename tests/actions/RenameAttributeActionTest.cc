#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ActionTestSupport.h"
#include "InMemoryIctiHandler.h"
#include "actions/RenameAttributeAction.h"
#include "safcImmCt.h"

namespace {

class RenameAttributeActionTest : public testing::Test {
 protected:
  RenameAttributeActionTest() {
    InstanceGroup& cells = handler.group("Cell");
    first = cells.createInstance("ME=1", "1", false, "");
    second = cells.createInstance("ME=1", "2", false, "");
  }

  bool run(const ArgumentList& list) {
    auto args = makeArguments(list);
    return action.execute(&handler, handler.getInstanceGroup("Cell", "", false), *args);
  }

  RenameAttributeAction action;
  InMemoryIctiHandler handler;
  InstanceIf* first;
  InstanceIf* second;
};

TEST_F(RenameAttributeActionTest, ValuesMoveInIndexOrderWithTheirType) {
  struct Case {
    uint32_t type;
    std::vector<std::string> values;
  } cases[] = {
      {SA_IMM_ATTR_SAINT64T, {"-3", "1", "2"}},
      {SA_IMM_ATTR_SANAMET, {"cellId=9,ME=1", "cellId=3,ME=1"}},
      {SA_IMM_ATTR_SASTRINGT, {"b", "", "a"}},
      {SA_IMM_ATTR_SAUINT32T, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    setValues(*first, "old", c.type, c.values);
    setValues(*second, "old", c.type, c.values);
    second->eraseAttribute("new");
    first->eraseAttribute("new");
    EXPECT_TRUE(run({{"name", "old"}, {"newName", "new"}}));
    for (InstanceIf* instance : {first, second}) {
      EXPECT_EQ(c.values, valuesOf(*instance, "new"));
      EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*instance, "old"));
      EXPECT_EQ(c.type, instance->getAttribute("new")->getType());
    }
  }
  EXPECT_TRUE(handler.failures.empty());
}

TEST_F(RenameAttributeActionTest, ByteBuffersKeepTheirBytes) {
  for (InstanceIf* instance : {first, second}) {
    AttributeInternalIf* bytes = nullptr;
    instance->addAttribute("old", SA_IMM_ATTR_SAANYT, &bytes);
    bytes->addCopy(std::vector<uint8_t>{0x00, 0xff, 0x10});
  }
  EXPECT_TRUE(run({{"name", "old"}, {"newName", "new"}}));
  ASSERT_NE(nullptr, first->getAttribute("new"));
  EXPECT_EQ((std::vector<uint8_t>{0x00, 0xff, 0x10}), first->getAttribute("new")->getRawDataValueAtIndex(0));
}

TEST_F(RenameAttributeActionTest, InstanceWithoutTheAttributeFailsTheUpgrade) {
  setValues(*first, "old", SA_IMM_ATTR_SAINT32T, {"1"});
  EXPECT_FALSE(run({{"name", "old"}, {"newName", "new"}}));
  EXPECT_EQ(std::vector<std::string>{"Instance cellId=2,ME=1 has no attribute old"}, handler.failures);
  // The other instance is still renamed.
  EXPECT_EQ(std::vector<std::string>{"1"}, valuesOf(*first, "new"));
}

TEST_F(RenameAttributeActionTest, InstanceTheFilterExcludesIsLeftAlone) {
  setValues(*first, "old", SA_IMM_ATTR_SAINT32T, {"1"});
  EXPECT_TRUE(run({{"name", "old"}, {"newName", "new"}, {"rdnValue", "1"}}));
  EXPECT_EQ(std::vector<std::string>{"1"}, valuesOf(*first, "new"));
  EXPECT_EQ(std::vector<std::string>{"<absent>"}, valuesOf(*second, "new"));
}

TEST_F(RenameAttributeActionTest, FailureTexts) {
  setValues(*first, "old", SA_IMM_ATTR_SAINT32T, {"1"});
  EXPECT_FALSE(run({{"name", "old"}}));
  EXPECT_FALSE(run({{"newName", "new"}}));
  auto args = makeArguments({{"name", "old"}, {"newName", "new"}});
  EXPECT_FALSE(action.execute(&handler, nullptr, *args));
  EXPECT_EQ((std::vector<std::string>{
                "RenameAttributeAction requires arguments name and newName.",
                "RenameAttributeAction requires arguments name and newName.",
                "Action Failed: renameAttribute: No instance group to operate on. Action arguments: old name = old, "
                "new name = new ",
            }),
            handler.failures);
  EXPECT_EQ(std::vector<std::string>{"1"}, valuesOf(*first, "old"));
}

}  // namespace
