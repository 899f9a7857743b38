#include "actions/RenameENodeBFunctionIdAction.h"

#include <iterator>

#include "actions/ArgumentValue.h"
#include "common/Log.h"
#include "icti/DistinguishedName.h"
#include "icti/ValueType.h"

namespace {

// The lists in rewrite order, several names a line.
// clang-format off
constexpr const char* kMoClasses[] = {
    "AnrFunction", "AnrFunctionEUtran", "AnrFunctionUtran", "AnrFunctionGeran", "PlmnInfo", "Srb1Profile",
    "Srb2Profile", "SrbLogicalChannelGroup", "SrbTable", "DataRadioBearer", "MACConfiguration",
    "RadioBearerTable", "SignalingRadioBearer", "LogicalChannelGroup", "QciProfilePredefined", "QciTable",
    "QciProfileOperatorDefined", "RlfProfile", "TimerProfile", "ResourcePartitions", "ResourcePartition",
    "ResourcePartitionGroup", "ResourcePartitionGroupMember", "ExternalENodeBFunction", "EUtraNetwork",
    "PmEventService", "Rrc", "PmUeMeasControl", "ReportConfigEUtraBadCovPrim", "ReportConfigEUtraBadCovSec",
    "ReportConfigEUtraBestCell", "ReportConfigEUtraIntraFreqPm", "UeMeasControl", "UtraNetwork",
    "UtranFreqRelation", "UtranFrequency", "Paging", "Qrn", "SecurityHandling", "GeraNetwork",
    "GeranFreqGroup", "GeranFreqGroupRelation", "GeranFrequency", "ExternalCdma2000Cell",
    "ExternalEUtranCellFDD", "EUtranCellFDD", "EUtranCellRelation", "EUtranFreqRelation", "EUtranFrequency",
    "Cdma2000CellRelation", "Cdma2000Freq", "Cdma2000FreqBand", "Cdma2000FreqBandRelation", "Cdma2000Network",
    "EUtranCellTDD", "ExternalEUtranCellTDD", "AirIfLoadProfile", "ReportConfigA1Prim", "ReportConfigA1Sec",
    "ReportConfigA5", "ReportConfigB2Utra", "ReportConfigB2Geran", "ReportConfigB2Cdma2000",
    "Cdma2000FreqRelation", "ReportConfigA5Anr", "ReportConfigEUtraBestCellAnr", "AdmissionControl",
    "ExternalGeranCell", "GeranCellRelation", "UtranCellRelation", "ExternalUtranCellFDD",
    "UtranTDDFreqRelation", "ExternalUtranCellTDD", "SubscriberProfileID", "HoWhiteList", "RATFreqPrio",
    "LoadBalancingFunction", "ReportConfigA4", "ReportConfigB1Geran", "ReportConfigB1Utra",
    "ParameterChangeRequests", "ReportConfigEUtraInterFreqLb", "DrxProfile", "PwsEtws", "PwsCmas", "Mbms",
    "MbsfnArea", "PmchMch", "MbmsService", "MbsfnAreaCellRelation", "ReportConfigEUtraIFBestCell",
    "ReportConfigSearch", "SectorCarrier", "UcToolFunction", "UlCompGroup", "ReportConfigInterRatLb",
    "ExternalCdma20001xRttCell", "Cdma20001xRttBandRelation", "Cdma20001xRttFreqRelation",
    "Cdma20001xRttCellRelation", "ReportConfigCsfbCdma2000", "ReportConfigEUtraInterFreqMbms",
    "CarrierAggregationFunction", "ReportConfigSCellA6", "ReportConfigSCellA1A2", "ReportConfigSCellA4",
    "AutoCellCapEstFunction", "Etws", "ReportConfigCsfbUtra", "ReportConfigCsfbGeran",
    "ReportConfigB2Cdma20001xRtt", "PreschedulingProfile", "MimoSleepFunction", "NonPlannedPciDrxProfile",
    "PmUlInterferenceReport", "ReportConfigA5DlComp", "DlComp", "IdleModePrioAtRelease", "ImeisvProfile",
    "ImeisvTable", "CellSleepFunction", "CellPortion", "MdtConfiguration", "ReportConfigA5SoftLock",
    "CellSleepNodeFunction", "ReportConfigEUtraIFA3UlTrig", "ReportConfigA5UlTrig",
    "ReportConfigB2UtraUlTrig", "ReportConfigB2GeranUlTrig", "ReportConfigB2CdmaUlTrig",
    "ReportConfigB2CdmaRttUlTrig", "ReportConfigCsg", "UnlicensedAccessFunction", "AmoFunction",
    "ReportConfigEUtraInterFreqPm", "ReportConfigInterRatPm", "BbLink", "TermPointToENB", "TermPointToMme",
    "TermPointToLbm", "GtpuApplicationTunnel", "TermPointToSGW", "GtpPath", "FlexibleQoSFunction",
    "FlexibleQoSGroup", "FlexibleQoSGroupMember", "NbIotCell", "SciProfile", "UserProfile",
};
constexpr const char* kStructClasses[] = {
    "EutranCellArea", "GlobalEnbId", "TrafficModelPrb", "CsfbRegParams1xRtt", "ReportConfigParamsUlQciOffset",
    "FreqGroupPrioGERAN", "MobilityStatusRO", "MbsfnSubframeConfig", "EUtranFreqToQciProfileRelation",
    "MobilityParams1xRtt", "BandClassPrioCDMA2000", "WhiteListPlmnIdentity", "FrameStartOffsetTDD",
    "PmUeMeasIntraFreq", "FreqPrioEUTRA", "TraceStreamStructRO", "OcngPrbSerie", "Tmgi", "EutranCellCorner",
    "SpectrumEmissionReqMapping", "Cdma1xRttCellId", "TacSvAndSnRange", "ParameterChangeRequestRO",
    "PmUeMeasInterFreq", "ChangeNotificationSIBs", "PerformedOperation", "SIB6", "SubFrameConfig",
    "MappingInfoSIBs", "Cdma2000FreqRelQciB2ThrOffsets", "SIB3", "ReportConfigParamsQciOffset",
    "CandNeighborRelInfoRO", "Cgi", "AcBarringPresence", "GUGroupIdRO", "PlmnIdentityRO",
    "GeranFreqRelQciB2ThrOffsets", "FrameStartOffset", "CellIdentityUtra", "DistributionInfo", "SIB7",
    "BlackListEntry", "AcBarringConfig1xRtt", "NotificationConfig", "AcBarringConfig", "PmUeMeasInterRat",
    "FreqPrioUTRAN", "BandClassPrioCdma1xRtt", "UtranFreqToQciProfileRelation", "PeriodicitySI", "SIB8",
    "MSCid", "PlmnIdentity", "MeasReportConfigParams", "MappingInfoSIBsBr",
};
// clang-format on
static_assert(sizeof kMoClasses / sizeof kMoClasses[0] == RenameENodeBFunctionIdAction::kMoClassCount, "MO classes");
static_assert(sizeof kStructClasses / sizeof kStructClasses[0] == RenameENodeBFunctionIdAction::kStructClassCount,
              "struct classes");

constexpr const char kReservedBy[] = "reservedBy";

bool endsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace

// The function's names before and after the rename. A name lies in the
// function's subtree when it is the function's distinguished name or ends in
// "," followed by it; the rename replaces the function's RDN in it and keeps
// the parts before and after.
struct RenameENodeBFunctionIdAction::Rename {
  std::string oldRdn;
  std::string newRdn;
  std::string oldLdn;
  std::string newLdn;

