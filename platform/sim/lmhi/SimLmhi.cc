// The simulated load-module handler: the C calls of lmhi.h over the folders
// $VOSK_SIM_ROOT/lmhi/<boardType>/<tag>/<loadModule>/<file>. Every folder
// below the tag is one load module, every regular file in it one file entry;
// both are listed in name order, files with their absolute paths. The node
// knows no product identities or revisions, so those fields are empty texts.

#include "SimLmhi.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include "SimEnvironment.h"
#include "SimFaults.h"
#include "lmhi.h"

namespace fs = std::filesystem;

namespace {

struct LoadModule {
  std::string name;
  std::vector<fs::path> files;
};

// A board type or tag names one folder: no separators, no way upwards.
const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

bool isFolderName(const char* name) {
  if (name == nullptr) return false;
  std::string text(name);
  return !text.empty() && text != "." && text != ".." && text.find('/') == std::string::npos;
}

// The entries of `folder` that pass `keep`, in name order.
template <typename Keep>
bool sortedEntries(const fs::path& folder, Keep keep, std::vector<fs::path>* entries) {
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    if (keep(*it)) entries->push_back(it->path());
  }
  std::sort(entries->begin(), entries->end());
  return !error;
}

bool readLoadModules(const fs::path& tagFolder, std::vector<LoadModule>* modules) {
  std::vector<fs::path> folders;
  auto isFolder = [](const fs::directory_entry& e) { return e.is_directory(); };
  auto isFile = [](const fs::directory_entry& e) { return e.is_regular_file(); };
  if (!sortedEntries(tagFolder, isFolder, &folders)) return false;
  for (const fs::path& folder : folders) {
    LoadModule module{folder.filename().string(), {}};
    if (!sortedEntries(folder, isFile, &module.files)) return false;
    modules->push_back(std::move(module));
  }
  return true;
}

char* copyText(const std::string& text) {
  char* copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

template <typename T>
T* allocateZeroed(size_t count) {
  if (count == 0) return nullptr;
  T* array = static_cast<T*>(std::calloc(count, sizeof(T)));
  if (array == nullptr) throw std::bad_alloc();
  return array;
}

// Fills `result`, which starts zeroed, so that a failure half-way leaves
// only what Lmhi_free_buffers releases.
void fillAnswer(const std::vector<LoadModule>& modules, LmhiLms* result) {
  result->lms = allocateZeroed<LmhiLoadModule>(modules.size());
  result->nLms = static_cast<uint32_t>(modules.size());
  for (size_t i = 0; i < modules.size(); ++i) {
    LmhiLoadModule& lm = result->lms[i];
    lm.lmName = copyText(modules[i].name);
    lm.lmId = copyText("");
    lm.lmRevision = copyText("");
    lm.files = allocateZeroed<LmhiFileEntry>(modules[i].files.size());
    lm.nFiles = static_cast<uint32_t>(modules[i].files.size());
    for (size_t j = 0; j < modules[i].files.size(); ++j) {
      lm.files[j].fileName = copyText(modules[i].files[j].filename().string());
      lm.files[j].path = copyText(modules[i].files[j].string());
    }
  }
}

}  // namespace

extern "C" int Lmhi_get_lms(char* boardType, char* tag, LmhiLms* result) {
  if (result == nullptr) return simlmhi::kInvalidArgument;
  *result = LmhiLms{};
  if (int rc = SimFaults::instance().inject("get_lms", boardType)) return rc;
  if (!isFolderName(boardType) || !isFolderName(tag)) {
    SimEnvironment::reportReason("Lmhi_get_lms", orEmpty(boardType), simlmhi::kInvalidArgument,
                                 "board type and tag must be plain folder names");
    return simlmhi::kInvalidArgument;
  }
  std::string root = SimEnvironment::root();
  if (root.empty()) {
    SimEnvironment::reportReason("Lmhi_get_lms", boardType, simlmhi::kNoNode, "no load-module handler: VOSK_SIM_ROOT is unset");
    return simlmhi::kNoNode;
  }
  fs::path tagFolder = (fs::absolute(root) / "lmhi" / boardType / tag).lexically_normal();
  std::error_code error;
  if (!fs::is_directory(tagFolder, error)) {
    SimEnvironment::reportReason("Lmhi_get_lms", boardType, simlmhi::kNotFound, "no load modules: no folder " + tagFolder.string());
    return simlmhi::kNotFound;
  }
  std::vector<LoadModule> modules;
  if (!readLoadModules(tagFolder, &modules)) {
    SimEnvironment::reportReason("Lmhi_get_lms", boardType, simlmhi::kReadError,
                                 "cannot read the load modules in " + tagFolder.string());
    return simlmhi::kReadError;
  }
  try {
    fillAnswer(modules, result);
  } catch (const std::bad_alloc&) {
    Lmhi_free_buffers(result);
    return simlmhi::kReadError;
  }
  return simlmhi::kOk;
}

extern "C" void Lmhi_free_buffers(LmhiLms* result) {
  if (result == nullptr) return;
  for (uint32_t i = 0; result->lms != nullptr && i < result->nLms; ++i) {
    LmhiLoadModule& lm = result->lms[i];
    for (uint32_t j = 0; lm.files != nullptr && j < lm.nFiles; ++j) {
      std::free(lm.files[j].fileName);
      std::free(lm.files[j].path);
    }
    std::free(lm.files);
    std::free(lm.lmName);
    std::free(lm.lmId);
    std::free(lm.lmRevision);
  }
  std::free(result->lms);
  *result = LmhiLms{};
}
