// Runs a fuzz target's entry function on files, without libFuzzer: each
// argument is a file or a folder whose files are taken in name order. Any
// fault shows as the sanitizer's report or a signal; the program fails too
// when it was given nothing to run.

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

bool isFolder(const std::string& path) {
  struct stat info;
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

void addFiles(const std::string& path, std::vector<std::string>* files) {
  if (!isFolder(path)) {
    files->push_back(path);
    return;
  }
  DIR* folder = ::opendir(path.c_str());
  if (folder == nullptr) return;
  std::vector<std::string> names;
  while (const dirent* entry = ::readdir(folder)) {
    std::string name = entry->d_name;
    if (name[0] != '.' && !isFolder(path + "/" + name)) names.push_back(name);
  }
  ::closedir(folder);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) files->push_back(path + "/" + name);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) addFiles(argv[i], &files);
  for (const std::string& path : files) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
      std::fprintf(stderr, "cannot read %s\n", path.c_str());
      return 1;
    }
    std::vector<uint8_t> data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::fprintf(stderr, "running %s\n", path.c_str());
    LLVMFuzzerTestOneInput(data.data(), data.size());
  }
  std::fprintf(stderr, "%zu inputs ran\n", files.size());
  return files.empty() ? 1 : 0;
}