  // Where the function's distinguished name `functionLdn` starts in `name`,
  // or npos when `name` is not in its subtree.
  static size_t subtreeStart(const std::string& name, const std::string& functionLdn) {
    if (!endsWith(name, functionLdn)) return std::string::npos;
    size_t start = name.size() - functionLdn.size();
    return start == 0 || DistinguishedName::isSeparator(name, start - 1) ? start : std::string::npos;
  }
  std::string renamed(const std::string& name, size_t start) const { return name.substr(0, start) + newLdn; }
};

RenameENodeBFunctionIdAction::RenameENodeBFunctionIdAction()
    : UpgradeAction("RenameENodeBFunctionIdAction", renameFunction, withFilter({"newENodeBFunctionIdName"})) {
  classNames_.reserve(kMoClassCount + kStructClassCount);
  classNames_.insert(classNames_.end(), std::begin(kMoClasses), std::end(kMoClasses));
  classNames_.insert(classNames_.end(), std::begin(kStructClasses), std::end(kStructClasses));
}

bool RenameENodeBFunctionIdAction::validateArgs(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  requireHandler(ictiHandler);
  std::string newName;
  if (!args.getArgument("newENodeBFunctionIdName", newName)) {
    fail(ictiHandler, "RenameENodeBFunctionIdAction requires attribute newENodeBFunctionIdName");
    return false;
  }
  if (!isPlainName(newName)) {
    fail(ictiHandler, "RenameENodeBFunctionIdAction: newENodeBFunctionIdName %s is no attribute name",
         newName.c_str());
    return false;
  }
  return true;
}

void RenameENodeBFunctionIdAction::reportMissingInstanceGroup(ActionArgumentsIf& args, IctiHandlerIf* ictiHandler) {
  fail(
      ictiHandler,
      "Action Failed: renameAttribute: No instance group to operate on. Action arguments: newENodeBFunctionIdName = %s",
      argumentValue(args, "newENodeBFunctionIdName").c_str());
}

bool RenameENodeBFunctionIdAction::renameFunction(InstanceIf& function, ActionContext& context) {
  const std::string newName = argumentValue(context.args, "newENodeBFunctionIdName");
  TAV_LOG(INFO, "RenameENodeBFunctionIdAction: rename to %s", newName.c_str());
  if (!context.filter.applies(function, 0)) return true;
  Rename rename;
  rename.oldRdn = function.getRdn();
  size_t equals = rename.oldRdn.find('=');
  if (rename.oldRdn.substr(0, equals) == newName) {
    TAV_TRACE(INFO, "RenameENodeBFunctionIdAction: %s already renamed, nothing to do", function.getLdn().c_str());
    return true;
  }
  rename.oldLdn = function.getLdn();
  rename.newRdn = newName + "=" + (equals == std::string::npos ? std::string() : rename.oldRdn.substr(equals + 1));
  if (!function.setRdn(rename.newRdn)) {
    fail(&context.handler, "RenameENodeBFunctionIdAction: %s cannot be named %s", rename.oldLdn.c_str(),
         rename.newRdn.c_str());
    return false;
  }
  rename.newLdn = function.getLdn();

  for (const char* className : kMoClasses) {
    if (!rewriteSubtree(context.handler, className, rename)) return false;
  }
  for (const char* className : kStructClasses) rewriteSubtree(context.handler, className, rename);
  return true;
}

bool RenameENodeBFunctionIdAction::rewriteSubtree(IctiHandlerIf& handler, const std::string& className,
                                                  const Rename& rename) {
  InstanceGroupIf* group = handler.getInstanceGroup(className);
  if (group == nullptr) {
    // Reported for struct classes too; only the caller ignores their result.
    fail(&handler, "RenameENodeBFunctionIdAction: failed to find InstanceGroup for %s", className.c_str());
    return false;
  }
  for (InstanceIf* instance : group->getInstances()) rewriteInstance(*instance, rename);
  return true;
}

void RenameENodeBFunctionIdAction::rewriteInstance(InstanceIf& instance, const Rename& rename) {
  const std::string parentName = instance.getParentName();
  size_t start = Rename::subtreeStart(parentName, rename.oldLdn);
  bool alreadyNew = false;
  if (start == std::string::npos) {
    start = Rename::subtreeStart(parentName, rename.newLdn);
    alreadyNew = start != std::string::npos;
  }
  if (start == std::string::npos) {
    TAV_LOG(INFO_ABN, "RenameENodeBFunctionIdAction: invalid entry in hard coded list: %s", parentName.c_str());
    return;
  }
  const std::string& functionRdn = alreadyNew ? rename.newRdn : rename.oldRdn;
  const size_t equalsPos = functionRdn.find('=');
  TAV_TRACE(TRACE1,
            "Debug: currParentName: %s, lastCommaPos: %lu, parentNameExceptLast: %s, eNodeBFuncRdn: %s, equalsPos: %u, "
            "eNodeBFuncIdAttrName: %s, eNodeBFuncId: %s",
            parentName.c_str(), static_cast<unsigned long>(start == 0 ? std::string::npos : start - 1),
            parentName.substr(0, start == 0 ? 0 : start - 1).c_str(), functionRdn.c_str(),
            static_cast<unsigned>(equalsPos), functionRdn.substr(0, equalsPos).c_str(),
            functionRdn.substr(equalsPos + 1).c_str());
  if (alreadyNew) {
    TAV_TRACE(INFO, "RenameENodeBFunctionIdAction: already had the new parentName: %s", parentName.c_str());
  } else {
    instance.setParentName(rename.renamed(parentName, start));
    TAV_TRACE(INFO, "RenameENodeBFunctionIdAction: changed parentName for: %s", instance.getLdn().c_str());
  }

  for (const auto& [name, attribute] : instance.getAttributes()) {
    if (name == kReservedBy || attribute->getType() == ValueType::kName) rewriteReferences(*attribute, rename);
  }
}

void RenameENodeBFunctionIdAction::rewriteReferences(AttributeInternalIf& attribute, const Rename& rename) {
  for (uint32_t i = 0; i < attribute.getNumberOfValues(); ++i) {
    const std::string value = attribute.readValueAtIndex(i).value_or("");
    size_t start = Rename::subtreeStart(value, rename.oldLdn);
    if (start != std::string::npos) attribute.setValueAtIndex(i, rename.renamed(value, start).c_str());
  }
}
