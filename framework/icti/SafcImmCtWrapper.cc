#include "icti/SafcImmCtWrapper.h"

SaAisErrorT SafcImmCtWrapper::initialize(SafcImmCtHandleT* handle, SaUint32T mode) {
  return safcImmCtInitialize_2(handle, mode);
}

SaAisErrorT SafcImmCtWrapper::finalize(SafcImmCtHandleT handle) { return safcImmCtFinalize(handle); }

SaAisErrorT SafcImmCtWrapper::readSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                                SafcImmCtSchemaVersionT_2* fromVersion,
                                                SafcImmCtSchemaVersionT_2* toVersion) {
  return safcImmCtReadSchemaVersion_2(handle, schemaName, fromVersion, toVersion);
}

SaAisErrorT SafcImmCtWrapper::failUpgrade(SafcImmCtHandleT handle, const char* reason) {
  return safcImmCtFailUpgrade(handle, reason);
}

SaAisErrorT SafcImmCtWrapper::readInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                            SafcImmCtInstanceGroupT*** instanceGroups) {
  return safcImmCtReadInstances_2(handle, className, instanceGroups);
}

SaAisErrorT SafcImmCtWrapper::writeInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtWriteInstances(handle, instanceGroups);
}

SaAisErrorT SafcImmCtWrapper::copyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) {
  return safcImmCtCopyInstances(handle, classNames);
}

SaAisErrorT SafcImmCtWrapper::waitForClasses(SafcImmCtHandleT handle, SaImmClassNameT* classNames) {
  return safcImmCtWaitForClasses(handle, classNames);
}

SaAisErrorT SafcImmCtWrapper::writeRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                               SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtWriteRtInstances(handle, implementerName, instanceGroups);
}

SaAisErrorT SafcImmCtWrapper::copyRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                              SaImmClassNameT* classNames) {
  return safcImmCtCopyRtInstances(handle, implementerName, classNames);
}

SaAisErrorT SafcImmCtWrapper::instanceGroupsMemoryFree(SafcImmCtHandleT handle,
                                                       SafcImmCtInstanceGroupT** instanceGroups) {
  return safcImmCtInstanceGroupsMemoryFree(handle, instanceGroups);
}
