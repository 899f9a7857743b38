// Whole runs of the upgrader through upgrade-wrapper-sim on a small radio
// node: child instances, struct children and array elements, and the rename
// of the radio node function's naming attribute over its subtree. Each test
// writes its node into a temporary folder and reads the new model back.

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"
#include "actions/RenameENodeBFunctionIdAction.h"

namespace {

const char kFunction[] = "eNodeBFunctionId=1,managedElementId=1";

std::string rdnName(const std::string& className) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(className[0]))) + className.substr(1) + "Id";
}

// One class definition: name, naming attribute, attributes "name:TYPE[:MV]".
std::string classXml(const std::string& name, const std::string& rdn, const std::vector<std::string>& attrs) {
  std::ostringstream out;
  out << "<class name=\"" << name << "\"><category>SA_CONFIG</category><rdn><name>" << rdn
      << "</name><type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_INITIALIZED</flag></rdn>";
  for (const std::string& attr : attrs) {
    std::istringstream parts(attr);
    std::string attrName, type, multi;
    std::getline(parts, attrName, ':');
    std::getline(parts, type, ':');
    std::getline(parts, multi, ':');
    out << "<attr><name>" << attrName << "</name><type>" << type
        << "</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag>"
        << (multi.empty() ? "" : "<flag>SA_MULTI_VALUE</flag>") << "</attr>";
  }
  out << "</class>\n";
  return out.str();
}

// The classes of the node: every MO and struct class of the function's
// subtree but `missingStruct`, with `functionRdn` naming the function.
std::string classes(const std::string& functionRdn, bool withStructReference, const std::string& missingStruct = "") {
  std::map<std::string, std::vector<std::string>> attrs = {
      {"EUtranCellFDD", {"additionalPlmnReservedList:SA_INT32_T:MV", "userLabel:SA_STRING_T"}},
      {"SectorCarrier", {"reservedBy:SA_NAME_T:MV"}},
  };
  if (withStructReference) attrs["EUtranCellFDD"].push_back("mappingInfoRef:SA_NAME_T:MV");
  std::string xml = classXml("ManagedElement", "managedElementId", {}) +
                    classXml("ENodeBFunction", functionRdn, {"userLabel:SA_STRING_T"}) +
                    classXml("PlmnIdentity", "id", {"mcc:SA_INT32_T"}) + classXml("MappingInfoSIBs", "id", {});
  RenameENodeBFunctionIdAction action;
  for (size_t i = 0; i < RenameENodeBFunctionIdAction::kMoClassCount; ++i) {
    const std::string& name = action.classNames()[i];
    xml += classXml(name, rdnName(name), attrs[name]);
  }
  for (size_t i = RenameENodeBFunctionIdAction::kMoClassCount; i < action.classNames().size(); ++i) {
    const std::string& name = action.classNames()[i];
    if (name != "PlmnIdentity" && name != "MappingInfoSIBs" && name != missingStruct) xml += classXml(name, "id", {});
  }
  return xml;
}

std::string object(const std::string& className, const std::string& dn,
                   const std::vector<std::pair<std::string, std::vector<std::string>>>& attrs = {}) {
  std::string xml = "<object class=\"" + className + "\"><dn>" + dn + "</dn>";
  for (const auto& [name, values] : attrs) {
    xml += "<attr><name>" + name + "</name>";
    for (const std::string& value : values) xml += "<value>" + value + "</value>";
    xml += "</attr>";
  }
  return xml + "</object>\n";
}

// A function with three cells, each with a frequency relation holding two
// cell relations; a sector carrier reserved by cell 1; two neighbour
// functions with a termination point each.
std::string objects() {
  std::string xml = object("ManagedElement", "managedElementId=1") + object("ENodeBFunction", kFunction) +
                    object("EUtraNetwork", std::string("eUtraNetworkId=1,") + kFunction);
  const std::string cell1 = std::string("eUtranCellFDDId=1,") + kFunction;
  xml += object("SectorCarrier", std::string("sectorCarrierId=1,") + kFunction, {{"reservedBy", {cell1}}});
  for (const char* cell : {"1", "2", "3"}) {
    const std::string cellDn = std::string("eUtranCellFDDId=") + cell + "," + kFunction;
    xml += object("EUtranCellFDD", cellDn, {{"additionalPlmnReservedList", {"1", "2", "1", "3", "4"}}});
    xml += object("PlmnIdentity", "id=plmn," + cellDn, {{"mcc", {"240"}}});
    xml += object("EUtranFreqRelation", "eUtranFreqRelationId=1," + cellDn);
    for (const char* relation : {"1", "2"}) {
      xml += object("EUtranCellRelation",
                    std::string("eUtranCellRelationId=") + relation + ",eUtranFreqRelationId=1," + cellDn);
    }
  }
  for (const char* external : {"1", "2"}) {
    const std::string dn = std::string("externalENodeBFunctionId=") + external + ",eUtraNetworkId=1," + kFunction;
    xml += object("ExternalENodeBFunction", dn) + object("TermPointToENB", "termPointToENBId=1," + dn);
  }
  return xml;
}

