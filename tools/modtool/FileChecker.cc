#include "FileChecker.h"

#include <fcntl.h>
#include <libxml/xmlerror.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "ModelRules.h"
#include "RecordingAction.h"
#include "actions/BuiltInActions.h"
#include "parser/UpgradePathCalculator.h"
#include "parser/XmlHandler.h"

namespace modtool {

namespace {

// The parser prints some rejections on standard output for authors who run
// it by hand; here they arrive as failures, and standard output carries the
// tool's report (JSON perhaps), so it is set aside while the parser runs.
class QuietStdout {
 public:
  QuietStdout() {
    std::fflush(stdout);
    saved_ = ::dup(STDOUT_FILENO);
    const int null = ::open("/dev/null", O_WRONLY);
    if (null >= 0) {
      ::dup2(null, STDOUT_FILENO);
      ::close(null);
    }
  }
  ~QuietStdout() {
    std::fflush(stdout);
    if (saved_ < 0) return;
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
  }

 private:
  int saved_;
};

// libxml2's errors while the parser reads the file, with their places.
void keepXmlError(void* found, xmlErrorPtr error) {
  if (error == nullptr || error->level < XML_ERR_ERROR) return;
  std::string text = error->message != nullptr ? error->message : "malformed XML";
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
  static_cast<Diagnostics*>(found)->push_back({error->file != nullptr ? error->file : "", error->line, error->int2,
                                               Diagnostic::Severity::kError, "malformed XML: " + text});
}

// The name in "<prefix><name><end>" of `text`, or empty.
std::string nameAfter(const std::string& text, const std::string& prefix, const std::string& end) {
  const size_t start = text.find(prefix);
  if (start == std::string::npos) return std::string();
  const size_t from = start + prefix.size();
  const size_t stop = text.find(end, from);
  return stop == std::string::npos ? std::string() : text.substr(from, stop - from);
}

}  // namespace

Diagnostics FileChecker::check(const std::string& file) {
  Diagnostics found;
  checkName(file, &found);
  SourceLocator locator;
  locator.load(file);

  FailureCollector collector;
  std::vector<ActionSite> sites;
  XmlHandler parser(&collector);
  std::vector<std::unique_ptr<UpgradeActionIf>> actions = createBuiltInActions();
  std::vector<std::unique_ptr<RecordingAction>> recorders;
  for (const std::unique_ptr<UpgradeActionIf>& action : actions) {
    recorders.push_back(std::make_unique<RecordingAction>(action.get(), &collector, file, &sites));
    parser.addAction(recorders.back().get());
  }
  Diagnostics xmlErrors;
  {
    QuietStdout quiet;
    xmlSetStructuredErrorFunc(&xmlErrors, keepXmlError);
    parser.parseModificationFile(file.c_str(), true);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
  }
  found.insert(found.end(), xmlErrors.begin(), xmlErrors.end());
  for (const CollectedFailure& failure : collector.failures()) {
    const bool unparsed = failure.text.rfind("Could not parse file", 0) == 0;
    // The parser's "Could not parse" only repeats what libxml2 said; read
    // without complaint, the file was refused for its document type.
    if (unparsed && !xmlErrors.empty()) continue;
    if (unparsed) {
      const long line = locator.lineWith("<!DOCTYPE");
      found.push_back({file, line, line == 0 ? 0 : locator.column(line, "!DOCTYPE"), Diagnostic::Severity::kError,
                       "the file declares a document type: modification files take no DTD; remove the <!DOCTYPE>"});
      continue;
    }
    found.push_back(fromFailure(file, failure, locator));
  }
  for (ActionSite& site : sites) site.moLine = locator.moLineOf(site.line);
  Diagnostics judged = ModelRules(file, catalog_, locator).judge(locator.mos(), sites);
  learn(sites);
  found.insert(found.end(), judged.begin(), judged.end());
  std::stable_sort(found.begin(), found.end(),
                   [](const Diagnostic& a, const Diagnostic& b) { return a.line < b.line; });
  return found;
}

void FileChecker::learn(const std::vector<ActionSite>& sites) {
  for (const ActionSite& site : sites) {
    const std::string* name = site.arg("name");
    const std::string* newName = site.arg("newName");
    const std::string* moTypeName = site.arg("moTypeName");
    if (site.action == "CreateMoTypeAction" && moTypeName != nullptr) catalog_.introduce(*moTypeName, "");
    if (site.action == "RenameMoTypeAction" && newName != nullptr) catalog_.introduce(*newName, "");
    if (site.action == "AddAttributeAction" && name != nullptr) catalog_.introduce(site.className, *name);
    if (site.action == "RenameAttributeAction" && newName != nullptr) catalog_.introduce(site.className, *newName);
  }
}

void FileChecker::checkName(const std::string& file, Diagnostics* found) const {
  std::string version;
  if (UpgradePathCalculator().getFromVersion(file, version)) return;
  found->push_back({file, 1, 1, Diagnostic::Severity::kWarning,
                    "the file name is not modification_<from>_to_<to>.xml: no conversion path ever uses this file"});
}

Diagnostic FileChecker::fromFailure(const std::string& file, const CollectedFailure& failure,
                                    const SourceLocator& locator) const {
  const long contextLine = FailureCollector::lineOf(failure.context, file);
  long line = contextLine;
  // The context names an action after the class when a `MoAction` runs.
  const size_t mo = failure.context.find(", Mo ");
  std::string tag =
      mo != std::string::npos && failure.context.find(", ", mo + 5) != std::string::npos ? "MoAction" : "Mo";
  // Rejections of one `Arg` point at it rather than at its `MoAction`.
  std::string arg = nameAfter(failure.text, " takes no Arg ", ";");
  bool last = false;
  if (arg.empty()) {
    arg = nameAfter(failure.text, "Arg ", " is given twice");
    last = true;
  }
  // Rejected XML attributes: the element that carries one is found.
  std::string attribute = nameAfter(failure.text, "properties->name=", ".");
  if (attribute.empty()) attribute = nameAfter(failure.text + " ", "Operation takes no attribute ", " ");
  if (attribute.empty()) attribute = nameAfter(failure.text, "Unrecognized property: ", "=");
  if (!arg.empty() && locator.argLine(contextLine, arg, last) != 0) {
    line = locator.argLine(contextLine, arg, last);
    tag = "Arg";
  } else if (!attribute.empty() && locator.elementWithAttribute(contextLine, attribute) != 0) {
    line = locator.elementWithAttribute(contextLine, attribute);
    tag = "";
  }
  return {file, line, line == 0 ? 0 : locator.column(line, tag), Diagnostic::Severity::kError, failure.text};
}

}  // namespace modtool
