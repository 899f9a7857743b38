// The instance model at the scale of a large node: groups of 10,000 to
// 1,000,000 instances of twelve attributes each (every value type, some
// multi-valued), below 1000 parents, built from platform records, looked up
// by name, listed by parent and turned back into records.
//
// Counters: ns_per_instance (time of the step divided by the group size),
// model_B_per_instance (resident memory the built group adds) and
// peak_B_per_instance (the process's peak resident size so far). Run one size
// per process for the memory figures: bench/instance-model-memory.sh does.
//
// The persistent log has no service here, so log calls cost their formatting
// only, as in a run where the log is slow to reach.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "icti/ImmRecords.h"
#include "icti/InstanceGroup.h"

namespace {

constexpr size_t kParents = 1000;
constexpr size_t kVariants = 1000;

long residentBytes() {
  long pages = 0;
  long resident = 0;
  FILE* statm = std::fopen("/proc/self/statm", "r");
  if (statm == nullptr) return 0;
  if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) resident = 0;
  std::fclose(statm);
  return resident * 4096;
}

long peakResidentBytes() {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024;
}

std::string parentName(size_t parent) {
  return "ENodeBFunction=1,ManagedElement=" + std::to_string(parent) + ",SubNetwork=Region";
}

// Platform records of one class as the conversion tool would deliver them.
// Values that are not the instance's own are shared between records, so
// that the input stays small beside the model built from it.
class Input {
 public:
  explicit Input(size_t size) {
    record_.className = const_cast<char*>("TavBenchCell");
    for (size_t p = 0; p < kParents; ++p) {
      parents_.push_back(parentName(p));
      auto& name = names_.emplace_back();
      name.length = static_cast<SaUint16T>(parents_.back().size());
      std::memcpy(name.value, parents_.back().c_str(), name.length);
    }
    for (size_t v = 0; v < kVariants; ++v) shared_.push_back(sharedAttributes(v));
    cells_.resize(size);
    pointers_.reserve(size + 1);
    for (size_t i = 0; i < size; ++i) {
      link(i);
      pointers_.push_back(&cells_[i].record);
    }
    pointers_.push_back(nullptr);
    record_.instances = pointers_.data();
  }
  Input(const Input&) = delete;

  SafcImmCtInstanceGroupT* record() { return &record_; }
  const std::vector<std::string>& parents() const { return parents_; }

 private:
  struct Attribute {
    SaImmAttrValuesT_2 record;
    std::vector<void*> values;
  };
  // One instance's records and its own values.
  struct Cell {
    SafcImmCtInstanceT record;
    std::string id;
    std::string label;
    char* idValue;
    char* labelValue;
    void* idValues[2];
    void* labelValues[2];
    SaImmAttrValuesT_2 idRecord;
    SaImmAttrValuesT_2 labelRecord;
    SaImmAttrValuesT_2* attributes[13];
  };
  struct Values {
    int i32[4];
    unsigned int u32;
    long long i64;
    unsigned long long u64;
    double ratio;
    SaNameT names[2];
    std::string tagText[3];
    char* tags[3];
    unsigned char bytes[16];
    SaAnyT blob;
    std::vector<std::unique_ptr<Attribute>> attributes;
  };

  template <typename T>
  SaImmAttrValuesT_2* add(Values& values, const char* name, SaImmValueTypeT type, T* first, size_t count) {
    auto attribute = std::make_unique<Attribute>();
    for (size_t i = 0; i < count; ++i) attribute->values.push_back(first + i);
    attribute->values.push_back(nullptr);
    attribute->record = {const_cast<char*>(name), type, static_cast<SaUint32T>(count), attribute->values.data()};
    values.attributes.push_back(std::move(attribute));
    return &values.attributes.back()->record;
  }

  std::unique_ptr<Values> sharedAttributes(size_t v) {
    auto values = std::make_unique<Values>();
    Values& s = *values;
    for (int k = 0; k < 4; ++k) s.i32[k] = static_cast<int>(v) * 4 - k;
    s.u32 = static_cast<unsigned int>(v);
    s.i64 = -static_cast<long long>(v) * 1000003;
    s.u64 = v * 7919ull;
    s.ratio = static_cast<double>(v) / 7;
    for (int k = 0; k < 2; ++k) {
      std::string text = "EUtranCellFDD=" + std::to_string(v + k) + "," + parentName(v % kParents);
      s.names[k].length = static_cast<SaUint16T>(text.size());
      std::memcpy(s.names[k].value, text.c_str(), text.size() + 1);
    }
    for (int k = 0; k < 3; ++k) {
      s.tagText[k] = "tag" + std::to_string(k) + "-" + std::to_string(v);
      s.tags[k] = s.tagText[k].data();
    }
    for (int k = 0; k < 16; ++k) s.bytes[k] = static_cast<unsigned char>(v + k);
    s.blob = {sizeof s.bytes, s.bytes};
    add(s, "administrativeState", SA_IMM_ATTR_SAINT32T, &s.i32[0], 1);
    add(s, "cellRange", SA_IMM_ATTR_SAUINT32T, &s.u32, 1);
    add(s, "counter64", SA_IMM_ATTR_SAINT64T, &s.i64, 1);
    add(s, "earfcn", SA_IMM_ATTR_SAUINT64T, &s.u64, 1);
    add(s, "levels", SA_IMM_ATTR_SAINT32T, &s.i32[0], 4);
    add(s, "neighbours", SA_IMM_ATTR_SANAMET, &s.names[0], 2);
    add(s, "qRxLevMin", SA_IMM_ATTR_SADOUBLET, &s.ratio, 1);
    add(s, "reservedBy", SA_IMM_ATTR_SANAMET, &s.names[1], 1);
    add(s, "security", SA_IMM_ATTR_SAANYT, &s.blob, 1);
    add(s, "tags", SA_IMM_ATTR_SASTRINGT, &s.tags[0], 3);
    return values;
  }

