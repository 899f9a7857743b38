#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "LogRecorder.h"
#include "ModelHandler.h"
#include "actions/RenameENodeBFunctionIdAction.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char kFunction[] = "oldFunctionId=1,managedElementId=1";
const char kCell[] = "eUtranCellFDDId=1,oldFunctionId=1,managedElementId=1";

class RenameENodeBFunctionIdActionTest : public testing::Test {
 protected:
  // Every listed class known to the model; a function below a managed
  // element with a cell, a relation below the cell, a sector carrier that
  // the cell reserves, a struct of the cell, and a cell of another function.
  void SetUp() override {
    for (const std::string& className : action.classNames()) model.group(className);
    function = &model.add("ENodeBFunction", "managedElementId=1", "oldFunctionId", "1");
    Instance& cell = model.add("EUtranCellFDD", kFunction, "eUtranCellFDDId", "1");
    addValue(cell, "sectorCarrierRef", SA_IMM_ATTR_SANAMET, "sectorCarrierId=1,oldFunctionId=1,managedElementId=1");
    addValue(cell, "userLabel", SA_IMM_ATTR_SASTRINGT, "sectorCarrierId=1,oldFunctionId=1,managedElementId=1");
    model.add("EUtranCellFDD", "otherFunctionId=2,managedElementId=1", "eUtranCellFDDId", "1");
    model.add("EUtranCellRelation", std::string("eUtranFreqRelationId=1,") + kCell, "eUtranCellRelationId", "1");
    Instance& carrier = model.add("SectorCarrier", kFunction, "sectorCarrierId", "1");
    addValue(carrier, "reservedBy", SA_IMM_ATTR_SASTRINGT, kCell);
    addValue(carrier, "reservedBy", SA_IMM_ATTR_SASTRINGT, "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1");
    model.add("PlmnIdentity", kCell, "id", "activePlmnList_0");
  }

  static void addValue(InstanceIf& instance, const char* name, uint32_t type, const char* value) {
    AttributeInternalIf* attribute = instance.getAttribute(name);
    if (attribute == nullptr) instance.addAttribute(name, type, &attribute);
    attribute->addCopy(value);
  }

  bool run(const char* newName = "eNodeBFunctionId") {
    auto args = argumentsOf({{"newENodeBFunctionIdName", newName}});
    return action.execute(&model, &model.group("ENodeBFunction"), *args);
  }

  ModelHandler model;
  RenameENodeBFunctionIdAction action;
  Instance* function = nullptr;
};

TEST_F(RenameENodeBFunctionIdActionTest, ListsTheMoClassesThenTheStructClassesOnce) {
  const std::vector<std::string>& names = action.classNames();
  ASSERT_EQ(205u, names.size());
  EXPECT_EQ("AnrFunction", names.front());
  EXPECT_EQ("UserProfile", names[RenameENodeBFunctionIdAction::kMoClassCount - 1]);
  EXPECT_EQ("EutranCellArea", names[RenameENodeBFunctionIdAction::kMoClassCount]);
  EXPECT_EQ("MappingInfoSIBsBr", names.back());
  EXPECT_EQ(names.size(), std::set<std::string>(names.begin(), names.end()).size());
}

TEST_F(RenameENodeBFunctionIdActionTest, RenamesTheFunctionAndEveryNameOfItsSubtree) {
  EXPECT_TRUE(run());
  EXPECT_EQ("eNodeBFunctionId=1,managedElementId=1", function->getLdn());
  EXPECT_EQ(std::vector<std::string>{"1"}, valuesOf(*function, "eNodeBFunctionId"));
  EXPECT_EQ((std::vector<std::string>{"eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1",
                                      "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1"}),
            model.ldns("EUtranCellFDD"));
  EXPECT_EQ(std::vector<std::string>{"eUtranCellRelationId=1,eUtranFreqRelationId=1,eUtranCellFDDId=1,"
                                     "eNodeBFunctionId=1,managedElementId=1"},
            model.ldns("EUtranCellRelation"));
  EXPECT_EQ(std::vector<std::string>{"id=activePlmnList_0,eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1"},
            model.ldns("PlmnIdentity"));
  InstanceIf& carrier = *model.group("SectorCarrier").getFirstInstance();
  EXPECT_EQ((std::vector<std::string>{"eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1",
                                      "eUtranCellFDDId=1,otherFunctionId=2,managedElementId=1"}),
            valuesOf(carrier, "reservedBy"));
  InstanceIf& cell = *model.group("EUtranCellFDD").getFirstInstance();
  EXPECT_EQ(std::vector<std::string>{"sectorCarrierId=1,eNodeBFunctionId=1,managedElementId=1"},
            valuesOf(cell, "sectorCarrierRef"));
  EXPECT_EQ(std::vector<std::string>{"sectorCarrierId=1,oldFunctionId=1,managedElementId=1"},
            valuesOf(cell, "userLabel"));
  // Lookups by the new names work: the groups follow the renames.
  EXPECT_NE(nullptr,
            model.group("EUtranCellFDD").getInstance("eUtranCellFDDId=1,eNodeBFunctionId=1,managedElementId=1"));

  const LogRecorder& log = LogRecorder::installed();
  EXPECT_TRUE(log.contains("RenameENodeBFunctionIdAction: rename to eNodeBFunctionId"));
  EXPECT_TRUE(
      log.contains("RenameENodeBFunctionIdAction: changed parentName for: "
                   "sectorCarrierId=1,eNodeBFunctionId=1,managedElementId=1"));
  EXPECT_TRUE(
      log.contains("RenameENodeBFunctionIdAction: invalid entry in hard coded list: "
                   "otherFunctionId=2,managedElementId=1"));
  EXPECT_THAT(model.failures, IsEmpty());
}

