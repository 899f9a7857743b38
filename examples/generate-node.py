#!/usr/bin/env python3
"""Writes the IMM XML of the example: the package's class files, the node's
old model (class definitions and objects) and the new class definitions.

The class tables below are the single source: each schema's classes at its
old and its new version. Run from anywhere; the output is deterministic.

    examples/generate-node.py
"""

import os
from xml.sax.saxutils import escape

HERE = os.path.dirname(os.path.abspath(__file__))
NAMESPACE = "http://www.saforum.org/IMMSchema"


def rdn_name(class_name):
    """The naming attribute: the class name, first letter lower-cased, then "Id"."""
    return class_name[0].lower() + class_name[1:] + "Id"


# An attribute: (name, type, flags, default value or None). Every attribute is
# writable configuration unless the class is a runtime class.
def attr(name, imm_type, *flags, default=None):
    return (name, imm_type, list(flags), default)


def config_class(name, attrs, rdn=None):
    return {"name": name, "category": "SA_CONFIG", "rdn": rdn or rdn_name(name), "attrs": attrs}


def runtime_class(name, attrs):
    return {"name": name, "category": "SA_RUNTIME", "rdn": rdn_name(name), "attrs": attrs}


W = "SA_WRITABLE"
MV = "SA_MULTI_VALUE"
P = "SA_PERSISTENT"
C = "SA_CACHED"

# RadioNode 1_0_0: the radio network part of the node.
RADIO_NODE_OLD = [
    config_class("ManagedElement", [
        attr("userLabel", "SA_STRING_T", W),
        attr("siteLocation", "SA_STRING_T", W),
        attr("networkManagedElementId", "SA_STRING_T", W),
        attr("dnPrefix", "SA_STRING_T", W),
    ]),
    config_class("ENodeBFunction", [
        attr("eNBId", "SA_INT32_T", W),
        attr("userLabel", "SA_STRING_T", W),
        attr("sctpRef", "SA_NAME_T", W),
        attr("dscpLabel", "SA_UINT32_T", W, default="46"),
        attr("featureStateBitmap", "SA_ANY_T", W),
        attr("x2SetupTwoWayRelations", "SA_INT32_T", W, default="1"),
    ]),
    config_class("EUtraNetwork", [
        attr("userLabel", "SA_STRING_T", W),
    ]),
    config_class("EUtranFrequency", [
        attr("arfcnValueEUtranDl", "SA_INT32_T", W),
        attr("userLabel", "SA_STRING_T", W),
    ]),
    config_class("SectorCarrier", [
        attr("configuredMaxTxPower", "SA_INT32_T", W, default="20000"),
        attr("noOfTxAntennas", "SA_INT32_T", W, default="2"),
        attr("noOfRxAntennas", "SA_INT32_T", W, default="2"),
    ]),
    config_class("EUtranCellFDD", [
        attr("cellId", "SA_INT32_T", W),
        attr("earfcndl", "SA_INT32_T", W),
        attr("earfcnul", "SA_INT32_T", W),
        attr("physicalLayerCellIdGroup", "SA_INT32_T", W),
        attr("physicalLayerSubCellId", "SA_INT32_T", W),
        attr("tac", "SA_INT32_T", W),
        attr("administrativeState", "SA_INT32_T", W, default="0"),
        attr("qRxLevMin", "SA_INT32_T", W, default="-140"),
        attr("dlChannelBandwidth", "SA_UINT32_T", W, default="20000"),
        attr("cellRange", "SA_UINT32_T", W, default="15"),
        attr("acBarringFactor", "SA_DOUBLE_T", W),
        attr("lastModificationTime", "SA_UINT64_T", W),
        attr("sectorCarrierRef", "SA_NAME_T", W, MV),
        attr("activePlmnList", "SA_NAME_T", W, MV),
        attr("additionalPlmnReservedList", "SA_INT32_T", W, MV),
        attr("cellBarringBitmap", "SA_ANY_T", W),
        attr("userLabel", "SA_STRING_T", W),
    ]),
    # A struct: its instances are named by "id" below the owning cell.
    config_class("PlmnIdentity", [
        attr("mcc", "SA_INT32_T", W),
        attr("mnc", "SA_INT32_T", W),
        attr("mncLength", "SA_INT32_T", W, default="2"),
    ], rdn="id"),
    config_class("EUtranFreqRelation", [
        attr("eutranFrequencyRef", "SA_NAME_T", W),
        attr("cellReselectionPriority", "SA_INT32_T", W, default="7"),
        attr("qOffsetFreq", "SA_INT32_T", W, default="0"),
        attr("threshXHigh", "SA_INT32_T", W, default="4"),
        attr("threshXLow", "SA_INT32_T", W, default="0"),
    ]),
    config_class("EUtranCellRelation", [
        attr("neighborCellRef", "SA_NAME_T", W),
        attr("isHoAllowed", "SA_INT32_T", W, default="1"),
        attr("isRemoveAllowed", "SA_INT32_T", W, default="1"),
        attr("cellIndividualOffsetEUtran", "SA_INT32_T", W, default="0"),
        attr("createdBy", "SA_INT32_T", W),
        attr("timeOfCreation", "SA_STRING_T", W),
    ]),
    config_class("ExternalENodeBFunction", [
        attr("eNBId", "SA_INT32_T", W),
        attr("eNodeBPlmnId", "SA_NAME_T", W),
        attr("userLabel", "SA_STRING_T", W),
    ]),
    config_class("ExternalEUtranCellFDD", [
        attr("localCellId", "SA_INT32_T", W),
        attr("physicalLayerCellIdGroup", "SA_INT32_T", W),
        attr("physicalLayerSubCellId", "SA_INT32_T", W),
        attr("tac", "SA_INT32_T", W),
        attr("eutranFrequencyRef", "SA_NAME_T", W),
    ]),
    config_class("TermPointToENB", [
        attr("administrativeState", "SA_INT32_T", W, default="1"),
        attr("ipAddress", "SA_STRING_T", W),
        attr("domainName", "SA_STRING_T", W),
    ]),
    runtime_class("CellPerformanceRecord", [
        attr("lastResetTime", "SA_UINT64_T", P, C),
        attr("sleepModeCount", "SA_UINT32_T", C),
    ]),
]

