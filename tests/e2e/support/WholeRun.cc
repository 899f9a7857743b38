#include "WholeRun.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "SimImmDumpReader.h"
#include "UpgradeLogParser.h"

namespace e2e {
namespace {

namespace fs = std::filesystem;

// Variables of the test's own environment that the run keeps: the sanitizer
// settings of a sanitizer build. The rest is left out, so that nothing of the
// caller's environment (WPK_PATH, RESTART_TYPE, ...) leaks into a run.
const char* const kKeptVariables[] = {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TMPDIR"};

// `text` as one word of a shell command.
std::string quoted(const std::string& text) {
  std::string word = "'";
  for (char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + "'";
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

std::vector<std::string> fileNames(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<ModelObject> readModelObjects(const std::string& path) {
  std::vector<ModelObject> objects;
  SimImmDumpReader::Handler handler;
  handler.onClass = [](SimImmClass&&) { return true; };
  handler.onObject = [&](SimImmObject&& object) {
    ModelObject& read = objects.emplace_back(ModelObject{object.dn, object.className, {}});
    for (const SimImmAttrValues& attr : object.attrs) {
      std::vector<std::string>& values = read.attrs[attr.name];
      for (const SimImmValue& value : attr.values) values.push_back(value.text);
    }
    return true;
  };
  SimImmDumpReader().read(path, handler);
  return objects;
}

}  // namespace

bool RunResult::logged(const std::string& text) const { return std::find(log.begin(), log.end(), text) != log.end(); }

size_t RunResult::loggedParts(const std::string& part) const {
  return std::count_if(log.begin(), log.end(),
                       [&](const std::string& text) { return text.find(part) != std::string::npos; });
}

std::vector<std::string> RunResult::modelFiles() const { return fileNames(outPath + "/model"); }

std::vector<std::string> RunResult::discardedFiles() const { return fileNames(outPath + "/discarded"); }

std::string RunResult::model(const std::string& schema) const {
  return readFile(outPath + "/model/" + schema + ".xml");
}

ModelObjects RunResult::objects(const std::string& schema) const {
  ModelObjects objects;
  for (ModelObject& object : objectList(schema)) objects[object.dn] = std::move(object);
  return objects;
}

std::vector<ModelObject> RunResult::objectList(const std::string& schema) const {
  return readModelObjects(outPath + "/model/" + schema + ".xml");
}

std::string RunResult::rollbackText() const {
  std::string text;
  for (const std::string& line : rollback) text += line + "\n";
  return text;
}

WholeRun::WholeRun(const NodeBuilder& node)
    : folders_{node.packagePath(), node.nodePath(), node.outPath(), node.root()} {}

WholeRun& WholeRun::faults(const std::string& items) {
  options_.insert(options_.end(), {"--faults", items});
  return *this;
}

WholeRun& WholeRun::env(const std::string& setting) {
  options_.insert(options_.end(), {"--env", setting});
  return *this;
}

WholeRun& WholeRun::args(const std::string& arguments) {
  options_.insert(options_.end(), {"--args", arguments});
  return *this;
}

RunResult WholeRun::run() const {
  RunResult result;
  result.outPath = folders_.out;
  const std::string reportPath = folders_.scratch + "/wrapper.out";
  const std::string errorsPath = folders_.scratch + "/wrapper.err";

  std::vector<std::string> texts = {WRAPPER_BINARY, "--node",    folders_.node,   "--out",
                                    folders_.out,   "--program", UPGRADER_BINARY, "--timeout",
                                    "90",           "--package", folders_.package};
  texts.insert(texts.end(), options_.begin(), options_.end());
  std::string command = "env -i PATH=/usr/bin:/bin";
  for (const char* name : kKeptVariables) {
    if (const char* value = std::getenv(name)) command += " " + quoted(std::string(name) + "=" + value);
  }
  for (const std::string& text : texts) command += " " + quoted(text);
  const int status = std::system((command + " </dev/null >" + quoted(reportPath) + " 2>" + quoted(errorsPath)).c_str());
  if (status != -1 && WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);

  result.report = readFile(reportPath);
  result.errors = readFile(errorsPath);
  result.rollback = lines(readFile(result.outPath + "/rollback"));
  result.platformErrors = lines(readFile(result.outPath + "/platform-errors.log"));
  wrappersim::UpgradeLogParser parser;
  for (const char* suffix : {".3", ".2", ".1", ""}) {
    parser.add(readFile(result.outPath + "/log/saLogUpgrade/upgrade.log" + suffix));
  }
  result.log = parser.records();
  return result;
}

}  // namespace e2e
