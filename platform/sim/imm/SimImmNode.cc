#include "SimImmNode.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>

namespace {

bool isDirectory(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// The *.xml files of a folder in name order, and a text that changes when
// any of them changes.
std::vector<std::string> xmlFiles(const std::string& folder, std::string* signature) {
  std::vector<std::string> names;
  if (DIR* dir = ::opendir(folder.c_str())) {
    while (const dirent* entry = ::readdir(dir)) {
      std::string name = entry->d_name;
      if (name.size() > 4 && name.compare(name.size() - 4, 4, ".xml") == 0) names.push_back(name);
    }
    ::closedir(dir);
  }
  std::sort(names.begin(), names.end());
  std::vector<std::string> files;
  for (const std::string& name : names) {
    files.push_back(folder + "/" + name);
    struct stat st {};
    ::stat(files.back().c_str(), &st);
    *signature += files.back() + "|" + std::to_string(st.st_size) + "|" + std::to_string(st.st_mtim.tv_sec) + "." +
                  std::to_string(st.st_mtim.tv_nsec) + "\n";
  }
  return files;
}

}  // namespace

std::shared_ptr<SimImmNode> SimImmNode::forRoot(const std::string& root) {
  static std::mutex mutex;
  static std::map<std::string, std::pair<std::string, std::shared_ptr<SimImmNode>>> nodes;
  std::lock_guard<std::mutex> lock(mutex);
  auto& known = nodes[root];
  // A node that an open session holds is the one of the run going on: its
  // files are not looked at again for every session (a run of thousands of
  // schemas would stat every file thousands of times).
  if (known.second && known.second.use_count() > 1) return known.second;
  std::string signature;
  std::vector<std::string> oldFiles = xmlFiles(root + "/imm/old", &signature);
  bool hasNew = isDirectory(root + "/imm/new");
  signature += hasNew ? "new\n" : "no new\n";
  std::vector<std::string> newFiles = xmlFiles(root + "/imm/new", &signature);
  if (!known.second || known.first != signature) {
    known = {signature, std::make_shared<SimImmNode>(root, std::move(oldFiles), std::move(newFiles), hasNew)};
  }
  return known.second;
}

SimImmNode::SimImmNode(const std::string& root, std::vector<std::string> oldFiles, std::vector<std::string> newFiles,
                       bool hasNewModel)
    : versionsPath_(root + "/versions"),
      oldModel_(std::move(oldFiles)),
      newFiles_(std::move(newFiles)),
      hasNewModel_(hasNewModel) {}

bool SimImmNode::newClasses(const SimImmClassModel** model, std::string* why) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!newRead_) {
    newOk_ = newClasses_.load(newFiles_, &newError_);
    newRead_ = true;
  }
  *model = &newClasses_;
  *why = newError_;
  return newOk_;
}

bool SimImmNode::definition(const std::string& className, bool fromNew, const SimImmClass** cls, std::string* why) {
  const SimImmClassModel* model = nullptr;
  if (!(fromNew ? newClasses(&model, why) : oldModel_.classes(&model, why))) return false;
  *cls = model->find(className);
  return true;
}
