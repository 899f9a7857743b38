/*
 * The node's load-module handler (LMHI): lists the load modules that a board
 * type carries under a tag, with the files of each load module.
 *
 * The answer is filled and owned by the library; the caller hands it back
 * with Lmhi_free_buffers once it has read it.
 */
#ifndef VOSK_PLATFORM_LMHI_H
#define VOSK_PLATFORM_LMHI_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One file of a load module. */
typedef struct {
    char* fileName;
    /* Absolute path of the file; zero-terminated, may be null. */
    char* path;
} LmhiFileEntry;

/* One load module and its files. */
typedef struct {
    char* lmName;
    char* lmId;
    char* lmRevision;
    uint32_t nFiles;
    LmhiFileEntry* files;
} LmhiLoadModule;

/* The answer of Lmhi_get_lms. */
typedef struct {
    uint32_t nLms;
    LmhiLoadModule* lms;
} LmhiLms;

/*
 * Fills `result` with the load modules of `boardType` under `tag`.
 * Returns 0 on success; any other value is an error, and `result` then holds
 * nothing to free.
 */
int Lmhi_get_lms(char* boardType, char* tag, LmhiLms* result);

/* Releases everything a successful Lmhi_get_lms put into `result`. */
void Lmhi_free_buffers(LmhiLms* result);

#ifdef __cplusplus
}
#endif

#endif
