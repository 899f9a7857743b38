// How parsing and applying a modification file, and listing the classes of
// an IMM class file, grow with the size of the file. Both should be linear:
// the per-item time (items_per_second) stays flat from the smallest to the
// largest file.
//
// Log records are dropped by a log service that does nothing, so the
// figures are those of the parser, not of the log's files.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

#include "common/DiscardingLog.h"
#include "common/PersistentLog.h"
#include "icti/ModelFreeHandler.h"
#include "runtime/UpgradeAction.h"
#include "parser/XmlHandler.h"

namespace {

// A conversion session without an old model: no class has a group.
class EmptyModel : public ModelFreeHandler {
 public:
  void failUpgrade(const char* message) override { std::fprintf(stderr, "unexpected failure: %s\n", message); }
  void setFailureContext(const std::string& /*context*/) override {}
  int failureCount() const override { return 0; }
};

// Reads its arguments and operations as an action would, without a model.
class ReadingAction : public UpgradeAction {
 public:
  ReadingAction() : UpgradeAction("SetAttributeValueAction", nullptr) {}
  bool validateArgs(ActionArgumentsIf& args, IctiHandlerIf*) override {
    std::string name;
    return args.getArgument("name", name) && !args.getOperations().empty();
  }
  void reportMissingInstanceGroup(ActionArgumentsIf&, IctiHandlerIf*) override {}
  bool validateInstanceGroup(InstanceGroupIf*) override { return true; }
  bool executeAction(IctiHandlerIf*, InstanceGroupIf*, ActionArgumentsIf& args) override {
    for (OperationArgumentIf* operation : args.getOperations()) {
      if (!operation->isValid()) return false;
    }
    ++executed;
    return true;
  }
  long executed = 0;
};

// The generated files' directory, removed at exit.
char benchDirectory[] = "/tmp/vosk-bench-XXXXXX";

void removeBenchDirectory() {
  std::string command = std::string("rm -rf ") + benchDirectory;
  if (std::system(command.c_str()) != 0) std::fprintf(stderr, "could not remove %s\n", benchDirectory);
}

std::string tempDirectory() {
  static bool made = [] {
    if (mkdtemp(benchDirectory) == nullptr) std::abort();
    std::atexit(removeBenchDirectory);
    return true;
  }();
  (void)made;
  return benchDirectory;
}

// Ten `MoAction` elements per `Mo`, each with two `Arg` and one `Operation`.
const std::string& modificationFile(long actions) {
  static std::map<long, std::string> files;
  std::string& path = files[actions];
  if (!path.empty()) return path;
  path = tempDirectory() + "/modification_" + std::to_string(actions) + ".xml";
  std::ofstream out(path);
  out << "<?xml version=\"1.0\"?>\n<modifications>\n";
  for (long i = 0; i < actions; ++i) {
    if (i % 10 == 0) out << "  <Mo name=\"Class" << i / 10 << "\">\n";
    out << "    <MoAction name=\"SetAttributeValueAction\">\n"
        << "      <Arg name=\"name\" value=\"attribute" << i << "\"/>\n"
        << "      <Arg name=\"rdnValue\" value=\"" << i % 7 << "\"/>\n"
        << "      <Operation operator=\"=\" value=\"" << i << "\"/>\n"
        << "    </MoAction>\n";
    if (i % 10 == 9 || i + 1 == actions) out << "  </Mo>\n";
  }
  out << "</modifications>\n";
  return path;
}

// Half configuration classes, a quarter runtime-persistent, a quarter
// runtime without persistent attributes.
const std::string& classFile(long classes) {
  static std::map<long, std::string> files;
  std::string& path = files[classes];
  if (!path.empty()) return path;
  path = tempDirectory() + "/classes_" + std::to_string(classes) + ".xml";
  std::ofstream out(path);
  out << "<?xml version=\"1.0\"?>\n<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n";
  for (long i = 0; i < classes; ++i) {
    bool config = i % 2 == 0;
    const char* flag = i % 4 == 1 ? "<flag>SA_PERSISTENT</flag>" : "";
    out << "  <class name=\"Class" << i << "\">\n"
        << "    <category>" << (config ? "SA_CONFIG" : "SA_RUNTIME") << "</category>\n"
        << "    <rdn><name>class" << i << "Id</name><type>SA_STRING_T</type><category>"
        << (config ? "SA_CONFIG" : "SA_RUNTIME") << "</category>" << flag << "</rdn>\n"
        << "    <attr><name>a</name><type>SA_INT32_T</type><category>SA_CONFIG</category>" << flag << "</attr>\n"
        << "    <attr><name>b</name><type>SA_STRING_T</type><category>SA_CONFIG</category></attr>\n"
        << "  </class>\n";
  }
  out << "</imm:IMM-contents>\n";
  return path;
}

void BM_ParseAndRunModificationFile(benchmark::State& state) {
  const std::string& file = modificationFile(state.range(0));
  EmptyModel model;
  ReadingAction action;
  XmlHandler parser(&model);
  parser.addAction(&action);
  for (auto _ : state) {
    if (!parser.parseModificationFile(file.c_str(), false)) state.SkipWithError("parse failed");
  }
  if (action.executed != state.range(0) * static_cast<long>(state.iterations())) {
    state.SkipWithError("not every action ran");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ParseAndRunModificationFile)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_GetImmClasses(benchmark::State& state) {
  const std::string& file = classFile(state.range(0));
  EmptyModel model;
  XmlHandler parser(&model);
  for (auto _ : state) {
    size_t config = parser.getImmClasses(file.c_str(), "SA_CONFIG").size();
    size_t runtime = parser.getImmClasses(file.c_str(), "SA_RUNTIME").size();
    if (config + runtime != static_cast<size_t>(state.range(0) * 3 / 4)) state.SkipWithError("wrong class count");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_GetImmClasses)->Arg(200)->Arg(2000)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  static DiscardingLog discardingLog;
  PersistentLog::chooseEnv(discardingLog);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