  // The records point into the cell: done once the cell has its place.
  void link(size_t i) {
    Cell& cell = cells_[i];
    cell.id = std::to_string(i / kParents);
    cell.label = "cell-" + std::to_string(i);
    cell.idValue = cell.id.data();
    cell.labelValue = cell.label.data();
    cell.idValues[0] = &cell.idValue;
    cell.idValues[1] = nullptr;
    cell.labelValues[0] = &cell.labelValue;
    cell.labelValues[1] = nullptr;
    cell.idRecord = {const_cast<char*>("benchCellId"), SA_IMM_ATTR_SASTRINGT, 1, cell.idValues};
    cell.labelRecord = {const_cast<char*>("userLabel"), SA_IMM_ATTR_SASTRINGT, 1, cell.labelValues};
    const Values& shared = *shared_[i % kVariants];
    size_t a = 0;
    cell.attributes[a++] = &cell.idRecord;
    cell.attributes[a++] = &cell.labelRecord;
    for (const auto& attribute : shared.attributes) cell.attributes[a++] = &attribute->record;
    cell.attributes[a] = nullptr;
    cell.record.parentName = &names_[i % kParents];
    cell.record.attrValues = cell.attributes;
  }

  SafcImmCtInstanceGroupT record_{};
  std::vector<std::string> parents_;
  std::vector<SaNameT> names_;
  std::vector<std::unique_ptr<Values>> shared_;
  std::vector<Cell> cells_;
  std::vector<SafcImmCtInstanceT*> pointers_;
};

struct Model {
  explicit Model(size_t size) : input(size) {}
  Input input;
  std::unique_ptr<InstanceGroup> group;
};

Model& model(size_t size) {
  static std::map<size_t, std::unique_ptr<Model>> models;
  std::unique_ptr<Model>& m = models[size];
  if (!m) m = std::make_unique<Model>(size);
  return *m;
}

InstanceGroup& builtGroup(size_t size) {
  Model& m = model(size);
  if (!m.group) m.group = ImmRecords::readGroup(*m.input.record(), "", "Tav");
  return *m.group;
}

void setCounters(benchmark::State& state, size_t size) {
  state.counters["ns_per_instance"] =
      benchmark::Counter(static_cast<double>(size) * state.iterations() / 1e9,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["peak_B_per_instance"] = static_cast<double>(peakResidentBytes()) / size;
}

void BM_BuildFromRecords(benchmark::State& state) {
  size_t size = static_cast<size_t>(state.range(0));
  Model& m = model(size);
  m.group.reset();
  long before = residentBytes();
  for (auto _ : state) {
    m.group = ImmRecords::readGroup(*m.input.record(), "", "Tav");
    state.PauseTiming();
    state.counters["model_B_per_instance"] = static_cast<double>(residentBytes() - before) / size;
    if (m.group->getNumberOfInstances() != size) state.SkipWithError("instances lost");
    state.ResumeTiming();
  }
  setCounters(state, size);
}

void BM_LookupEveryInstance(benchmark::State& state) {
  size_t size = static_cast<size_t>(state.range(0));
  InstanceGroup& group = builtGroup(size);
  std::vector<std::string> ldns;
  ldns.reserve(size);
  for (InstanceIf* instance : group.getInstances()) ldns.push_back(instance->getLdn());
  if (ldns.front().rfind("benchCellId=", 0) != 0) state.SkipWithError("no RDN found");
  std::vector<InstanceIf*> instances = group.getInstances();
  for (auto _ : state) {
    for (size_t i = 0; i < size; ++i) {
      if (group.getInstance(ldns[i]) != instances[i]) state.SkipWithError("wrong instance found");
    }
  }
  setCounters(state, size);
}

void BM_ChildrenOfEveryParent(benchmark::State& state) {
  size_t size = static_cast<size_t>(state.range(0));
  InstanceGroup& group = builtGroup(size);
  const std::vector<std::string>& parents = model(size).input.parents();
  for (auto _ : state) {
    size_t children = 0;
    for (const std::string& parent : parents) children += group.getChildInstances(parent).size();
    if (children != size) state.SkipWithError("children lost");
  }
  setCounters(state, size);
}

void BM_WriteRecords(benchmark::State& state) {
  size_t size = static_cast<size_t>(state.range(0));
  InstanceGroup& group = builtGroup(size);
  for (auto _ : state) {
    ImmRecords records;
    if (!records.add(group)) state.SkipWithError("out of memory");
  }
  setCounters(state, size);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10000)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_BuildFromRecords)->Apply(sizes);
BENCHMARK(BM_LookupEveryInstance)->Apply(sizes);
BENCHMARK(BM_ChildrenOfEveryParent)->Apply(sizes);
BENCHMARK(BM_WriteRecords)->Apply(sizes);

}  // namespace

int main(int argc, char** argv) {
  // No log service: the persistent log falls back to (disabled) tracepoints.
  unsetenv("VOSK_SIM_ROOT");
  unsetenv("VOSK_SIM_OUT");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
