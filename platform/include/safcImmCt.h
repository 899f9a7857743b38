/*
 * The node platform's IMM conversion tool: an upgrade session that reads the
 * instances of the old information model and writes or copies them into the
 * new one.
 *
 * Records returned by safcImmCtReadInstances_2 belong to the library until
 * safcImmCtInstanceGroupsMemoryFree. Records handed to the write calls belong
 * to the caller; the library only reads them during the call.
 */
#ifndef VOSK_PLATFORM_SAFC_IMM_CT_H
#define VOSK_PLATFORM_SAFC_IMM_CT_H

#include "saAis.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef SaUint64T SafcImmCtHandleT;
typedef char* SaImmClassNameT;
typedef char* SaImmAttrNameT;
typedef char* SaImmOiImplementerNameT;
typedef void* SaImmAttrValueT;

/* The value types of IMM attributes. */
typedef enum {
    SA_IMM_ATTR_SAINT32T = 1,
    SA_IMM_ATTR_SAUINT32T = 2,
    SA_IMM_ATTR_SAINT64T = 3,
    SA_IMM_ATTR_SAUINT64T = 4,
    SA_IMM_ATTR_SATIMET = 5,
    SA_IMM_ATTR_SANAMET = 6,
    SA_IMM_ATTR_SAFLOATT = 7,
    SA_IMM_ATTR_SADOUBLET = 8,
    SA_IMM_ATTR_SASTRINGT = 9,
    SA_IMM_ATTR_SAANYT = 10
} SaImmValueTypeT;

/* One attribute: its values are pointed to, each in the layout of its type
 * (SaInt32T, ..., SaNameT, SaDoubleT, SaStringT, SaAnyT). The pointer array
 * holds attrValuesNumber entries and then a null pointer. */
typedef struct {
    SaImmAttrNameT attrName;
    SaImmValueTypeT attrValueType;
    SaUint32T attrValuesNumber;
    SaImmAttrValueT* attrValues;
} SaImmAttrValuesT_2;

/* One object: the name of its parent (null for a root object) and its
 * attributes, as a null-terminated array. */
typedef struct {
    SaNameT* parentName;
    SaImmAttrValuesT_2** attrValues;
} SafcImmCtInstanceT;

/* All objects of one class, as a null-terminated array. */
typedef struct {
    SaImmClassNameT className;
    SafcImmCtInstanceT** instances;
} SafcImmCtInstanceGroupT;

typedef struct {
    SaUint32T version;
    SaUint32T release;
    SaUint32T correction;
} SafcImmCtSchemaVersionT;

typedef struct {
    SaUint32T version;
    SaUint32T release;
    SaUint32T correction;
} SafcImmCtSchemaVersionT_2;

/* Opens an upgrade session. Returns SA_AIS_ERR_UNAVAILABLE while the tool is
 * not ready yet; the caller may try again later. */
SaAisErrorT safcImmCtInitialize(SafcImmCtHandleT* handle);

/* As safcImmCtInitialize; mode 1 opens the session of a virtual machine. */
SaAisErrorT safcImmCtInitialize_2(SafcImmCtHandleT* handle, SaUint32T mode);

/* Ends the session: the new model takes effect. */
SaAisErrorT safcImmCtFinalize(SafcImmCtHandleT handle);

SaAisErrorT safcImmCtReadSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                       SafcImmCtSchemaVersionT* fromVersion,
                                       SafcImmCtSchemaVersionT* toVersion);

/* The version of a schema in the old model and in the new one. */
SaAisErrorT safcImmCtReadSchemaVersion_2(SafcImmCtHandleT handle, const char* schemaName,
                                         SafcImmCtSchemaVersionT_2* fromVersion,
                                         SafcImmCtSchemaVersionT_2* toVersion);

/* Makes the node fail the upgrade and roll back, giving the reason. */
SaAisErrorT safcImmCtFailUpgrade(SafcImmCtHandleT handle, const char* reason);

/* All instances of one class of the old model. */
SaAisErrorT safcImmCtReadInstances_2(SafcImmCtHandleT handle, const SaImmClassNameT className,
                                     SafcImmCtInstanceGroupT*** instanceGroups);

SaAisErrorT safcImmCtWriteInstances(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups);

/* Copies the instances of the classes unchanged from the old model. */
SaAisErrorT safcImmCtCopyInstances(SafcImmCtHandleT handle, SaImmClassNameT* classNames);

SaAisErrorT safcImmCtWaitForClasses(SafcImmCtHandleT handle, SaImmClassNameT* classNames);

/* Writes runtime-persistent instances owned by the implementer. */
SaAisErrorT safcImmCtWriteRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                      SafcImmCtInstanceGroupT** instanceGroups);

SaAisErrorT safcImmCtCopyRtInstances(SafcImmCtHandleT handle, const SaImmOiImplementerNameT implementerName,
                                     SaImmClassNameT* classNames);

SaAisErrorT safcImmCtInstanceGroupsMemoryFree(SafcImmCtHandleT handle, SafcImmCtInstanceGroupT** instanceGroups);

#ifdef __cplusplus
}
#endif

#endif
