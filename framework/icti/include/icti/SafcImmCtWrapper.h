// Forwards each operation to the platform's conversion-tool library.

#ifndef VOSK_ICTI_SAFC_IMM_CT_WRAPPER_H
#define VOSK_ICTI_SAFC_IMM_CT_WRAPPER_H

#include "icti/SafcImmCtWrapperIf.h"

class SafcImmCtWrapper : public SafcImmCtWrapperIf {
 public:
  SaAisErrorT initialize(SafcImmCtHandleT* handle, SaUint32T mode) override;
  SaAisErrorT finalize(SafcImmCtHandleT handle) override;
  SaAisErrorT readSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                SafcImmCtSchemaVersionT_2* fromVersion, SafcImmCtSchemaVersionT_2* toVersion) override;
  SaAisErrorT failUpgrade(SafcImmCtHandleT handle, const char* reason) override;
  SaAisErrorT readInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                            SafcImmCtInstanceGroupT*** instanceGroups) override;
  SaAisErrorT writeInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) override;
  SaAisErrorT copyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) override;
  SaAisErrorT waitForClasses(SafcImmCtHandleT handle, SaImmClassNameT* classNames) override;
  SaAisErrorT writeRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                               SafcImmCtInstanceGroupT** instanceGroups) override;
  SaAisErrorT copyRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                              SaImmClassNameT* classNames) override;
  SaAisErrorT instanceGroupsMemoryFree(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) override;
};

#endif
