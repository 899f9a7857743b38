// What every fuzz target shares: the input handed over as a file (the
// readers under test take paths), and a process set up for many runs.

#ifndef VOSK_FUZZ_FUZZ_INPUT_H
#define VOSK_FUZZ_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>

// The input as a file in memory (no disk, nothing left behind), readable at
// path() until the object goes.
class FuzzFile {
 public:
  FuzzFile(const uint8_t* data, size_t size);
  ~FuzzFile();
  FuzzFile(const FuzzFile&) = delete;
  FuzzFile& operator=(const FuzzFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  int fd_;
  std::string path_;
};

// Once per process: the persistent log discards its records and standard
// output is dropped, so that a run costs no I/O and prints nothing.
void fuzzQuietProcess();

#endif
