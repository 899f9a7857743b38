// The child-instance actions and the function-id rename at the scale of a
// large node: one child created under each of up to 100,000 parents, the
// children removed again, and the function renamed over a subtree of up to
// 1,000,000 instances spread over the rename's listed classes.
//
// Counter: ns_per_instance, the time of one action divided by the number of
// instances it touches; it stays flat when the action is linear. The model is
// rebuilt outside the timed part for every iteration.
//
// The persistent log has no service here, so log calls cost their formatting
// only.

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

#include "actions/CreateChildInstanceAction.h"
#include "actions/RemoveChildInstanceAction.h"
#include "actions/RenameENodeBFunctionIdAction.h"
#include "icti/Instance.h"
#include "icti/InstanceGroup.h"
#include "runtime/ActionArguments.h"

namespace {

// Serves the groups of a model held in memory.
class ModelHandler : public IctiHandlerIf {
 public:
  InstanceGroup& group(const std::string& className) {
    std::unique_ptr<InstanceGroup>& group = groups_[className];
    if (!group) group = std::make_unique<InstanceGroup>("", className);
    return *group;
  }
  void add(const std::string& className, const std::string& parent, const std::string& rdnAttribute,
           const std::string& value) {
    group(className).addInstance(new Instance(parent, rdnAttribute, value, className));
  }

  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string&, bool) override {
    auto found = groups_.find(className);
    return found != groups_.end() ? found->second.get() : nullptr;
  }
  InstanceIf* getTheOnlyInstance(const std::string&, const std::string&) override { return nullptr; }
  InstanceGroupIf* addInstanceGroup(const std::string&) override { return nullptr; }
  bool removeInstanceGroup(const std::string&) override { return false; }
  InstanceGroupIf* getInstanceGroupForLdn(const std::string&) override { return nullptr; }
  void failUpgrade(const char*) override { failed = true; }
  bool isAlive() override { return true; }
  void setFailureContext(const std::string& /*context*/) override {}
  int failureCount() const override { return 0; }
  bool classDefined(const std::string& /*className*/) override { return true; }

  bool failed = false;

 private:
  std::map<std::string, std::unique_ptr<InstanceGroup>> groups_;
};

std::unique_ptr<ActionArguments> arguments(const std::map<std::string, std::string>& values) {
  auto args = std::make_unique<ActionArguments>();
  for (const auto& [name, value] : values) args->addArgument(name, value);
  return args;
}

// `parents` cells below one function, each with `childrenEach` children.
std::unique_ptr<ModelHandler> cells(size_t parents, size_t childrenEach) {
  auto model = std::make_unique<ModelHandler>();
  model->group("UeMeasControl");
  for (size_t i = 0; i < parents; ++i) {
    const std::string value = std::to_string(i);
    model->add("EUtranCellFDD", "eNodeBFunctionId=1,managedElementId=1", "eUtranCellFDDId", value);
    const std::string cell = "eUtranCellFDDId=" + value + ",eNodeBFunctionId=1,managedElementId=1";
    for (size_t c = 0; c < childrenEach; ++c) model->add("UeMeasControl", cell, "ueMeasControlId", std::to_string(c));
  }
  return model;
}

void report(benchmark::State& state, size_t touched, const ModelHandler& model) {
  if (model.failed) state.SkipWithError("the action failed");
  state.counters["ns_per_instance"] = benchmark::Counter(static_cast<double>(touched) * state.iterations(),
                                                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_CreateChildUnderEachParent(benchmark::State& state) {
  const size_t parents = static_cast<size_t>(state.range(0));
  auto args = arguments({{"childType", "UeMeasControl"}, {"childRdnValue", "1"}});
  CreateChildInstanceAction action;
  std::unique_ptr<ModelHandler> model;
  for (auto _ : state) {
    state.PauseTiming();
    model = cells(parents, 0);
    state.ResumeTiming();
    action.execute(model.get(), &model->group("EUtranCellFDD"), *args);
  }
  report(state, parents, *model);
}
BENCHMARK(BM_CreateChildUnderEachParent)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_RemoveChildrenUnderEachParent(benchmark::State& state) {
  const size_t parents = static_cast<size_t>(state.range(0));
  auto args = arguments({{"childType", "UeMeasControl"}});
  RemoveChildInstanceAction action;
  std::unique_ptr<ModelHandler> model;
  for (auto _ : state) {
    state.PauseTiming();
    model = cells(parents, 2);
    state.ResumeTiming();
    action.execute(model.get(), &model->group("EUtranCellFDD"), *args);
  }
  report(state, parents * 2, *model);
}
BENCHMARK(BM_RemoveChildrenUnderEachParent)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// `size` instances below the function: cells, and below every cell one
// instance of each of eight further listed classes and one struct.
std::unique_ptr<ModelHandler> subtree(const RenameENodeBFunctionIdAction& action, size_t size) {
  static const char* const kBelowCell[] = {"EUtranFreqRelation", "UeMeasControl", "Paging",           "Rrc",
                                           "CellSleepFunction",  "DrxProfile",    "MdtConfiguration", "Qrn"};
  auto model = std::make_unique<ModelHandler>();
  for (const std::string& className : action.classNames()) model->group(className);
  model->add("ENodeBFunction", "managedElementId=1", "oldFunctionId", "1");
  const size_t perCell = 2 + sizeof kBelowCell / sizeof kBelowCell[0];
  for (size_t i = 0; i < size / perCell; ++i) {
    const std::string value = std::to_string(i);
    model->add("EUtranCellFDD", "oldFunctionId=1,managedElementId=1", "eUtranCellFDDId", value);
    const std::string cell = "eUtranCellFDDId=" + value + ",oldFunctionId=1,managedElementId=1";
    for (const char* className : kBelowCell) model->add(className, cell, Instance::moClassRdnAttribute(className), "1");
    model->add("PlmnIdentity", cell, "id", "plmn");
  }
  return model;
}

void BM_RenameFunctionIdOverSubtree(benchmark::State& state) {
  const size_t size = static_cast<size_t>(state.range(0));
  auto args = arguments({{"newENodeBFunctionIdName", "eNodeBFunctionId"}});
  RenameENodeBFunctionIdAction action;
  std::unique_ptr<ModelHandler> model;
  for (auto _ : state) {
    state.PauseTiming();
    model.reset();
    model = subtree(action, size);
    state.ResumeTiming();
    action.execute(model.get(), &model->group("ENodeBFunction"), *args);
  }
  report(state, size, *model);
}
BENCHMARK(BM_RenameFunctionIdOverSubtree)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