# The other MO classes that live below ENodeBFunction on a radio node. The node
# has no instances of them, but its model defines them, and the function-id
# rename of 2_0_0 walks every one of them.
ENODEB_FUNCTION_SUBTREE = [
    "AnrFunction", "AnrFunctionEUtran", "AnrFunctionUtran", "AnrFunctionGeran", "PlmnInfo", "Srb1Profile",
    "Srb2Profile", "SrbLogicalChannelGroup", "SrbTable", "DataRadioBearer", "MACConfiguration", "RadioBearerTable",
    "SignalingRadioBearer", "LogicalChannelGroup", "QciProfilePredefined", "QciTable", "QciProfileOperatorDefined",
    "RlfProfile", "TimerProfile", "ResourcePartitions", "ResourcePartition", "ResourcePartitionGroup",
    "ResourcePartitionGroupMember", "PmEventService", "Rrc", "PmUeMeasControl", "ReportConfigEUtraBadCovPrim",
    "ReportConfigEUtraBadCovSec", "ReportConfigEUtraBestCell", "ReportConfigEUtraIntraFreqPm", "UeMeasControl",
    "UtraNetwork", "UtranFreqRelation", "UtranFrequency", "Paging", "Qrn", "SecurityHandling", "GeraNetwork",
    "GeranFreqGroup", "GeranFreqGroupRelation", "GeranFrequency", "ExternalCdma2000Cell", "Cdma2000CellRelation",
    "Cdma2000Freq", "Cdma2000FreqBand", "Cdma2000FreqBandRelation", "Cdma2000Network", "EUtranCellTDD",
    "ExternalEUtranCellTDD", "AirIfLoadProfile", "ReportConfigA1Prim", "ReportConfigA1Sec", "ReportConfigA5",
    "ReportConfigB2Utra", "ReportConfigB2Geran", "ReportConfigB2Cdma2000", "Cdma2000FreqRelation",
    "ReportConfigA5Anr", "ReportConfigEUtraBestCellAnr", "AdmissionControl", "ExternalGeranCell",
    "GeranCellRelation", "UtranCellRelation", "ExternalUtranCellFDD", "UtranTDDFreqRelation",
    "ExternalUtranCellTDD", "SubscriberProfileID", "HoWhiteList", "RATFreqPrio", "LoadBalancingFunction",
    "ReportConfigA4", "ReportConfigB1Geran", "ReportConfigB1Utra", "ParameterChangeRequests",
    "ReportConfigEUtraInterFreqLb", "DrxProfile", "PwsEtws", "PwsCmas", "Mbms", "MbsfnArea", "PmchMch",
    "MbmsService", "MbsfnAreaCellRelation", "ReportConfigEUtraIFBestCell", "ReportConfigSearch", "UcToolFunction",
    "UlCompGroup", "ReportConfigInterRatLb", "ExternalCdma20001xRttCell", "Cdma20001xRttBandRelation",
    "Cdma20001xRttFreqRelation", "Cdma20001xRttCellRelation", "ReportConfigCsfbCdma2000",
    "ReportConfigEUtraInterFreqMbms", "CarrierAggregationFunction", "ReportConfigSCellA6", "ReportConfigSCellA1A2",
    "ReportConfigSCellA4", "AutoCellCapEstFunction", "Etws", "ReportConfigCsfbUtra", "ReportConfigCsfbGeran",
    "ReportConfigB2Cdma20001xRtt", "PreschedulingProfile", "MimoSleepFunction", "NonPlannedPciDrxProfile",
    "PmUlInterferenceReport", "ReportConfigA5DlComp", "DlComp", "IdleModePrioAtRelease", "ImeisvProfile",
    "ImeisvTable", "CellSleepFunction", "CellPortion", "MdtConfiguration", "ReportConfigA5SoftLock",
    "CellSleepNodeFunction", "ReportConfigEUtraIFA3UlTrig", "ReportConfigA5UlTrig", "ReportConfigB2UtraUlTrig",
    "ReportConfigB2GeranUlTrig", "ReportConfigB2CdmaUlTrig", "ReportConfigB2CdmaRttUlTrig", "ReportConfigCsg",
    "UnlicensedAccessFunction", "AmoFunction", "ReportConfigEUtraInterFreqPm", "ReportConfigInterRatPm", "BbLink",
    "TermPointToMme", "TermPointToLbm", "GtpuApplicationTunnel", "TermPointToSGW", "GtpPath", "FlexibleQoSFunction",
    "FlexibleQoSGroup", "FlexibleQoSGroupMember", "NbIotCell", "SciProfile", "UserProfile",
]
RADIO_NODE_OLD += [config_class(name, []) for name in ENODEB_FUNCTION_SUBTREE]

