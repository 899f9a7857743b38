#include "OutputFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace wrappersim {

namespace {

const int kRotatedLogFiles = 3;
// Marks a folder as written by this wrapper, so a later run may empty it.
const char kMarker[] = ".upgrade-wrapper-sim";

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

// True when `inner` is `outer` or lies below it.
bool contains(const fs::path& outer, const fs::path& inner) {
  auto mismatch = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  return mismatch.first == outer.end();
}

fs::path normalized(const std::string& path) {
  std::error_code ignored;
  fs::path absolute = fs::weakly_canonical(fs::absolute(path), ignored);
  return absolute.empty() ? fs::absolute(path).lexically_normal() : absolute;
}

}  // namespace

bool OutputFolder::prepare(const std::string& nodeRoot, std::string* reason) const {
  fs::path out = normalized(path_);
  if (!nodeRoot.empty() && contains(out, normalized(nodeRoot))) {
    *reason = "the output folder " + path_ + " contains the node " + nodeRoot;
    return false;
  }
  std::error_code error;
  if (fs::exists(out, error) && !fs::is_empty(out, error) && !fs::exists(out / kMarker, error)) {
    *reason = "the output folder " + path_ + " is not empty and was not written by an earlier run";
    return false;
  }
  fs::remove_all(out, error);
  if (error) {
    *reason = "cannot empty " + path_ + ": " + error.message();
    return false;
  }
  fs::create_directories(out, error);
  if (error || !std::ofstream(out / kMarker)) {
    *reason = "cannot create " + path_ + (error ? ": " + error.message() : std::string());
    return false;
  }
  return true;
}

std::string OutputFolder::logDirectory() const { return path_ + "/log/saLogUpgrade"; }

std::vector<std::string> OutputFolder::logFiles() const {
  std::vector<std::string> files;
  std::string base = logDirectory() + "/upgrade.log";
  for (int i = kRotatedLogFiles; i >= 0; --i) {
    std::string file = i == 0 ? base : base + "." + std::to_string(i);
    std::error_code ignored;
    if (fs::is_regular_file(file, ignored)) files.push_back(file);
  }
  return files;
}

std::string OutputFolder::readLog() const {
  std::string log;
  for (const std::string& file : logFiles()) {
    log += readFile(file);
    if (!log.empty() && log.back() != '\n') log += '\n';
  }
  return log;
}

std::vector<std::string> OutputFolder::rollbackReasons() const { return linesOf("rollback"); }

bool OutputFolder::rollbackRequested() const {
  std::error_code ignored;
  return fs::exists(path_ + "/rollback", ignored);
}

std::vector<std::string> OutputFolder::platformErrors() const { return linesOf("platform-errors.log"); }

std::vector<std::string> OutputFolder::linesOf(const std::string& file) const {
  std::vector<std::string> lines;
  std::istringstream in(readFile(path_ + "/" + file));
  for (std::string line; std::getline(in, line);) {
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> OutputFolder::modelFiles() const { return xmlFilesIn(path_ + "/model"); }

std::vector<std::string> OutputFolder::discardedFiles() const { return xmlFilesIn(path_ + "/discarded"); }

std::vector<std::string> OutputFolder::xmlFilesIn(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (entry->is_regular_file(error) && entry->path().extension() == ".xml") files.push_back(entry->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace wrappersim