std::string argument(const std::string& name, const std::string& value) {
  return "<Arg name=\"" + name + "\" value=\"" + value + "\"/>";
}

std::string action(const std::string& name, const std::vector<std::pair<std::string, std::string>>& args) {
  std::string xml = "<MoAction name=\"" + name + "\">";
  for (const auto& [argName, value] : args) xml += argument(argName, value);
  return xml + "</MoAction>";
}

// One run of the upgrader on a RadioNode 1_0_0 -> 2_0_0 node.
class NodeRun {
 public:
  NodeRun(const std::string& oldModel, const std::string& newClasses, const std::string& mos) {
    e2e::NodeBuilder node(dir_.path());
    node.addXml("RadioNode", "1_0_0", "2_0_0", oldModel, e2e::NodeBuilder::immDocument(newClasses));
    node.modificationFile("RadioNode", "CXC1_R1A", "modification_1_0_0_to_2_0_0.xml",
                          "<modificationFile>" + mos + "</modificationFile>\n");
    result_ = e2e::WholeRun(node).run();
  }

  bool succeeded() const { return completed() && result_.rollback.empty(); }
  // The upgrader finished and signalled; reports made on the way may still
  // have asked for a rollback.
  bool completed() const { return result_.exitStatus == 0; }
  // The reasons of the rollback requests, without the application identity.
  std::vector<std::string> rollbackReasons() const {
    std::vector<std::string> reasons;
    for (const std::string& line : result_.rollback) reasons.push_back(line.substr(line.find(". ") + 2));
    return reasons;
  }
  std::string report() const { return result_.report + result_.rollbackText(); }
  e2e::ModelObjects model() const { return result_.objects("RadioNode"); }
  std::string modelText() const { return result_.model("RadioNode"); }
  bool logged(const std::string& part) const { return result_.loggedParts(part) > 0; }

 private:
  TempDir dir_;
  e2e::RunResult result_;
};

using e2e::dnsOf;

std::string cellDn(const char* cell) { return std::string("eUtranCellFDDId=") + cell + "," + kFunction; }

TEST(ActionsChildArrayE2eTest, CreatesAndRemovesChildrenStructsAndArrayElements) {
  const std::string mos =
      "<Mo name=\"EUtranCellFDD\">" +
      action("CreateChildInstanceAction", {{"childType", "UeMeasControl"}, {"childRdnValue", "1"}}) +
      action("CreateChildInstanceAction",
             {{"childType", "MimoSleepFunction"}, {"childRdnValue", "1"}, {"parentRdnValue", "2"}}) +
      action(
          "CreateChildStructAction",
          {{"structType", "MappingInfoSIBs"}, {"childRdnValue", "mappingInfo"}, {"structRefName", "mappingInfoRef"}}) +
      action("RemoveArrayElementAction", {{"name", "additionalPlmnReservedList"}, {"elementValue", "1"}}) +
      action("RemoveArrayElementAction", {{"name", "additionalPlmnReservedList"}, {"index", "0"}, {"rdnValue", "3"}}) +
      action("RemoveArrayElementAction", {{"name", "additionalPlmnReservedList"}}) + "</Mo>" +
      "<Mo name=\"EUtranFreqRelation\">" +
      action("RemoveChildInstanceAction", {{"childType", "EUtranCellRelation"}, {"childRdnValue", "2"}}) + "</Mo>" +
      "<Mo name=\"ExternalENodeBFunction\">" +
      action("RemoveChildInstanceAction", {{"childType", "TermPointToENB"}, {"parentRdnValue", "2"}}) + "</Mo>" +
      "<Mo name=\"AnrFunction\">" +
      action("CreateChildInstanceAction", {{"childType", "AnrFunctionEUtran"}, {"childRdnValue", "1"}}) + "</Mo>";
  NodeRun run(e2e::NodeBuilder::immDocument(classes("eNodeBFunctionId", false) + objects()), classes("eNodeBFunctionId", true), mos);
  ASSERT_TRUE(run.succeeded()) << run.report();
  e2e::ModelObjects model = run.model();

  EXPECT_EQ((std::vector<std::string>{"ueMeasControlId=1," + cellDn("1"), "ueMeasControlId=1," + cellDn("2"),
                                      "ueMeasControlId=1," + cellDn("3")}),
            dnsOf(model, "UeMeasControl"));
  EXPECT_EQ(std::vector<std::string>{"mimoSleepFunctionId=1," + cellDn("2")}, dnsOf(model, "MimoSleepFunction"));
  EXPECT_EQ(std::vector<std::string>{"anrFunctionEUtranId=1"}, dnsOf(model, "AnrFunctionEUtran"));
  EXPECT_EQ(3u, dnsOf(model, "MappingInfoSIBs").size());
  EXPECT_EQ(std::vector<std::string>{"id=mappingInfo," + cellDn("3")}, model[cellDn("3")].attrs["mappingInfoRef"]);

  EXPECT_EQ((std::vector<std::string>{"2", "3"}), model[cellDn("1")].attrs["additionalPlmnReservedList"]);
  EXPECT_EQ(std::vector<std::string>{"3"}, model[cellDn("3")].attrs["additionalPlmnReservedList"]);

  EXPECT_EQ((std::vector<std::string>{"eUtranCellRelationId=1,eUtranFreqRelationId=1," + cellDn("1"),
                                      "eUtranCellRelationId=1,eUtranFreqRelationId=1," + cellDn("2"),
                                      "eUtranCellRelationId=1,eUtranFreqRelationId=1," + cellDn("3")}),
            dnsOf(model, "EUtranCellRelation"));
  EXPECT_EQ(std::vector<std::string>{"termPointToENBId=1,externalENodeBFunctionId=1,eUtraNetworkId=1," +
                                     std::string(kFunction)},
            dnsOf(model, "TermPointToENB"));
}