TEST_F(RenameENodeBFunctionIdActionTest, ASecondRunChangesNothing) {
  EXPECT_TRUE(run());
  LogRecorder::installed().clear();
  EXPECT_TRUE(run());
  EXPECT_TRUE(LogRecorder::installed().contains(
      "RenameENodeBFunctionIdAction: eNodeBFunctionId=1,managedElementId=1 already renamed, nothing to do"));
  EXPECT_FALSE(LogRecorder::installed().containsPart("changed parentName"));
  EXPECT_EQ("eNodeBFunctionId=1,managedElementId=1", function->getLdn());
}

TEST_F(RenameENodeBFunctionIdActionTest, ARootFunctionIsTheWholeParentName) {
  Instance& root = model.add("ENodeBFunction", "", "oldFunctionId", "7");
  model.add("EUtranCellFDD", "oldFunctionId=7", "eUtranCellFDDId", "3");
  EXPECT_TRUE(run());
  EXPECT_EQ("eNodeBFunctionId=7", root.getLdn());
  EXPECT_NE(nullptr, model.group("EUtranCellFDD").getInstance("eUtranCellFDDId=3,eNodeBFunctionId=7"));
}

TEST_F(RenameENodeBFunctionIdActionTest, ParentsAlreadyCarryingTheNewNameAreKept) {
  model.add("EUtranCellFDD", "eNodeBFunctionId=1,managedElementId=1", "eUtranCellFDDId", "5");
  EXPECT_TRUE(run());
  EXPECT_TRUE(LogRecorder::installed().contains(
      "RenameENodeBFunctionIdAction: already had the new parentName: eNodeBFunctionId=1,managedElementId=1"));
}

TEST_F(RenameENodeBFunctionIdActionTest, AMissingMoClassFailsAMissingStructClassIsOnlyReported) {
  ModelHandler sparse;
  for (const std::string& className : action.classNames()) {
    if (className != "SIB3" && className != "SIB7") sparse.group(className);
  }
  sparse.add("ENodeBFunction", "", "oldFunctionId", "1");
  auto args = argumentsOf({{"newENodeBFunctionIdName", "eNodeBFunctionId"}});
  EXPECT_TRUE(action.execute(&sparse, &sparse.group("ENodeBFunction"), *args));
  EXPECT_THAT(sparse.failures, ElementsAre("RenameENodeBFunctionIdAction: failed to find InstanceGroup for SIB3",
                                           "RenameENodeBFunctionIdAction: failed to find InstanceGroup for SIB7"));

  ModelHandler noCells;
  for (const std::string& className : action.classNames()) {
    if (className != "EUtranCellFDD") noCells.group(className);
  }
  noCells.add("ENodeBFunction", "", "oldFunctionId", "1");
  EXPECT_FALSE(action.execute(&noCells, &noCells.group("ENodeBFunction"), *args));
  EXPECT_THAT(noCells.failures,
              ElementsAre("RenameENodeBFunctionIdAction: failed to find InstanceGroup for EUtranCellFDD"));
}

TEST_F(RenameENodeBFunctionIdActionTest, TheNewNameIsRequiredAndNamedInTheMissingGroupReport) {
  auto none = argumentsOf({});
  EXPECT_FALSE(action.validateArgs(*none, &model));
  auto named = argumentsOf({{"newENodeBFunctionIdName", "eNodeBFunctionId"}});
  EXPECT_FALSE(action.execute(&model, nullptr, *named));
  EXPECT_THAT(model.failures,
              ElementsAre("RenameENodeBFunctionIdAction requires attribute newENodeBFunctionIdName",
                          "Action Failed: renameAttribute: No instance group to operate on. Action arguments: "
                          "newENodeBFunctionIdName = eNodeBFunctionId"));
}

}  // namespace
