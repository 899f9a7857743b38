// The whole runs check the subtree rename, its repetition and a missing struct
// class; these cases check what a whole run does not reach.

#include <gtest/gtest.h>

#include "ActionModel.h"
#include "actions/RenameENodeBFunctionIdAction.h"
#include "icti/ValueType.h"

namespace {

const char kFunction[] = "oldFunctionId=1,managedElementId=1";
const char kCell[] = "eUtranCellFDDId=1,oldFunctionId=1,managedElementId=1";
const char kCarrier[] = "sectorCarrierId=1,oldFunctionId=1,managedElementId=1";

// Every listed class but `missing`; a function with a cell that refers to a sector carrier (and names it in a
// string), and a cell of another function.
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
  model.add("SectorCarrier", kFunction, "1", {{"reservedBy", ValueType::kString, {kCell}}});
  return function;
}

const Args kArgs = {{"newENodeBFunctionIdName", "eNodeBFunctionId"}};

TEST(RenameENodeBFunctionIdActionTest, RenamesNamesOfItsOwnSubtreeOnlyAndRootFunctions) {
  ActionModel model;
  RenameENodeBFunctionIdAction action;
  InstanceIf& function = addFunction(model, action);
  InstanceIf& root = model.add("ENodeBFunction", "", "7", {}, "oldFunctionId");
  model.add("EUtranCellFDD", "oldFunctionId=7", "3");
  EXPECT_TRUE(model.run(action, "ENodeBFunction", kArgs));
  EXPECT_EQ(Strings{}, model.failures);
  EXPECT_EQ("eNodeBFunctionId=1,managedElementId=1", function.getLdn());
  EXPECT_EQ(Strings{"1"}, ActionModel::values(function, "eNodeBFunctionId"));
  EXPECT_EQ("eNodeBFunctionId=7", root.getLdn());
  EXPECT_EQ((Strings{"eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1",
                     "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1", "eUtranCellFDDId=3,eNodeBFunctionId=7"}),
            model.ldns("EUtranCellFDD"));
  InstanceIf& cell = *model.group("EUtranCellFDD").getFirstInstance();
  EXPECT_EQ(Strings{"sectorCarrierId=1,eNodeBFunctionId=1,managedElementId=1"},
            ActionModel::values(cell, "sectorCarrierRef"));
  EXPECT_EQ(Strings{kCarrier}, ActionModel::values(cell, "userLabel")) << "only names are renamed";
}

TEST(RenameENodeBFunctionIdActionTest, AMissingMoClassFailsTheRename) {
  ActionModel model;
  RenameENodeBFunctionIdAction action;
  addFunction(model, action, "EUtranCellFDD");
  EXPECT_FALSE(model.run(action, "ENodeBFunction", kArgs));
  EXPECT_EQ(Strings{"RenameENodeBFunctionIdAction: failed to find InstanceGroup for EUtranCellFDD"}, model.failures);
}

}  // namespace
