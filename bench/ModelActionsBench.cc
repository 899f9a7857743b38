// The model actions at the scale of a large node; both must stay linear in
// the instances they touch.
//
//   BM_RenameMoTypeWithReferences/N: a class of N/10 instances, each with a
//     child, renamed while N instances of another class refer to it (one
//     reference each, to a renamed instance or to its child). Every iteration
//     renames the class back and forth, so the model stays the same size.
//   BM_AddAttribute/N: a two-valued attribute added to N instances; removing
//     it again is not timed.
//
// Counter: ns_per_instance, the CPU time of one action divided by N. Google
// Benchmark prints it with a unit prefix and "s": 1.47ks means 1470 ns.
//
// The persistent log has no service here, so log calls cost their formatting
// only.

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

#include "actions/AddAttributeAction.h"
#include "actions/RenameMoTypeAction.h"
#include "icti/InstanceGroup.h"
#include "icti/ValueType.h"
#include "runtime/ActionArguments.h"

namespace {

// Serves real groups from memory; failures only counted.
class ModelHandler : public IctiHandlerIf {
 public:
  InstanceGroup& group(const std::string& className) {
    auto& group = groups_[className];
    if (group == nullptr) group = std::make_unique<InstanceGroup>("", className);
    return *group;
  }
  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string&, bool) override {
    auto found = groups_.find(className);
    return found != groups_.end() ? found->second.get() : nullptr;
  }
  InstanceIf* getTheOnlyInstance(const std::string&, const std::string&) override { return nullptr; }
  InstanceGroupIf* addInstanceGroup(const std::string& className) override {
    return groups_.count(className) != 0 ? nullptr : &group(className);
  }
  bool removeInstanceGroup(const std::string& className) override { return groups_.erase(className) != 0; }
  InstanceGroupIf* getInstanceGroupForLdn(const std::string&) override { return nullptr; }
  void failUpgrade(const char*) override { ++failures; }
  bool isAlive() override { return true; }
  void setFailureContext(const std::string& /*context*/) override {}
  int failureCount() const override { return 0; }
  bool classDefined(const std::string& /*className*/) override { return true; }

  int failures = 0;

 private:
  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

const std::string kRoot = "managedElementId=1";

// CPU time of one iteration per instance, in nanoseconds.
benchmark::Counter nsPerInstance(benchmark::State& state, size_t instances) {
  return benchmark::Counter(static_cast<double>(instances) * static_cast<double>(state.iterations()) * 1e-9,
                            benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void renameArguments(ActionArguments& args, const std::string& from, const std::string& to) {
  args.addArgument("name", from);
  args.addArgument("newName", to);
  args.addArgument("descendant1", "Child");
  args.addArgument("morefAttr1", "peerRef");
  args.addArgument("referringMoType1", "Relation");
}

void BM_RenameMoTypeWithReferences(benchmark::State& state) {
  const size_t referrers = static_cast<size_t>(state.range(0));
  const size_t renamed = referrers / 10;
  ModelHandler handler;
  for (size_t i = 0; i < renamed; ++i) {
    std::string id = std::to_string(i);
    handler.group("Peer").createInstance(kRoot, id, false, "");
    handler.group("Child").createInstance("peerId=" + id + "," + kRoot, "1", false, "");
  }
  for (size_t i = 0; i < referrers; ++i) {
    InstanceIf* relation = handler.group("Relation").createInstance(kRoot, std::to_string(i), false, "");
    AttributeInternalIf* reference = nullptr;
    relation->addAttribute("peerRef", ValueType::kName, &reference);
    std::string target = "peerId=" + std::to_string(i % renamed) + "," + kRoot;
    reference->addCopy((i % 2 == 0 ? target : "childId=1," + target).c_str());
  }
  ActionArguments forth;
  ActionArguments back;
  renameArguments(forth, "Peer", "Neighbour");
  renameArguments(back, "Neighbour", "Peer");
  RenameMoTypeAction action;
  bool there = false;
  for (auto _ : state) {
    const char* from = there ? "Neighbour" : "Peer";
    bool ok = action.execute(&handler, handler.getInstanceGroup(from, "", false), there ? back : forth);
    if (!ok || handler.failures != 0) state.SkipWithError("rename failed");
    there = !there;
  }
  state.counters["ns_per_instance"] =
      benchmark::Counter(static_cast<double>(referrers) * 1e-9,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_RenameMoTypeWithReferences)->Arg(10000)->Arg(30000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_AddAttribute(benchmark::State& state) {
  const size_t count = static_cast<size_t>(state.range(0));
  ModelHandler handler;
  InstanceGroup& cells = handler.group("Cell");
  for (size_t i = 0; i < count; ++i) cells.createInstance(kRoot, std::to_string(i), false, "");
  ActionArguments args;
  args.addArgument("name", "thresholds");
  args.addArgument("type", "SA_INT32_T");
  args.addArgument("defaultValue", "-110|-90");
  AddAttributeAction action;
  for (auto _ : state) {
    if (!action.execute(&handler, &cells, args) || handler.failures != 0) state.SkipWithError("add failed");
    state.PauseTiming();
    for (InstanceIf* instance : cells.getInstances()) instance->eraseAttribute("thresholds");
    state.ResumeTiming();
  }
  state.counters["ns_per_instance"] = nsPerInstance(state, count);
}
BENCHMARK(BM_AddAttribute)->Arg(100000)->Arg(300000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
