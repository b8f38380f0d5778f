#include "velmora/alignment/road_files.h"

#include "velmora/alignment/alignment_file.h"
#include "velmora/alignment/combined_reader.h"
#include "velmora/platform/in_threads.h"
#include "velmora/platform/whole_file.h"

namespace velmora {
namespace {

RoadFile ReadRoadFile(const CString& name) {
  RoadFile road;
  TextReader reader;
  if (!reader.Open(name)) {
    road.problem = Finding{0, WhyUnopened(name)};
    return road;
  }
  ReadCombined(
      reader,
      [&](LineKind kind, const kovltype& point) {
        (kind == LineKind::kPlanPoint ? road.plan : road.profile).push_back(point);
      },
      [](int, LineKind, const CString&) {});
  if (!reader.Failed() && road.plan.size() >= 2) return road;
  road.plan.clear();
  // Once more for what is wrong with it.
  AlignmentFile file;
  if (!reader.Open(name))
    road.problem = Finding{0, WhyUnopened(name)};
  else
    road.problem = ReadAlignmentFile(reader, &file);
  if (!road.problem) road.problem = ProblemOfPlan(file);
  if (!road.problem) road.plan = std::move(file.plan);  // another program has written it meanwhile
  road.profile = std::move(file.profile);
  return road;
}

}  // namespace

std::vector<RoadFile> ReadRoadFiles(std::span<const CString> files, int threads) {
  std::vector<RoadFile> roads(files.size());
  InThreads(files.size(), threads, [&](size_t i) { roads[i] = ReadRoadFile(files[i]); });
  return roads;
}

}  // namespace velmora
