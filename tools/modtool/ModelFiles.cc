#include "ModelFiles.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace modtool {

bool ModelFiles::oldModel(const std::string& folder, std::vector<std::string>* files, std::string* why) {
  std::error_code error;
  const std::string dumps = fs::is_directory(fs::path(folder) / "imm" / "old", error)
                                ? (fs::path(folder) / "imm" / "old").string()
                                : folder;
  if (!fs::is_directory(dumps, error)) {
    *why = folder + " is no folder";
    return false;
  }
  *files = xmlFilesIn(dumps);
  if (files->empty()) *why = "no *.xml file in " + dumps;
  return !files->empty();
}

std::vector<std::string> ModelFiles::xmlFilesIn(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    if (it->is_regular_file(error) && it->path().extension() == ".xml") files.push_back(it->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace modtool