# The struct classes used below the function, which the rename walks too; the
# node has instances of PlmnIdentity only, and MappingInfoSIBs comes with 2_0_0.
ENODEB_FUNCTION_STRUCTS = [
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
]
RADIO_NODE_OLD += [config_class(name, [], rdn="id") for name in ENODEB_FUNCTION_STRUCTS
                   if name not in ("PlmnIdentity", "MappingInfoSIBs")]
# The node predates SystemFunctions: the class exists, without instances.
RADIO_NODE_OLD.append(config_class("SystemFunctions", []))

# RadioNode 1_1_0 adds two attributes, 2_0_0 two more; nothing is removed, so
# the instances of the old model are valid in the new one until the actions
# change them.
RADIO_NODE_ADDED = {
    "EUtranCellFDD": [attr("primaryPlmnReserved", "SA_INT32_T", W, default="0")],
    "EUtranCellRelation": [attr("sCellCandidate", "SA_INT32_T", W, default="2")],
    "ENodeBFunction": [attr("timeAndPhaseSynchAlignment", "SA_INT32_T", W, default="0")],
    "EUtranFreqRelation": [attr("allowedMeasBandwidth", "SA_INT32_T", W, default="6")],
}

# Transport 3_1_0, unchanged by the upgrade.
TRANSPORT = [
    config_class("Transport", [attr("userLabel", "SA_STRING_T", W)]),
    config_class("Router", [
        attr("ttl", "SA_UINT32_T", W, default="64"),
        attr("userLabel", "SA_STRING_T", W),
    ]),
    config_class("InterfaceIPv4", [
        attr("mtu", "SA_UINT32_T", W, default="1500"),
        attr("encapsulation", "SA_NAME_T", W),
        attr("loopback", "SA_INT32_T", W, default="0"),
    ]),
    config_class("AddressIPv4", [
        attr("address", "SA_STRING_T", W),
        attr("usedAddress", "SA_STRING_T", W),
    ]),
    config_class("EthernetPort", [
        attr("encapsulation", "SA_NAME_T", W),
        attr("macAddress", "SA_ANY_T", W),
        attr("autoNegEnable", "SA_INT32_T", W, default="1"),
    ]),
    config_class("VlanPort", [
        attr("vlanId", "SA_UINT32_T", W),
        attr("encapsulation", "SA_NAME_T", W),
    ]),
    config_class("SctpProfile", [
        attr("heartbeatInterval", "SA_UINT32_T", W, default="30000"),
        attr("maxRetransmissionTimeout", "SA_UINT32_T", W, default="500"),
        attr("assocMaxRtx", "SA_UINT32_T", W, default="8"),
    ]),
    config_class("SctpEndpoint", [
        attr("localIpAddress", "SA_NAME_T", W, MV),
        attr("portNumber", "SA_UINT32_T", W),
        attr("sctpProfile", "SA_NAME_T", W),
    ]),
]

