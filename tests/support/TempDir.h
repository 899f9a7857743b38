// A fresh directory below the system's temporary folder, removed with all
// its content when the object goes.

#ifndef VOSK_TESTS_SUPPORT_TEMP_DIR_H
#define VOSK_TESTS_SUPPORT_TEMP_DIR_H

#include <string>
#include <vector>

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }

  // Writes `content` to `relative` below the directory, creating folders.
  std::string write(const std::string& relative, const std::string& content) const;
  static std::string read(const std::string& path);
  static bool exists(const std::string& path);
  static std::vector<std::string> lines(const std::string& path);

 private:
  std::string path_;
};

#endif
