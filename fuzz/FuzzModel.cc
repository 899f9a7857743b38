#include "FuzzModel.h"

#include <cctype>
#include <vector>

#include "icti/DistinguishedName.h"
#include "icti/ImmRecords.h"
#include "icti/ValueType.h"

namespace {

struct AttrRow {
  const char* name;
  ValueType type;
  std::vector<const char*> values;
};

struct ObjectRow {
  const char* className;
  const char* parent;
  const char* rdnAttribute;
  const char* rdnValue;
  std::vector<AttrRow> attrs;
};

constexpr ValueType kInt32 = ValueType::kInt32;
constexpr ValueType kUint32 = ValueType::kUint32;
constexpr ValueType kInt64 = ValueType::kInt64;
constexpr ValueType kUint64 = ValueType::kUint64;
constexpr ValueType kTime = ValueType::kTime;
constexpr ValueType kName = ValueType::kName;
constexpr ValueType kFloat = ValueType::kFloat;
constexpr ValueType kDouble = ValueType::kDouble;
constexpr ValueType kString = ValueType::kString;
constexpr ValueType kAny = ValueType::kAny;

#define ME "managedElementId=1"
#define ENB "eNodeBFunctionId=1," ME
#define CELL1 "eUtranCellFDDId=C1," ENB
#define CELL2 "eUtranCellFDDId=C2," ENB
#define EXT "externalENodeBFunctionId=N1,eUtraNetworkId=1," ENB

const std::vector<ObjectRow>& oldModel() {
  static const std::vector<ObjectRow> rows = {
      {"ManagedElement", "", "managedElementId", "1", {{"userLabel", kString, {"node 1"}}}},
      {"ENodeBFunction", ME, "eNodeBFunctionId", "1",
       {{"userLabel", kString, {}}, {"eNBId", kInt32, {"42"}}, {"startTime", kTime, {"1700000000000000000"}}}},
      {"EUtranCellFDD", ENB, "eUtranCellFDDId", "C1",
       {{"qRxLevMin", kInt32, {"-140"}},
        {"dlChannelBandwidth", kUint32, {"20000"}},
        {"additionalPlmnReservedList", kInt32, {"0", "1", "0", "1", "0"}},
        {"activePlmnList", kName, {"id=activePlmnList_0," CELL1, "id=activePlmnList_1," CELL1}},
        {"mappingInfo", kName, {}},
        {"userLabel", kString, {"cell, one"}}}},
      {"EUtranCellFDD", ENB, "eUtranCellFDDId", "C2",
       {{"qRxLevMin", kInt32, {"-120"}},
        {"dlChannelBandwidth", kUint32, {"10000"}},
        {"additionalPlmnReservedList", kInt32, {"1"}},
        {"activePlmnList", kName, {"id=activePlmnList_0," CELL2}}}},
      {"PlmnIdentity", CELL1, "id", "activePlmnList_0",
       {{"mcc", kInt32, {"240"}}, {"mnc", kInt32, {"99"}}, {"mncLength", kInt32, {"2"}}}},
      {"PlmnIdentity", CELL1, "id", "activePlmnList_1",
       {{"mcc", kInt32, {"240"}}, {"mnc", kInt32, {"7"}}, {"mncLength", kInt32, {"3"}}}},
      {"PlmnIdentity", CELL2, "id", "activePlmnList_0", {{"mcc", kInt32, {"1"}}, {"mncLength", kInt32, {"2"}}}},
      {"PlmnIdentity", EXT, "id", "eNodeBPlmnId", {{"mcc", kInt32, {"2"}}}},
      {"EUtranCellRelation", CELL1, "eUtranCellRelationId", "R1",
       {{"neighborCellRef", kName, {"externalEUtranCellFDDId=X1," EXT}},
        {"timeOfCreation", kUint64, {"18446744073709551615"}},
        {"sCellCandidate", kInt64, {"-9223372036854775808"}}}},
      {"EUtranFrequency", "eUtraNetworkId=1," ENB, "eUtranFrequencyId", "1",
       {{"arfcnValueEUtranDl", kInt32, {"6300"}}, {"userLabel", kString, {}}}},
      {"EUtraNetwork", ENB, "eUtraNetworkId", "1", {{"userLabel", kString, {}}}},
      {"ExternalENodeBFunction", "eUtraNetworkId=1," ENB, "externalENodeBFunctionId", "N1",
       {{"eNodeBPlmnId", kName, {"id=eNodeBPlmnId," EXT}}, {"userLabel", kString, {"LTE01ERBS00112"}}}},
      {"TermPointToENB", EXT, "termPointToENBId", "1", {{"domainName", kString, {"old"}}}},
      {"ExternalEUtranCellFDD", EXT, "externalEUtranCellFDDId", "X1", {{"localCellId", kInt32, {"3"}}}},
      {"SectorCarrier", ENB, "sectorCarrierId", "S1",
       {{"configuredMaxTxPower", kInt32, {"20000"}},
        {"tilt", kFloat, {"-2.5"}},
        {"gain", kDouble, {"1e300"}},
        {"vendorData", kAny, {"0aff"}}}},
  };
  return rows;
}

// Classes the new model defines although the old one has no instances.
const std::set<std::string>& newClasses() {
  static const std::set<std::string> names = {"UeMeasControl", "MimoSleepFunction",  "Lm",
                                              "SystemFunctions", "EnergySavingFunction", "MappingInfoSIBs",
                                              "CellPerformanceRecord", "ExternalENodeB", "CellSleepProfile"};
  return names;
}

bool inOldModel(const std::string& className) {
  for (const ObjectRow& row : oldModel()) {
    if (className == row.className) return true;
  }
  return false;
}

}  // namespace