# Equipment 1_0_0: introduced by the upgrade; the old model has none of it.
EQUIPMENT = [
    config_class("Equipment", [attr("userLabel", "SA_STRING_T", W)]),
    config_class("FieldReplaceableUnit", [
        attr("administrativeState", "SA_INT32_T", W, default="1"),
        attr("positionCoordinates", "SA_STRING_T", W),
        attr("userLabel", "SA_STRING_T", W),
    ]),
    config_class("RfPort", [
        attr("vswrSupervisionActive", "SA_INT32_T", W, default="1"),
        attr("vswrSupervisionSensitivity", "SA_INT32_T", W, default="100"),
    ]),
    config_class("AntennaUnitGroup", [attr("userLabel", "SA_STRING_T", W)]),
    config_class("AntennaUnit", [
        attr("mechanicalAntennaTilt", "SA_INT32_T", W, default="0"),
        attr("maxTotalTilt", "SA_INT32_T", W),
        attr("minTotalTilt", "SA_INT32_T", W),
    ]),
    config_class("RfBranch", [
        attr("dlAttenuation", "SA_INT32_T", W, MV),
        attr("ulAttenuation", "SA_INT32_T", W, MV),
        attr("rfPortRef", "SA_NAME_T", W),
        attr("dlTrafficDelay", "SA_DOUBLE_T", W),
    ]),
]


def with_added(classes, added):
    result = []
    for c in classes:
        c = dict(c)
        c["attrs"] = c["attrs"] + added.get(c["name"], [])
        result.append(c)
    return result


# Old classes that 1_1_0 drops: the cells' sleep-mode settings.
RADIO_NODE_OBSOLETE = [
    config_class("CellSleepProfile", [
        attr("sleepMode", "SA_INT32_T", W, default="0"),
        attr("sleepStartTime", "SA_STRING_T", W),
    ]),
]
RADIO_NODE_OLD = RADIO_NODE_OLD + RADIO_NODE_OBSOLETE


def upgraded_1_1_0(classes):
    """The model changes of 1_1_0 beyond added attributes: a renamed class, a
    renamed, a removed and a multi-valued added attribute, a dropped and a
    created class."""
    renamed_classes = {"ExternalENodeBFunction": "ExternalENodeB"}
    renamed_attrs = {("SectorCarrier", "configuredMaxTxPower"): "maxTransmissionPower"}
    removed_attrs = {("EUtranCellRelation", "timeOfCreation")}
    dropped = {c["name"] for c in RADIO_NODE_OBSOLETE}
    result = []
    for c in classes:
        if c["name"] in dropped:
            continue
        name = renamed_classes.get(c["name"], c["name"])
        attrs = [(renamed_attrs.get((c["name"], a[0]), a[0]),) + a[1:] for a in c["attrs"]
                 if (c["name"], a[0]) not in removed_attrs]
        if name == "EUtranCellFDD":
            attrs.append(attr("ulInterferenceThresholds", "SA_INT32_T", W, MV))
        result.append(dict(c, name=name, rdn=c["rdn"] if c["rdn"] == "id" else rdn_name(name), attrs=attrs))
    result.append(config_class("EnergySavingFunction", [
        attr("savingThreshold", "SA_INT32_T", W, default="20"),
        attr("wakeUpDelay", "SA_INT32_T", W, default="600"),
    ]))
    return result


RADIO_NODE_NEW = upgraded_1_1_0(with_added(RADIO_NODE_OLD, RADIO_NODE_ADDED))

