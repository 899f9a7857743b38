#include <gtest/gtest.h>

#include <set>

#include "ActionModel.h"
#include "LogRecorder.h"
#include "actions/RenameENodeBFunctionIdAction.h"
#include "icti/ValueType.h"

namespace {

const char kFunction[] = "oldFunctionId=1,managedElementId=1";
const char kCell[] = "eUtranCellFDDId=1,oldFunctionId=1,managedElementId=1";
const char kCarrier[] = "sectorCarrierId=1,oldFunctionId=1,managedElementId=1";

// Every listed class but `missing` in a model with a function below a managed element with a cell, a relation below
// the cell, a sector carrier that the cell reserves, a struct of the cell, and a cell of another function.
InstanceIf& addFunction(ActionModel& model, const RenameENodeBFunctionIdAction& action,
                        const std::string& missing = "") {
  for (const std::string& className : action.classNames()) {
    if (className != missing) model.group(className);
  }
  InstanceIf& function = model.add("ENodeBFunction", "managedElementId=1", "1", {}, "oldFunctionId");
  if (missing == "EUtranCellFDD") return function;
  model.add("EUtranCellFDD", kFunction, "1",
            {{"sectorCarrierRef", ValueType::kName, {kCarrier}}, {"userLabel", ValueType::kString, {kCarrier}}});
  model.add("EUtranCellFDD", "otherFunctionId=2,managedElementId=1", "1");
  model.add("EUtranCellRelation", std::string("eUtranFreqRelationId=1,") + kCell, "1");
  model.add("SectorCarrier", kFunction, "1",
            {{"reservedBy", ValueType::kString, {kCell, "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1"}}});
  model.add("PlmnIdentity", kCell, "activePlmnList_0", {}, "id");
  return function;
}

class RenameENodeBFunctionIdActionTest : public testing::Test {
 protected:
  bool run() { return model.run(action, "ENodeBFunction", {{"newENodeBFunctionIdName", "eNodeBFunctionId"}}); }

  ActionModel model;
  RenameENodeBFunctionIdAction action;
  InstanceIf& function = addFunction(model, action);
};

TEST_F(RenameENodeBFunctionIdActionTest, ListsTheMoClassesThenTheStructClassesOnce) {
  const Strings& names = action.classNames();
  ASSERT_EQ(205u, names.size());
  EXPECT_EQ("AnrFunction", names.front());
  EXPECT_EQ("UserProfile", names[RenameENodeBFunctionIdAction::kMoClassCount - 1]);
  EXPECT_EQ("EutranCellArea", names[RenameENodeBFunctionIdAction::kMoClassCount]);
  EXPECT_EQ("MappingInfoSIBsBr", names.back());
  EXPECT_EQ(names.size(), std::set<std::string>(names.begin(), names.end()).size());
}

TEST_F(RenameENodeBFunctionIdActionTest, RenamesTheFunctionAndEveryNameOfItsSubtree) {
  EXPECT_TRUE(run());
  EXPECT_EQ("eNodeBFunctionId=1,managedElementId=1", function.getLdn());
  EXPECT_EQ(Strings{"1"}, ActionModel::values(function, "eNodeBFunctionId"));
  EXPECT_EQ((Strings{"eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1",
                     "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1"}),
            model.ldns("EUtranCellFDD"));
  EXPECT_EQ(Strings{"eUtranCellRelationId=1,eUtranFreqRelationId=1,eUtranCellFDDId=1,"
                    "eNodeBFunctionId=1,managedElementId=1"},
            model.ldns("EUtranCellRelation"));
  EXPECT_EQ(Strings{"id=activePlmnList_0,eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1"},
            model.ldns("PlmnIdentity"));
  InstanceIf& carrier = *model.group("SectorCarrier").getFirstInstance();
  EXPECT_EQ((Strings{"eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1",
                     "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1"}),
            ActionModel::values(carrier, "reservedBy"));
  InstanceIf& cell = *model.group("EUtranCellFDD").getFirstInstance();
  EXPECT_EQ(Strings{"sectorCarrierId=1,eNodeBFunctionId=1,managedElementId=1"},
            ActionModel::values(cell, "sectorCarrierRef"));
  EXPECT_EQ(Strings{"sectorCarrierId=1,oldFunctionId=1,managedElementId=1"}, ActionModel::values(cell, "userLabel"));
  // Lookups by the new names work: the groups follow the renames.
  EXPECT_NE(nullptr,
            model.group("EUtranCellFDD").getInstance("eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1"));

  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RenameENodeBFunctionIdAction: rename to eNodeBFunctionId"));
  EXPECT_TRUE(
      log.contains("RenameENodeBFunctionIdAction: invalid entry in hard coded list: "
                   "otherFunctionId=2,managedElementId=1"));
  EXPECT_EQ(Strings{}, model.failures);
}

TEST_F(RenameENodeBFunctionIdActionTest, ASecondRunChangesNothing) {
  EXPECT_TRUE(run());
  LogRecorder::installed().clear();
  EXPECT_TRUE(run());
  EXPECT_FALSE(LogRecorder::installed().containsPart("changed parentName"));
  EXPECT_EQ("eNodeBFunctionId=1,managedElementId=1", function.getLdn());
}

TEST_F(RenameENodeBFunctionIdActionTest, ARootFunctionIsTheWholeParentNameParentsWithTheNewNameAreKept) {
  InstanceIf& root = model.add("ENodeBFunction", "", "7", {}, "oldFunctionId");
  model.add("EUtranCellFDD", "oldFunctionId=7", "3");
  model.add("EUtranCellFDD", "eNodeBFunctionId=1,managedElementId=1", "5");
  EXPECT_TRUE(run());
  EXPECT_EQ("eNodeBFunctionId=7", root.getLdn());
  EXPECT_NE(nullptr, model.group("EUtranCellFDD").getInstance("eUtranCellFDDId=3,eNodeBFunctionId=7"));
}

TEST(RenameENodeBFunctionIdActionMissingTest, AMissingMoClassFailsAMissingStructClassIsOnlyReported) {
  RenameENodeBFunctionIdAction action;
  const struct {
    const char* missing;
    bool result;
  } cases[] = {{"SIB3", true}, {"EUtranCellFDD", false}};
  for (const auto& c : cases) {
    ActionModel model;
    addFunction(model, action, c.missing);
    EXPECT_EQ(c.result, model.run(action, "ENodeBFunction", {{"newENodeBFunctionIdName", "eNodeBFunctionId"}}));
    EXPECT_EQ(Strings{std::string("RenameENodeBFunctionIdAction: failed to find InstanceGroup for ") + c.missing},
              model.failures);
  }
}

TEST_F(RenameENodeBFunctionIdActionTest, TheNewNameIsRequiredAndNamedInTheMissingGroupReport) {
  EXPECT_FALSE(model.validate(action, {}));
  EXPECT_FALSE(model.runOn(action, nullptr, {{"newENodeBFunctionIdName", "eNodeBFunctionId"}}));
  EXPECT_EQ((Strings{"RenameENodeBFunctionIdAction requires attribute newENodeBFunctionIdName",
                     "Action Failed: renameAttribute: No instance group to operate on. Action arguments: "
                     "newENodeBFunctionIdName = eNodeBFunctionId"}),
            model.failures);
}

}  // namespace