FuzzModel::FuzzModel() = default;

std::unique_ptr<InstanceGroup> FuzzModel::readOld(const std::string& className) const {
  if (!inOldModel(className)) return nullptr;
  auto group = std::make_unique<InstanceGroup>("", className);
  for (const ObjectRow& row : oldModel()) {
    if (className != row.className) continue;
    auto* instance = new Instance(row.parent, row.rdnAttribute, row.rdnValue, row.className);
    for (const AttrRow& attr : row.attrs) {
      AttributeInternalIf* attribute = nullptr;
      instance->addAttribute(attr.name, attr.type, &attribute);
      for (const char* value : attr.values) attribute->addCopy(value);
    }
    group->addInstance(instance);
  }
  return group;
}

InstanceGroupIf* FuzzModel::getInstanceGroup(const std::string& className, const std::string& prefix,
                                             bool usePrefix) {
  // The model has no namespace: a prefixed name is found without its prefix.
  std::string name = className;
  if (usePrefix && !prefix.empty() && name.compare(0, prefix.size(), prefix) == 0) name.erase(0, prefix.size());
  auto found = groups_.find(name);
  if (found != groups_.end()) return found->second.get();
  if (removed_.count(name) != 0) return nullptr;
  std::unique_ptr<InstanceGroup> group = readOld(name);
  if (!group) return nullptr;
  return (groups_[name] = std::move(group)).get();
}

InstanceIf* FuzzModel::getTheOnlyInstance(const std::string& className, const std::string& prefix) {
  InstanceGroupIf* group = getInstanceGroup(className, prefix, !prefix.empty());
  return group == nullptr || group->getNumberOfInstances() != 1 ? nullptr : group->getFirstInstance();
}

InstanceGroupIf* FuzzModel::addInstanceGroup(const std::string& className) {
  if (groups_.count(className) != 0 || (removed_.count(className) == 0 && inOldModel(className))) return nullptr;
  removed_.erase(className);
  return (groups_[className] = std::make_unique<InstanceGroup>("", className)).get();
}

bool FuzzModel::removeInstanceGroup(const std::string& className) {
  getInstanceGroup(className);
  if (groups_.erase(className) == 0) return false;
  removed_.insert(className);
  return true;
}

InstanceGroupIf* FuzzModel::getInstanceGroupForLdn(const std::string& ldn) {
  std::string firstRdn = DistinguishedName::firstRdn(ldn);
  size_t idPos = firstRdn.find("Id=");
  std::string className = firstRdn.substr(0, idPos == std::string::npos ? firstRdn.find('=') : idPos);
  if (!className.empty()) className[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(className[0])));
  return getInstanceGroup(className);
}

void FuzzModel::failUpgrade(const char* /*message*/) { ++failures_; }

bool FuzzModel::classDefined(const std::string& className) {
  return groups_.count(className) != 0 || inOldModel(className) || newClasses().count(className) != 0;
}

void FuzzModel::writeAll() const {
  ImmRecords records;
  for (const auto& entry : groups_) {
    if (!records.add(*entry.second)) return;
  }
}