# 2_0_0 also names the function by eNBFunctionId, links a MappingInfoSIBs struct
# from every cell, and brings the license manager Lm (a root instance on nodes
# without SystemFunctions).
RADIO_NODE_NEW = [dict(c, rdn="eNBFunctionId") if c["name"] == "ENodeBFunction" else c
                  for c in with_added(RADIO_NODE_NEW, {"EUtranCellFDD": [attr("mappingInfo", "SA_NAME_T", W)]})]
RADIO_NODE_NEW += [
    config_class("MappingInfoSIBs", [
        attr("mappingSib3", "SA_INT32_T", W, default="1"),
        attr("mappingSib4", "SA_INT32_T", W, default="1"),
    ], rdn="id"),
    config_class("Lm", [attr("fingerprint", "SA_STRING_T", W)]),
]


def class_xml(c):
    runtime = c["category"] == "SA_RUNTIME"
    rdn_flags = ["SA_PERSISTENT", "SA_CACHED"] if runtime else ["SA_INITIALIZED"]
    lines = ['  <class name="%s">' % c["name"], "    <category>%s</category>" % c["category"], "    <rdn>",
             "      <name>%s</name>" % c["rdn"], "      <type>SA_STRING_T</type>",
             "      <category>%s</category>" % c["category"]]
    lines += ["      <flag>%s</flag>" % f for f in rdn_flags]
    lines.append("    </rdn>")
    for name, imm_type, flags, default in c["attrs"]:
        lines += ["    <attr>", "      <name>%s</name>" % name, "      <type>%s</type>" % imm_type,
                  "      <category>%s</category>" % c["category"]]
        lines += ["      <flag>%s</flag>" % f for f in flags]
        if default is not None:
            lines.append("      <default-value>%s</default-value>" % default)
        lines.append("    </attr>")
    lines.append("  </class>")
    return lines


def object_xml(class_name, dn, attrs):
    lines = ['  <object class="%s">' % class_name, "    <dn>%s</dn>" % escape(dn)]
    for name, values in attrs:
        if values is None or values == []:
            continue
        if not isinstance(values, list):
            values = [values]
        lines.append("    <attr>")
        lines.append("      <name>%s</name>" % name)
        lines += ["      <value>%s</value>" % escape(str(v)) for v in values]
        lines.append("    </attr>")
    lines.append("  </object>")
    return lines


def document(comment, classes, objects=()):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<!-- %s -->" % comment,
             '<imm:IMM-contents xmlns:imm="%s">' % NAMESPACE]
    for c in classes:
        lines += class_xml(c)
    for o in objects:
        lines += object_xml(*o)
    lines.append("</imm:IMM-contents>")
    return "\n".join(lines) + "\n"


def write(relative, text):
    path = os.path.join(HERE, relative)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as f:
        f.write(text)


ME = "managedElementId=LTE01ERBS00042"
ENB = "eNodeBFunctionId=1," + ME
NETWORK = "eUtraNetworkId=1," + ENB
TRANSPORT_DN = "transportId=1," + ME
FREQUENCIES = [("1", 6300), ("2", 1850), ("3", 3050)]
CELLS_PER_FREQUENCY = 3


def hex_bytes(seed, count):
    """SA_ANY_T values: lower-case hexadecimal, two digits a byte."""
    return "".join("%02x" % ((seed * 37 + i * 91) % 256) for i in range(count))


