// What listing and sorting a folder of 100,000 files costs, beside "ls -l" of the same folder.
//
// Each run reports how many times as long as ls it took, by the clock and in processor time, measured in
// turn in the same run. The folder is made once, in the build folder; names, days and sizes are random.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 100000;

std::string NameOf(int number, std::mt19937* random) {
  const std::string n = std::to_string(number);
  switch ((*random)() % 4) {
    case 0:
      return std::to_string((*random)() % 10000000) + "-" + n + ".DAT";
    case 1:
      return "BORR" + n + ".STD";
    case 2:
      return std::string(1, static_cast<char>('a' + (*random)() % 26)) + "_" + n + ".txt";
    default:
      return "Väg " + n + ".VL";
  }
}

// The folder with its files; what an interrupted run left is made anew.
std::string Folder() {
  const fs::path folder = VELMORA_BENCH_FOLDER;
  const fs::path complete = folder.string() + ".complete";
  if (fs::exists(complete)) return folder.string();
  fs::remove_all(folder);
  fs::create_directories(folder);
  std::mt19937 random(17);
  for (int i = 0; i < kFiles; ++i) {
    const fs::path file = folder / NameOf(i, &random);
    std::ofstream(file) << std::string(random() % 3000, 'x');
    const std::chrono::seconds since_1970(1'000'000'000 + random() % 700'000'000);
    fs::last_write_time(file, std::chrono::file_clock::from_sys(std::chrono::sys_seconds(since_1970)));
  }
  std::ofstream(complete) << "";
  return folder.string();
}

struct Cost {
  double clock = 0;
  double processor = 0;
};

double ProcessorSeconds(int whose) {
  rusage usage{};
  getrusage(whose, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

template <class Action>
Cost CostOf(int whose, Action action) {
  const double processor = ProcessorSeconds(whose);
  const auto start = std::chrono::steady_clock::now();
  action();
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
          ProcessorSeconds(whose) - processor};
}

void AddTo(Cost* sum, const Cost& cost) {
  sum->clock += cost.clock;
  sum->processor += cost.processor;
}

// `list` does what is compared with ls and returns the number of files it saw.
template <class List>
void CompareWithLs(benchmark::State& state, List list) {
  const std::string folder = Folder();
  const CString pattern = PathFromSystem(folder + "/*");
  const std::string ls = "ls -l '" + folder + "' > /dev/null";
  Cost ours;
  Cost of_ls;
  for (auto _ : state) {
    int listed = 0;
    const Cost cost = CostOf(RUSAGE_SELF, [&] { listed = list(pattern); });
    if (listed < kFiles) state.SkipWithError("files are missing: remove the folder and run again");
    state.SetIterationTime(cost.clock);
    AddTo(&ours, cost);
    AddTo(&of_ls, CostOf(RUSAGE_CHILDREN, [&] {
      if (std::system(ls.c_str()) != 0) state.SkipWithError("ls failed");
    }));
  }
  state.counters["per_ls"] = ours.clock / of_ls.clock;
  state.counters["cpu_per_ls"] = ours.processor / of_ls.processor;
}

// The key of CDirSort::Init; freeing the list counts.
void ListAndSort(benchmark::State& state) {
  CompareWithLs(state, [&state](const CString& pattern) {
    CDirSort list;
    int count = 0;
    list.Init(pattern, static_cast<int>(state.range(0)), 1, 0, 0);
    list.Where(&count);
    return count;
  });
}
BENCHMARK(ListAndSort)
    ->ArgName("key")
    ->Arg(0)
    ->Arg(1)
    ->Arg(-1)
    ->Arg(2)
    ->Arg(-2)
    ->Arg(3)
    ->Arg(-3)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// What of it is finding the files.
void Find(benchmark::State& state) {
  CompareWithLs(state, [](const CString& pattern) { return static_cast<int>(FindFiles(pattern).size()); });
}
BENCHMARK(Find)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
