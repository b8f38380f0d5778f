// What sorting a list costs, beside a standard sort of as many pointers and beside looking for each
// place in a pass over all records.
//
// Each list run reports how many times as long as the other two it took, measured in the same run:
// times alone tell little on a shared machine.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <vector>

#include "velmora/core/list0.h"

namespace velmora {
namespace {

struct Record {
  int key;
  wchar_t text[40];
};

class RecordList : public list0<Record> {
 protected:
  int Sortval(int /*key*/) override { return pael->key - pmark->key; }
};

std::vector<Record> RandomRecords(size_t count) {
  std::mt19937 random(17);
  std::vector<Record> records(count);
  for (Record& record : records) record.key = static_cast<int>(random() % 1000000);
  return records;
}

template <class Action>
double Seconds(Action action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double SecondsOfPointerSort(const std::vector<Record>& records) {
  std::vector<const Record*> order;
  for (const Record& record : records) order.push_back(&record);
  return Seconds([&] {
    std::stable_sort(order.begin(), order.end(),
                     [](const Record* a, const Record* b) { return a->key < b->key; });
    benchmark::DoNotOptimize(order.data());
  });
}

double SecondsOfPasses(const std::vector<Record>& records) {
  std::vector<const Record*> order;
  std::vector<bool> placed(records.size());
  return Seconds([&] {
    while (order.size() < records.size()) {
      size_t best = records.size();
      for (size_t i = 0; i < records.size(); ++i)
        if (!placed[i] && (best == records.size() || records[best].key > records[i].key)) best = i;
      placed[best] = true;
      order.push_back(&records[best]);
    }
    benchmark::DoNotOptimize(order.data());
  });
}

void SortList(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  const std::vector<Record> records = RandomRecords(count);
  double in_list = 0;
  double of_pointers = 0;
  double in_passes = 0;
  for (auto _ : state) {
    RecordList list;
    for (const Record& record : records) list.Ny(1, &record);
    const double seconds = Seconds([&] { list.Sortera(0); });
    state.SetIterationTime(seconds);
    in_list += seconds;
    of_pointers += SecondsOfPointerSort(records);
    if (count <= 4000) in_passes += SecondsOfPasses(records);
  }
  state.counters["per_stable_sort"] = in_list / of_pointers;
  if (in_passes > 0) state.counters["per_passes"] = in_list / in_passes;
}
BENCHMARK(SortList)->Arg(1000)->Arg(4000)->Arg(10000)->Arg(100000)->UseManualTime()->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
