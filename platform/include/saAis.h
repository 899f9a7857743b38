/*
 * Basic types of the SA Forum application interface that the
 * upgrader uses: result codes, names, versions, time and handles.
 */
#ifndef VOSK_PLATFORM_SA_AIS_H
#define VOSK_PLATFORM_SA_AIS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int8_t SaInt8T;
typedef int16_t SaInt16T;
typedef int32_t SaInt32T;
typedef int64_t SaInt64T;
typedef uint8_t SaUint8T;
typedef uint16_t SaUint16T;
typedef uint32_t SaUint32T;
typedef uint64_t SaUint64T;
typedef float SaFloatT;
typedef double SaDoubleT;
typedef char* SaStringT;
typedef SaUint64T SaSizeT;
typedef SaUint64T SaInvocationT;
typedef SaInt64T SaTimeT;
typedef SaUint64T SaSelectionObjectT;

typedef enum { SA_FALSE = 0, SA_TRUE = 1 } SaBoolT;

#define SA_TIME_END ((SaTimeT)0x7FFFFFFFFFFFFFFFLL)
#define SA_TIME_BEGIN ((SaTimeT)0)
#define SA_TIME_UNKNOWN ((SaTimeT)0x8000000000000000ULL)
#define SA_TIME_ONE_MICROSECOND ((SaTimeT)1000)
#define SA_TIME_ONE_MILLISECOND ((SaTimeT)1000000)
#define SA_TIME_ONE_SECOND ((SaTimeT)1000000000)

#define SA_MAX_NAME_LENGTH 600

/* A name: its length, then the text. The text is not always terminated. */
typedef struct {
    SaUint16T length;
    SaUint8T value[SA_MAX_NAME_LENGTH];
} SaNameT;

/* A byte buffer of any content. */
typedef struct {
    SaSizeT bufferSize;
    SaUint8T* bufferAddr;
} SaAnyT;

typedef struct {
    SaUint8T releaseCode;
    SaUint8T majorVersion;
    SaUint8T minorVersion;
} SaVersionT;

typedef enum {
    SA_DISPATCH_ONE = 1,
    SA_DISPATCH_ALL = 2,
    SA_DISPATCH_BLOCKING = 3
} SaDispatchFlagsT;

typedef enum {
    SA_AIS_OK = 1,
    SA_AIS_ERR_LIBRARY = 2,
    SA_AIS_ERR_VERSION = 3,
    SA_AIS_ERR_INIT = 4,
    SA_AIS_ERR_TIMEOUT = 5,
    SA_AIS_ERR_TRY_AGAIN = 6,
    SA_AIS_ERR_INVALID_PARAM = 7,
    SA_AIS_ERR_NO_MEMORY = 8,
    SA_AIS_ERR_BAD_HANDLE = 9,
    SA_AIS_ERR_BUSY = 10,
    SA_AIS_ERR_ACCESS = 11,
    SA_AIS_ERR_NOT_EXIST = 12,
    SA_AIS_ERR_NAME_TOO_LONG = 13,
    SA_AIS_ERR_EXIST = 14,
    SA_AIS_ERR_NO_SPACE = 15,
    SA_AIS_ERR_INTERRUPT = 16,
    SA_AIS_ERR_NAME_NOT_FOUND = 17,
    SA_AIS_ERR_NO_RESOURCES = 18,
    SA_AIS_ERR_NOT_SUPPORTED = 19,
    SA_AIS_ERR_BAD_OPERATION = 20,
    SA_AIS_ERR_FAILED_OPERATION = 21,
    SA_AIS_ERR_MESSAGE_ERROR = 22,
    SA_AIS_ERR_QUEUE_FULL = 23,
    SA_AIS_ERR_QUEUE_NOT_AVAILABLE = 24,
    SA_AIS_ERR_BAD_FLAGS = 25,
    SA_AIS_ERR_TOO_BIG = 26,
    SA_AIS_ERR_NO_SECTIONS = 27,
    SA_AIS_ERR_NO_OP = 28,
    SA_AIS_ERR_REPAIR_PENDING = 29,
    SA_AIS_ERR_NO_BINDINGS = 30,
    /* The service cannot answer now: try again later. */
    SA_AIS_ERR_UNAVAILABLE = 31,
    SA_AIS_ERR_CAMPAIGN_ERROR_DETECTED = 32,
    SA_AIS_ERR_CAMPAIGN_PROC_FAILED = 33,
    SA_AIS_ERR_CAMPAIGN_CANCELED = 34,
    SA_AIS_ERR_CAMPAIGN_FAILED = 35,
    SA_AIS_ERR_CAMPAIGN_SUSPENDED = 36,
    SA_AIS_ERR_CAMPAIGN_SUSPENDING = 37,
    SA_AIS_ERR_ACCESS_DENIED = 38,
    SA_AIS_ERR_NOT_READY = 39,
    SA_AIS_ERR_DEPLOYMENT = 40
} SaAisErrorT;

#ifdef __cplusplus
}
#endif

#endif
