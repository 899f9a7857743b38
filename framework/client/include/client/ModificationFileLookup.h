// Finds the modification files of one schema. They are not searched on disk:
// they are the files of the load modules that the load-module handler keeps
// for the schema's board type under the tag "modification_files".

#ifndef VOSK_CLIENT_MODIFICATION_FILE_LOOKUP_H
#define VOSK_CLIENT_MODIFICATION_FILE_LOOKUP_H

#include <string>
#include <vector>

#include "env/Env.h"

// Appends the file paths to `files`, load module by load module and within
// one in the handler's order; duplicates are kept. A handler error is logged
// and leaves `files` as it was. A file entry without a path throws
// std::logic_error, as building a string from it would.
void getModificationFiles(Env& env, const std::string& boardType, std::vector<std::string>* files);

#endif
