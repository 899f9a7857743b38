// Whether a path names a regular file (after symbolic links), checked before
// a file is handed to the XML parser: a FIFO or a device in place of a file
// would block the reader for ever, a folder would be read as nothing.

#ifndef VOSK_COMMON_REGULAR_FILE_H
#define VOSK_COMMON_REGULAR_FILE_H

bool isRegularFile(const char* path);

#endif
