// A load-module handler for tests: answers from a list of load modules, each
// a list of file paths (nullptr for an entry without a path), and records how
// it was called.

#ifndef VOSK_TESTS_CLIENT_FAKE_LMHI_WRAPPER_H
#define VOSK_TESTS_CLIENT_FAKE_LMHI_WRAPPER_H

#include <string>
#include <vector>

#include "client/LmhiWrapper.h"

class FakeLmhiWrapper : public LmhiWrapper {
 public:
  using LoadModules = std::vector<std::vector<const char*>>;

  FakeLmhiWrapper(LoadModules modules, int returnCode) : modules_(std::move(modules)), returnCode_(returnCode) {}

  int getLms(const std::string& boardType, const std::string& tag, LmhiLms* result) override {
    boardTypes.push_back(boardType);
    tags.push_back(tag);
    if (returnCode_ != 0) return returnCode_;
    lms_.clear();
    files_.clear();
    for (const auto& paths : modules_) {
      files_.emplace_back();
      for (const char* path : paths) files_.back().push_back(LmhiFileEntry{nullptr, const_cast<char*>(path)});
    }
    for (auto& files : files_) {
      lms_.push_back(LmhiLoadModule{nullptr, nullptr, nullptr, static_cast<uint32_t>(files.size()), files.data()});
    }
    result->nLms = static_cast<uint32_t>(lms_.size());
    result->lms = lms_.data();
    handedOut = result;
    return 0;
  }

  void freeBuffers(LmhiLms* result) override { freed.push_back(result); }

  std::vector<std::string> boardTypes;
  std::vector<std::string> tags;
  const LmhiLms* handedOut = nullptr;
  std::vector<const LmhiLms*> freed;

 private:
  LoadModules modules_;
  int returnCode_;
  std::vector<LmhiLoadModule> lms_;
  std::vector<std::vector<LmhiFileEntry>> files_;
};

#endif
