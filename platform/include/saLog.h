/*
 * The SA Forum Log service calls the upgrader uses to keep one persistent
 * application log stream.
 */
#ifndef VOSK_PLATFORM_SA_LOG_H
#define VOSK_PLATFORM_SA_LOG_H

#include "saAis.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef SaUint64T SaLogHandleT;
typedef SaUint64T SaLogStreamHandleT;

typedef SaUint16T SaLogSeverityT;
#define SA_LOG_SEV_EMERGENCY 0
#define SA_LOG_SEV_ALERT 1
#define SA_LOG_SEV_CRITICAL 2
#define SA_LOG_SEV_ERROR 3
#define SA_LOG_SEV_WARNING 4
#define SA_LOG_SEV_NOTICE 5
#define SA_LOG_SEV_INFO 6

typedef SaUint8T SaLogStreamOpenFlagsT;
#define SA_LOG_STREAM_CREATE 0x1

typedef SaUint8T SaLogAckFlagsT;
#define SA_LOG_RECORD_WRITE_ACK 0x1

typedef enum {
    SA_LOG_FILE_FULL_ACTION_WRAP = 1,
    SA_LOG_FILE_FULL_ACTION_HALT = 2,
    SA_LOG_FILE_FULL_ACTION_ROTATE = 3
} SaLogFileFullActionT;

typedef enum {
    SA_LOG_NTF_HEADER = 0,
    SA_LOG_GENERIC_HEADER = 1
} SaLogHeaderTypeT;

typedef struct {
    SaUint32T vendorId;
    SaUint16T majorId;
    SaUint16T minorId;
} SaNtfClassIdT;

typedef struct {
    SaUint64T notificationId;
    SaUint32T eventType;
    const SaNameT* notificationObject;
    const SaNameT* notifyingObject;
    SaNtfClassIdT* notificationClassId;
    SaTimeT eventTime;
} SaLogNtfLogHeaderT;

typedef struct {
    SaNtfClassIdT* notificationClassId;
    const SaNameT* logSvcUsrName;
    SaLogSeverityT logSeverity;
} SaLogGenericLogHeaderT;

typedef union {
    SaLogNtfLogHeaderT ntfHdr;
    SaLogGenericLogHeaderT genericHdr;
} SaLogHeaderT;

typedef struct {
    SaSizeT logBufSize;
    SaUint8T* logBuf;
} SaLogBufferT;

typedef struct {
    SaTimeT logTimeStamp;
    SaLogHeaderTypeT logHdrType;
    SaLogHeaderT logHeader;
    SaLogBufferT* logBuffer;
} SaLogRecordT;

typedef struct {
    SaStringT logFileName;
    SaStringT logFilePathName;
    SaUint64T maxLogFileSize;
    SaUint32T maxLogRecordSize;
    SaBoolT haProperty;
    SaLogFileFullActionT logFileFullAction;
    SaUint16T maxFilesRotated;
    SaStringT logFileFmt;
} SaLogFileCreateAttributesT_2;

typedef void (*SaLogFilterSetCallbackT)(SaLogStreamHandleT logStreamHandle, SaLogSeverityT logSeverity);
typedef void (*SaLogStreamOpenCallbackT)(SaInvocationT invocation, SaLogStreamHandleT logStreamHandle,
                                         SaAisErrorT error);
typedef void (*SaLogWriteLogCallbackT)(SaInvocationT invocation, SaAisErrorT error);

typedef struct {
    SaLogFilterSetCallbackT saLogFilterSetCallback;
    SaLogStreamOpenCallbackT saLogStreamOpenCallback;
    SaLogWriteLogCallbackT saLogWriteLogCallback;
} SaLogCallbacksT;

SaAisErrorT saLogInitialize(SaLogHandleT* logHandle, const SaLogCallbacksT* callbacks, SaVersionT* version);

SaAisErrorT saLogStreamOpen_2(SaLogHandleT logHandle, const SaNameT* logStreamName,
                              const SaLogFileCreateAttributesT_2* logFileCreateAttributes,
                              SaLogStreamOpenFlagsT logStreamOpenFlags, SaTimeT timeout,
                              SaLogStreamHandleT* logStreamHandle);

SaAisErrorT saLogWriteLogAsync(SaLogStreamHandleT logStreamHandle, SaInvocationT invocation,
                               SaLogAckFlagsT ackFlags, const SaLogRecordT* logRecord);

SaAisErrorT saLogFinalize(SaLogHandleT logHandle);

#ifdef __cplusplus
}
#endif

#endif
