#include "TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "vosk-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TempDir::write(const std::string& relative, const std::string& content) const {
  fs::path file = fs::path(path_) / relative;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return file.string();
}

std::string TempDir::read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

bool TempDir::exists(const std::string& path) { return fs::exists(path); }

std::vector<std::string> TempDir::lines(const std::string& path) {
  std::vector<std::string> result;
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}
