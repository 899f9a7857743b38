#include "common/RegularFile.h"

#include <sys/stat.h>

bool isRegularFile(const char* path) {
  struct stat st;
  return path != nullptr && ::stat(path, &st) == 0 && S_ISREG(st.st_mode);
}
