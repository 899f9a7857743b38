// The platform's IMM conversion tool, one operation per library call. Each
// forwards its arguments unchanged and returns the platform's result code
// (SA_AIS_OK is 1). The ICTI handler holds the tool through this interface so
// that it can run against a substitute.

#ifndef VOSK_ICTI_SAFC_IMM_CT_WRAPPER_IF_H
#define VOSK_ICTI_SAFC_IMM_CT_WRAPPER_IF_H

#include "safcImmCt.h"

class SafcImmCtWrapperIf {
 public:
  virtual ~SafcImmCtWrapperIf() = default;

  virtual SaAisErrorT initialize(SafcImmCtHandleT* handle, SaUint32T mode) = 0;
  virtual SaAisErrorT finalize(SafcImmCtHandleT handle) = 0;
  virtual SaAisErrorT readSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                        SafcImmCtSchemaVersionT_2* fromVersion,
                                        SafcImmCtSchemaVersionT_2* toVersion) = 0;
  virtual SaAisErrorT failUpgrade(SafcImmCtHandleT handle, const char* reason) = 0;
  virtual SaAisErrorT readInstances(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                    SafcImmCtInstanceGroupT*** instanceGroups) = 0;
  virtual SaAisErrorT writeInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups) = 0;
  virtual SaAisErrorT copyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames) = 0;
  virtual SaAisErrorT waitForClasses(SafcImmCtHandleT handle, SaImmClassNameT* classNames) = 0;
  virtual SaAisErrorT writeRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                       SafcImmCtInstanceGroupT** instanceGroups) = 0;
  virtual SaAisErrorT copyRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                      SaImmClassNameT* classNames) = 0;
  virtual SaAisErrorT instanceGroupsMemoryFree(SafcImmCtHandleT handle,
                                               SafcImmCtInstanceGroupT** instanceGroups) = 0;
};

#endif
