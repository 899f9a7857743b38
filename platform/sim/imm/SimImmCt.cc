// The simulated IMM conversion tool: the C calls of safcImmCt.h over the
// files of the simulated node (see SimImmTool).

#include "SimImmTool.h"
#include "safcImmCt.h"

namespace {

SimImmTool& tool() { return SimImmTool::instance(); }

}  // namespace

extern "C" SaAisErrorT safcImmCtInitialize(SafcImmCtHandleT* handle) { return tool().initialize(handle, 0); }

extern "C" SaAisErrorT safcImmCtInitialize_2(SafcImmCtHandleT* handle, SaUint32T mode) {
  return tool().initialize(handle, mode);
}

extern "C" SaAisErrorT safcImmCtFinalize(SafcImmCtHandleT handle) { return tool().finalize(handle); }

extern "C" SaAisErrorT safcImmCtReadSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                                  SafcImmCtSchemaVersionT* fromVersion,
                                                  SafcImmCtSchemaVersionT* toVersion) {
  SafcImmCtSchemaVersionT_2 from{}, to{};
  SaAisErrorT rc = tool().readSchemaVersion(handle, schemaName, fromVersion != nullptr ? &from : nullptr,
                                            toVersion != nullptr ? &to : nullptr);
  if (rc == SA_AIS_OK) {
    *fromVersion = {from.version, from.release, from.correction};
    *toVersion = {to.version, to.release, to.correction};
  }
  return rc;
}

extern "C" SaAisErrorT safcImmCtReadSchemaVersion_2(SafcImmCtHandleT handle, const char* schemaName,
                                                    SafcImmCtSchemaVersionT_2* fromVersion,
                                                    SafcImmCtSchemaVersionT_2* toVersion) {
  return tool().readSchemaVersion(handle, schemaName, fromVersion, toVersion);
}

extern "C" SaAisErrorT safcImmCtFailUpgrade(SafcImmCtHandleT handle, const char* reason) {
  return tool().failUpgrade(handle, reason);
}

extern "C" SaAisErrorT safcImmCtReadInstances_2(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                                SafcImmCtInstanceGroupT*** instanceGroups) {
  return tool().run("safcImmCtReadInstances_2", "ReadInstances", handle, className != nullptr ? className : "",
                    [&](SimImmSession& s, std::string* why) {
                      return s.readInstances(className, instanceGroups, why);
                    });
}

extern "C" SaAisErrorT safcImmCtWriteInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) {
  return tool().run("safcImmCtWriteInstances", "WriteInstances", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) { return s.write(instanceGroups, why); });
}

extern "C" SaAisErrorT safcImmCtCopyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) {
  return tool().run("safcImmCtCopyInstances", "CopyInstances", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) { return s.copy(classNames, why); });
}

extern "C" SaAisErrorT safcImmCtWaitForClasses(SafcImmCtHandleT handle, SaImmClassNameT* classNames) {
  return tool().run("safcImmCtWaitForClasses", "WaitForClasses", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) { return s.waitForClasses(classNames, why); });
}

// Runtime-persistent instances join the session's new model like the
// configuration ones; the implementer only has to be named.
extern "C" SaAisErrorT safcImmCtWriteRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                                 SafcImmCtInstanceGroupT** instanceGroups) {
  return tool().run("safcImmCtWriteRtInstances", "WriteRtInstances", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) {
                      if (implementerName == nullptr || implementerName[0] == '\0') {
                        *why = "no implementer name";
                        return SA_AIS_ERR_INVALID_PARAM;
                      }
                      return s.write(instanceGroups, why);
                    });
}

extern "C" SaAisErrorT safcImmCtCopyRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                                SaImmClassNameT* classNames) {
  return tool().run("safcImmCtCopyRtInstances", "CopyRtInstances", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) {
                      if (implementerName == nullptr || implementerName[0] == '\0') {
                        *why = "no implementer name";
                        return SA_AIS_ERR_INVALID_PARAM;
                      }
                      return s.copy(classNames, why);
                    });
}

extern "C" SaAisErrorT safcImmCtInstanceGroupsMemoryFree(SafcImmCtHandleT handle,
                                                         SafcImmCtInstanceGroupT** instanceGroups) {
  return tool().run("safcImmCtInstanceGroupsMemoryFree", "InstanceGroupsMemoryFree", handle, nullptr,
                    [&](SimImmSession& s, std::string* why) { return s.freeGroups(instanceGroups, why); });
}
