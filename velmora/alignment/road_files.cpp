#include "velmora/alignment/road_files.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include "velmora/alignment/alignment_file.h"
#include "velmora/platform/whole_file.h"

namespace velmora {
namespace {

RoadFile ReadRoadFile(const CString& name) {
  RoadFile road;
  AlignmentFile file;
  TextReader reader;
  if (!reader.Open(name))
    road.problem = Finding{0, WhyUnopened(name)};
  else
    road.problem = ReadAlignmentFile(reader, &file);
  if (road.problem) return road;
  road.profile = std::move(file.profile);
  road.problem = ProblemOfPlan(file);
  if (!road.problem) road.plan = std::move(file.plan);
  return road;
}

}  // namespace

std::vector<RoadFile> ReadRoadFiles(std::span<const CString> files, int threads) {
  std::vector<RoadFile> roads(files.size());
  std::atomic<size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr failed;
  const auto run = [&] {
    try {
      for (size_t i = next++; i < files.size(); i = next++) roads[i] = ReadRoadFile(files[i]);
    } catch (...) {
      const std::lock_guard lock(mutex);
      failed = std::current_exception();
      next = files.size();
    }
  };
  const size_t wanted = threads > 0 ? static_cast<size_t>(threads) : std::thread::hardware_concurrency();
  std::vector<std::thread> running;
  try {
    while (running.size() + 1 < std::min(wanted, files.size())) running.emplace_back(run);
  } catch (const std::system_error&) {  // fewer threads will do
  }
  run();
  for (std::thread& thread : running) thread.join();
  if (failed) std::rethrow_exception(failed);
  return roads;
}

}  // namespace velmora
