#include "ModelFiles.h"

#include <filesystem>

#include "OutputFolder.h"

namespace fs = std::filesystem;

namespace modtool {

bool ModelFiles::oldModel(const std::string& folder, std::vector<std::string>* files, std::string* why) {
  std::error_code error;
  const std::string dumps =
      fs::is_directory(fs::path(folder) / "imm" / "old", error) ? (fs::path(folder) / "imm" / "old").string() : folder;
  if (!fs::is_directory(dumps, error)) {
    *why = folder + " is no folder";
    return false;
  }
  *files = wrappersim::OutputFolder::xmlFilesIn(dumps);
  if (files->empty()) *why = "no *.xml file in " + dumps;
  return !files->empty();
}

}  // namespace modtool