TEST(ActionsChildArrayE2eTest, RenamesTheFunctionIdOverItsSubtreeOnceOnly) {
  const std::string mos = "<Mo name=\"ENodeBFunction\">" +
                          action("RenameENodeBFunctionIdAction", {{"newENodeBFunctionIdName", "lteFunctionId"}}) +
                          "</Mo>";
  const std::string newClasses = classes("lteFunctionId", false);
  NodeRun first(e2e::NodeBuilder::immDocument(classes("eNodeBFunctionId", false) + objects()), newClasses, mos);
  ASSERT_TRUE(first.succeeded()) << first.report();
  e2e::ModelObjects model = first.model();

  const std::string function = "lteFunctionId=1,managedElementId=1";
  EXPECT_EQ("ENodeBFunction", model[function].className);
  EXPECT_EQ(0u, model.count(kFunction));
  for (const auto& [dn, object] : model) {
    EXPECT_EQ(std::string::npos, dn.find("eNodeBFunctionId")) << dn;
  }
  EXPECT_EQ("EUtranCellRelation",
            model["eUtranCellRelationId=2,eUtranFreqRelationId=1,eUtranCellFDDId=3," + function].className);
  EXPECT_EQ("PlmnIdentity", model["id=plmn,eUtranCellFDDId=1," + function].className);
  EXPECT_EQ(std::vector<std::string>{"eUtranCellFDDId=1," + function},
            model["sectorCarrierId=1," + function].attrs["reservedBy"]);

  NodeRun second(first.modelText(), newClasses, mos);
  ASSERT_TRUE(second.succeeded()) << second.report();
  EXPECT_TRUE(second.logged("RenameENodeBFunctionIdAction: " + function + " already renamed, nothing to do"));
  e2e::ModelObjects again = second.model();
  ASSERT_EQ(model.size(), again.size());
  for (const auto& [dn, object] : model) {
    ASSERT_EQ(1u, again.count(dn)) << dn;
    EXPECT_EQ(object.attrs, again[dn].attrs) << dn;
  }
}

TEST(ActionsChildArrayE2eTest, AMissingStructClassIsReportedButTheRenameGoesOn) {
  const std::string mos = "<Mo name=\"ENodeBFunction\">" +
                          action("RenameENodeBFunctionIdAction", {{"newENodeBFunctionIdName", "lteFunctionId"}}) +
                          "</Mo>";
  NodeRun run(e2e::NodeBuilder::immDocument(classes("eNodeBFunctionId", false, "SIB3") + objects()),
              classes("lteFunctionId", false, "SIB3"), mos);
  ASSERT_TRUE(run.completed()) << run.report();
  EXPECT_EQ(std::vector<std::string>{"RenameENodeBFunctionIdAction: failed to find InstanceGroup for SIB3"},
            run.rollbackReasons());
  EXPECT_TRUE(run.logged("UPGRADE IS DONE"));
}

}  // namespace
