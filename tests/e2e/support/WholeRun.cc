#include "WholeRun.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "UpgradeLogParser.h"

namespace e2e {
namespace {

namespace fs = std::filesystem;

// Variables of the test's own environment that the run keeps: the sanitizer
// settings of a sanitizer build. The rest is left out, so that nothing of the
// caller's environment (WPK_PATH, RESTART_TYPE, ...) leaks into a run.
const char* const kKeptVariables[] = {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TMPDIR"};

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

// The values of `attribute` of every `element` start tag, in order, e.g. the
// class names of '<class name="...">'.
std::vector<std::string> tagAttributes(const std::string& xml, const std::string& element,
                                       const std::string& attribute) {
  std::vector<std::string> values;
  const std::string tag = "<" + element + " " + attribute + "=\"";
  for (size_t at = xml.find(tag); at != std::string::npos; at = xml.find(tag, at + 1)) {
    size_t start = at + tag.size();
    values.push_back(xml.substr(start, xml.find('"', start) - start));
  }
  return values;
}

std::vector<std::string> elementTexts(const std::string& xml, const std::string& element) {
  std::vector<std::string> texts;
  const std::string open = "<" + element + ">";
  const std::string close = "</" + element + ">";
  for (size_t at = xml.find(open); at != std::string::npos; at = xml.find(open, at + 1)) {
    size_t start = at + open.size();
    texts.push_back(xml.substr(start, xml.find(close, start) - start));
  }
  return texts;
}

std::vector<xmlNode*> children(xmlNode* parent, const char* name) {
  std::vector<xmlNode*> found;
  for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
    if (node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, reinterpret_cast<const xmlChar*>(name)) == 0) {
      found.push_back(node);
    }
  }
  return found;
}

std::string text(xmlNode* node) {
  xmlChar* content = xmlNodeGetContent(node);
  std::string result = content != nullptr ? reinterpret_cast<const char*>(content) : "";
  xmlFree(content);
  return result;
}

std::string firstText(xmlNode* parent, const char* name) {
  std::vector<xmlNode*> found = children(parent, name);
  return found.empty() ? "" : text(found[0]);
}

std::vector<ModelObject> readModelObjects(const std::string& path) {
  std::vector<ModelObject> objects;
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (doc == nullptr) return objects;
  for (xmlNode* node : children(xmlDocGetRootElement(doc), "object")) {
    xmlChar* className = xmlGetProp(node, reinterpret_cast<const xmlChar*>("class"));
    ModelObject& object = objects.emplace_back();
    object.dn = firstText(node, "dn");
    object.className = className != nullptr ? reinterpret_cast<const char*>(className) : "";
    xmlFree(className);
    for (xmlNode* attr : children(node, "attr")) {
      std::vector<std::string>& values = object.attrs[firstText(attr, "name")];
      for (xmlNode* value : children(attr, "value")) values.push_back(text(value));
    }
  }
  xmlFreeDoc(doc);
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

std::vector<std::string> RunResult::modelDns(const std::string& schema) const {
  return elementTexts(model(schema), "dn");
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

std::vector<std::string> RunResult::modelClasses(const std::string& schema) const {
  return tagAttributes(model(schema), "class", "name");
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

  std::vector<std::string> texts = {WRAPPER_BINARY, "--node",    folders_.node, "--out", folders_.out,
                                    "--program",    UPGRADER_BINARY, "--timeout", "90", "--package", folders_.package};
  texts.insert(texts.end(), options_.begin(), options_.end());
  std::vector<char*> argv;
  for (std::string& text : texts) argv.push_back(text.data());
  argv.push_back(nullptr);
  std::vector<std::string> environment = {"PATH=/usr/bin:/bin"};
  for (const char* name : kKeptVariables) {
    if (const char* value = std::getenv(name)) environment.push_back(std::string(name) + "=" + value);
  }
  std::vector<char*> envp;
  for (std::string& entry : environment) envp.push_back(entry.data());
  envp.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, reportPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorsPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  pid_t pid = -1;
  int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) {
    result.errors = "cannot start " + texts[0];
    return result;
  }
  int status = 0;
  pid_t ended;
  while ((ended = waitpid(pid, &status, 0)) < 0 && errno == EINTR) {
  }
  if (ended == pid && WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);

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
