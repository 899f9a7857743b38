#include "CheckCommand.h"

#include <unistd.h>

#include "Diagnostic.h"
#include "FileChecker.h"
#include "JsonText.h"
#include "ModelFiles.h"
#include "Progress.h"

namespace modtool {

const char* CheckCommand::usage() {
  return "usage: vosk-modtool check FILE... [--classes IMM_CLASS_FILE]... [--old-model DIR] [--json]\n"
         "\n"
         "Validates modification files with the upgrader's own parser (validate-only mode) and reports\n"
         "what it rejects. With class definitions, also names of classes and attributes that no model\n"
         "defines, types and values that do not fit the attribute, deletes of classes the new model keeps,\n"
         "rename targets it lacks, and actions after a delete or rename in the same Mo.\n"
         "\n"
         "  --classes FILE   an IMM class file of the package (the new model); repeatable\n"
         "  --old-model DIR  the old model: a folder of IMM XML dumps, or a node folder (its imm/old)\n"
         "  --json           one JSON object instead of compiler-style lines\n"
         "\n"
         "Messages read file:line:col: error|warning: text. Exit status: 0 no errors, 1 errors found,\n"
         "2 could not run.\n";
}

bool CheckCommand::loadCatalog(const CommandLine& line, ClassCatalog* catalog, std::string* why) {
  for (const std::string& file : line.values("--classes")) {
    if (!catalog->addFile(ClassCatalog::Model::kNew, file, why)) return false;
  }
  if (!line.has("--old-model")) return true;
  std::vector<std::string> files;
  if (!ModelFiles::oldModel(line.value("--old-model"), &files, why)) return false;
  for (const std::string& file : files) {
    if (!catalog->addFile(ClassCatalog::Model::kOld, file, why)) return false;
  }
  return true;
}

int CheckCommand::run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  CommandLine line;
  std::string why;
  if (!line.parse(argc, argv, 2, {"--classes", "--old-model"}, {"--json"}, &why)) {
    err << "vosk-modtool check: " << why << "\n\n" << usage();
    return kExitCouldNotRun;
  }
  if (line.help()) {
    out << usage();
    return kExitClean;
  }
  if (line.operands().empty()) {
    err << "vosk-modtool check: no modification file given\n\n" << usage();
    return kExitCouldNotRun;
  }
  ClassCatalog catalog;
  if (!loadCatalog(line, &catalog, &why)) {
    err << "vosk-modtool check: cannot read the class definitions: " << why << "\n";
    return kExitCouldNotRun;
  }
  Diagnostics all;
  Progress progress;
  long done = 0;
  for (const std::string& file : line.operands()) {
    progress.update("checking", done++, static_cast<long>(line.operands().size()));
    if (::access(file.c_str(), R_OK) != 0) {
      err << "vosk-modtool check: cannot read " << file << "\n";
      return kExitCouldNotRun;
    }
    Diagnostics found = FileChecker(&catalog).check(file);
    all.insert(all.end(), found.begin(), found.end());
  }
  progress.done();
  long errors = 0;
  for (const Diagnostic& diagnostic : all) errors += diagnostic.severity == Diagnostic::Severity::kError;
  const long warnings = static_cast<long>(all.size()) - errors;
  if (line.has("--json")) {
    out << JsonText::object({{"files", JsonText::quotedArray(line.operands())},
                             {"errors", std::to_string(errors)},
                             {"warnings", std::to_string(warnings)},
                             {"diagnostics", diagnosticsToJson(all)}})
        << "\n";
  } else {
    for (const Diagnostic& diagnostic : all) out << diagnostic.toText() << "\n";
    out << line.operands().size() << " file(s) checked: " << errors << " error(s), " << warnings << " warning(s)\n";
  }
  return errors > 0 ? kExitFound : kExitClean;
}

}  // namespace modtool