def radio_node_objects():
    objects = [
        ("ManagedElement", ME, [("userLabel", "Malmo Centrum Roof"), ("siteLocation", "55.6050,13.0038"),
                                ("networkManagedElementId", "LTE01ERBS00042"),
                                ("dnPrefix", "SubNetwork=ONRM_ROOT,SubNetwork=LTE01")]),
        ("ENodeBFunction", ENB, [("eNBId", 142), ("userLabel", "LTE01ERBS00042"),
                                 ("sctpRef", "sctpEndpointId=S1X2," + TRANSPORT_DN), ("dscpLabel", 46),
                                 ("featureStateBitmap", hex_bytes(1, 8)), ("x2SetupTwoWayRelations", 1)]),
        ("EUtraNetwork", NETWORK, [("userLabel", "LTE01")]),
    ]
    for fid, earfcn in FREQUENCIES:
        objects.append(("EUtranFrequency", "eUtranFrequencyId=%s,%s" % (fid, NETWORK),
                        [("arfcnValueEUtranDl", earfcn), ("userLabel", "EARFCN %d" % earfcn)]))

    cells = []
    for f_index, (fid, earfcn) in enumerate(FREQUENCIES):
        for sector in range(1, CELLS_PER_FREQUENCY + 1):
            cells.append((len(cells) + 1, f_index, sector, earfcn))
    for number, f_index, sector, earfcn in cells:
        carrier = "sectorCarrierId=%d,%s" % (number, ENB)
        cell = "eUtranCellFDDId=LTE01ERBS00042-%d,%s" % (number, ENB)
        objects.append(("SectorCarrier", carrier, [("configuredMaxTxPower", 20000 + 10000 * (f_index == 0)),
                                                   ("noOfTxAntennas", 2 + 2 * (f_index == 0)),
                                                   ("noOfRxAntennas", 2 + 2 * (f_index == 0))]))
        plmns = ["id=activePlmnList_%d,%s" % (i, cell) for i in range(2)]
        objects.append(("EUtranCellFDD", cell, [
            ("cellId", number), ("earfcndl", earfcn), ("earfcnul", earfcn + 18000),
            ("physicalLayerCellIdGroup", 40 + number // 3), ("physicalLayerSubCellId", sector - 1),
            ("tac", 4711), ("administrativeState", 1 if number != 9 else 0), ("qRxLevMin", -140 + 2 * f_index),
            ("dlChannelBandwidth", [20000, 10000, 15000][f_index]), ("cellRange", 15),
            ("acBarringFactor", "%.2f" % (0.95 - 0.05 * f_index)), ("lastModificationTime", 1764000000000 + number),
            ("sectorCarrierRef", [carrier]), ("activePlmnList", plmns),
            ("additionalPlmnReservedList", [0, 0, 0, 0, 0] if number % 2 else [0, 1, 0, 0, 0]),
            ("cellBarringBitmap", hex_bytes(number, 4)),
            ("userLabel", "Sector %d carrier %d" % (sector, f_index + 1))]))
        for i, (mcc, mnc) in enumerate([(240, 1), (240, 7)]):
            objects.append(("PlmnIdentity", plmns[i], [("mcc", mcc), ("mnc", mnc), ("mncLength", 2)]))
        objects.append(("CellPerformanceRecord", "cellPerformanceRecordId=1," + cell,
                        [("lastResetTime", 1763900000000 + 1000 * number), ("sleepModeCount", number * 3)]))

    externals = []
    for e in range(1, 13):
        enb = "externalENodeBFunctionId=LTE01ERBS%05d,%s" % (100 + e, NETWORK)
        plmn = "id=eNodeBPlmnId," + enb
        objects.append(("ExternalENodeBFunction", enb,
                        [("eNBId", 200 + e), ("userLabel", "LTE01ERBS%05d" % (100 + e)), ("eNodeBPlmnId", plmn)]))
        objects.append(("PlmnIdentity", plmn, [("mcc", 240), ("mnc", 1 if e % 4 else 7), ("mncLength", 2)]))
        objects.append(("TermPointToENB", "termPointToENBId=1," + enb,
                        [("administrativeState", 1), ("ipAddress", "10.%d.8.%d" % (30 + e // 8, 16 + e)),
                         ("domainName", "erbs%05d.lte01.example.net" % (100 + e))]))
        for c in range(1, 4):
            fid = FREQUENCIES[(e + c) % len(FREQUENCIES)][0]
            dn = "externalEUtranCellFDDId=LTE01ERBS%05d-%d,%s" % (100 + e, c, enb)
            externals.append((dn, fid))
            objects.append(("ExternalEUtranCellFDD", dn, [
                ("localCellId", c), ("physicalLayerCellIdGroup", (e * 3 + c) % 168), ("physicalLayerSubCellId", c - 1),
                ("tac", 4711 + e % 3), ("eutranFrequencyRef", "eUtranFrequencyId=%s,%s" % (fid, NETWORK))]))

    relation_id = 0
    for number, f_index, sector, earfcn in cells:
        cell = "eUtranCellFDDId=LTE01ERBS00042-%d,%s" % (number, ENB)
        for fid, _ in FREQUENCIES:
            relation = "eUtranFreqRelationId=%s,%s" % (fid, cell)
            objects.append(("EUtranFreqRelation", relation, [
                ("eutranFrequencyRef", "eUtranFrequencyId=%s,%s" % (fid, NETWORK)),
                ("cellReselectionPriority", 7 - int(fid)), ("qOffsetFreq", 0), ("threshXHigh", 4 + 2 * int(fid)),
                ("threshXLow", 2)]))
            internal = ["eUtranCellFDDId=LTE01ERBS00042-%d,%s" % (n, ENB) for n, fi, _, _ in cells
                        if FREQUENCIES[fi][0] == fid and n != number]
            external = [dn for dn, efid in externals if efid == fid][(number % 4):(number % 4) + 2]
            for neighbor in internal + external:
                relation_id += 1
                objects.append(("EUtranCellRelation", "eUtranCellRelationId=%d,%s" % (relation_id, relation), [
                    ("neighborCellRef", neighbor), ("isHoAllowed", 1), ("isRemoveAllowed", 0 if neighbor in internal else 1),
                    ("cellIndividualOffsetEUtran", (relation_id % 5) - 2), ("createdBy", 1 if neighbor in external else 0),
                    ("timeOfCreation", "2025-%02d-%02dT10:%02d:00" % (1 + relation_id % 12, 1 + relation_id % 28,
                                                                      relation_id % 60))]))
    return objects


def cell_sleep_objects():
    """One CellSleepProfile below each cell: gone after the upgrade."""
    return [("CellSleepProfile", "cellSleepProfileId=1,eUtranCellFDDId=LTE01ERBS00042-%d,%s" % (n, ENB),
             [("sleepMode", n % 2), ("sleepStartTime", "01:00")])
            for n in range(1, len(FREQUENCIES) * CELLS_PER_FREQUENCY + 1)]


def transport_objects():
    router = "routerId=LTEUP," + TRANSPORT_DN
    oam = "routerId=OAM," + TRANSPORT_DN
    objects = [("Transport", TRANSPORT_DN, [("userLabel", "Transport")])]
    for port in (1, 2):
        objects.append(("EthernetPort", "ethernetPortId=TN_%s,%s" % ("AB"[port - 1], TRANSPORT_DN),
                        [("macAddress", "0012ab%06x" % (0x42f0 + port)), ("autoNegEnable", 1)]))
        objects.append(("VlanPort", "vlanPortId=VLAN%d,%s" % (100 + port, TRANSPORT_DN),
                        [("vlanId", 100 + port),
                         ("encapsulation", "ethernetPortId=TN_%s,%s" % ("AB"[port - 1], TRANSPORT_DN))]))
    for name, r, vlan, address in [("LTEUP", router, 101, "10.30.8.2/24"), ("OAM", oam, 102, "10.200.4.42/26")]:
        objects.append(("Router", r, [("ttl", 64), ("userLabel", name)]))
        interface = "interfaceIPv4Id=1," + r
        objects.append(("InterfaceIPv4", interface,
                        [("mtu", 1500), ("encapsulation", "vlanPortId=VLAN%d,%s" % (vlan, TRANSPORT_DN)),
                         ("loopback", 0)]))
        objects.append(("AddressIPv4", "addressIPv4Id=1," + interface,
                        [("address", address), ("usedAddress", address.split("/")[0])]))
    objects.append(("SctpProfile", "sctpProfileId=1," + TRANSPORT_DN,
                    [("heartbeatInterval", 30000), ("maxRetransmissionTimeout", 500), ("assocMaxRtx", 8)]))
    objects.append(("SctpEndpoint", "sctpEndpointId=S1X2," + TRANSPORT_DN,
                    [("localIpAddress", ["addressIPv4Id=1,interfaceIPv4Id=1," + router]), ("portNumber", 36412),
                     ("sctpProfile", "sctpProfileId=1," + TRANSPORT_DN)]))
    return objects


def main():
    schemas = [("RadioNode", RADIO_NODE_OLD, RADIO_NODE_NEW, "1_0_0", "2_0_0",
                radio_node_objects() + cell_sleep_objects()),
               ("Transport", TRANSPORT, TRANSPORT, "3_1_0", "3_1_0", transport_objects()),
               ("Equipment", None, EQUIPMENT, None, "1_0_0", [])]
    for name, old, new, old_version, new_version, objects in schemas:
        write("package/share/models/%s/imm/%s_imm_classes.xml" % (name, name),
              document("%s %s class definitions." % (name, new_version), new))
        write("node/imm/new/%s.xml" % name, document("%s %s class definitions." % (name, new_version), new))
        if old is not None:
            write("node/imm/old/%s.xml" % name,
                  document("%s %s: class definitions and objects of the node before the upgrade." % (name, old_version),
                           old, objects))


if __name__ == "__main__":
    main()
