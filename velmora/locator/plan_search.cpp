#include "velmora/locator/plan_search.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace velmora {
namespace {

// Sorting pays with plans that do not fit the caches, for batches of which several points fall on the same
// part of them.
constexpr size_t kLargePlan = size_t{1} << 16;
constexpr size_t kPointsForSegments = 8;
// The points that are sorted at once: each part of a batch goes over the whole plan.
constexpr size_t kLeastSorted = size_t{1} << 20;
constexpr size_t kSortedForSegments = 2;
constexpr size_t kSegmentsInCell = 60;
// Points times segments of a batch for which the time of computing cells is not well spent.
constexpr size_t kFewTimesSegments = size_t{1} << 19;
constexpr size_t kMostPartCells = size_t{1} << 14;
constexpr double kClose = 2000;  // m
// For points in the caller's order. Longer batches pay only where memory is waited for.
constexpr size_t kShortBatch = kMostInBatch / 2;

}  // namespace

PlanSearch::PlanSearch(PlanSnapshot plan, const BatchRoutines& routines)
    : plan_(std::move(plan)), routines_(routines), whole_(ViewOf(nullptr)) {}

PlanSearch::~PlanSearch() { delete spare_.load(); }

BatchView PlanSearch::ViewOf(const CandidateGrid* grid) const {
  const bool cells = grid != nullptr;
  return {cells ? grid->Layout() : GridLayout(),
          cells ? grid->Slots() : nullptr,
          cells ? grid->Cells() : nullptr,
          plan_.H(),
          plan_.V(),
          plan_.Inverse(),
          plan_.ChordSlacks(),
          plan_.Stations(),
          &plan_,
          grid,
          plan_.Vertices() - 1,
          plan_.Descending(),
          plan_.Roads()};
}

// Computing a cell takes longer than searching a small plan for a point, and few points share one. Once a
// small plan was asked for as many points as it has segments, the next batches use cells.
const BatchView& PlanSearch::ViewFor(size_t count) const {
  const size_t segments = plan_.Segments();
  if (segments <= routines_.most_without_cells && asked_.load(std::memory_order_relaxed) < segments &&
      count <= kFewTimesSegments / segments && plan_.CanCompareAll()) {
    asked_.fetch_add(count, std::memory_order_relaxed);
    return whole_;
  }
  std::call_once(once_, [this] {
    grid_.emplace(plan_, routines_);
    view_ = ViewOf(&*grid_);
  });
  return view_;
}

void PlanSearch::Find(const double* x, const double* y, size_t count, double* station, double* offset,
                      int* result) const {
  const BatchView& view = ViewFor(count);
  const size_t segments = plan_.Segments();
  const size_t part = std::min(count, std::max(kLeastSorted, kSortedForSegments * segments));
  if (segments < kLargePlan || part < segments / kPointsForSegments || !AreScattered(x, y, count, kClose)) {
    FindInOrder(view, x, y, count, station, offset, result);
    return;
  }
  // The memory is kept for the next batch; of several threads' the last one's.
  std::unique_ptr<SpatialSort> sort(spare_.exchange(nullptr));
  if (sort == nullptr || sort->Most() < part)
    sort.reset(new (std::nothrow)
                   SpatialSort(plan_.Extent(), std::min(segments / kSegmentsInCell, kMostPartCells), part));
  if (sort == nullptr || !sort->IsUsable()) {
    FindInOrder(view, x, y, count, station, offset, result);
    return;
  }
  for (size_t done = 0; done < count; done += part) {
    const size_t now = std::min(part, count - done);
    sort->Sort(x + done, y + done, now);
    for (size_t at = 0; at < now; at += kMostInBatch)
      FindPoints(view, at, std::min(kMostInBatch, now - at), sort.get());
    sort->ScatterAnswers(now, station + done, offset + done, result + done);
  }
  sort.reset(spare_.exchange(sort.release()));
}

void PlanSearch::FindPoints(const BatchView& view, size_t first, size_t count, SpatialSort* sort) const {
  const SpatialSort::Point* const points = sort->Points() + first;
  struct Block {
    double x[kMostInBatch];
    double y[kMostInBatch];
    double station[kMostInBatch];
    double offset[kMostInBatch];
    int result[kMostInBatch];
  } block;
  for (size_t k = 0; k < kMostInBatch; ++k) {  // filled up with copies of the last one
    block.x[k] = points[std::min(k, count - 1)].x;
    block.y[k] = points[std::min(k, count - 1)].y;
  }
  FindBlock(view, block.x, block.y, count, block.station, block.offset, block.result);
  for (size_t k = 0; k < count; ++k)
    sort->Keep({block.station[k], block.offset[k], points[k].from, block.result[k]});
}

void PlanSearch::FindInOrder(const BatchView& view, const double* x, const double* y, size_t count,
                             double* station, double* offset, int* result) const {
  for (size_t done = 0; done < count; done += kShortBatch)
    FindBlock(view, x + done, y + done, std::min(kShortBatch, count - done), station + done, offset + done,
              result + done);
}

void PlanSearch::FindBlock(const BatchView& view, const double* x, const double* y, size_t count,
                           double* station, double* offset, int* result) const {
  const bool whole = view.grid == nullptr;
  if (whole || view.slots != nullptr)
    routines_.search(view, x, y, count, station, offset, result);
  else
    std::fill_n(result, count, kUnsolved);
  for (size_t i = 0; i < count; ++i) {
    if (result[i] != kUnsolved) continue;
    const StationOffset found = whole ? plan_.Find({y[i], x[i]}) : FindOne({y[i], x[i]});
    result[i] = found.result;
    station[i] = found.station;
    offset[i] = found.offset;
  }
}

// Among the candidates of the point's cell where the answer is within its reach, else by the trees.
StationOffset PlanSearch::FindOne(PlanePoint p) const {
  const PackedCell cell = CellAt(p);
  const double reach = Reach(cell);
  if (reach > 0) {
    PointSearch search = plan_.NewSearch();
    SegmentRun single{};
    for (const SegmentRun& run : Grid().Runs(cell, &single)) {
      for (size_t i = run.first; i < size_t{run.first} + run.count; ++i) {
        plan_.ConsiderSegment(i, p, &search);
        search.ConsiderVertex(i, Distance(p, plan_.At(i)));
      }
      const size_t end = size_t{run.first} + run.count;
      search.ConsiderVertex(end, Distance(p, plan_.At(end)));
    }
    const bool vertex_answers = search.feet.best > search.vertex_distance && plan_.IsInterior(search.vertex);
    if ((vertex_answers ? search.vertex_distance : search.feet.best) < reach)
      return plan_.Conclude(search, p);
  }
  return plan_.Find(p);
}

}  // namespace velmora
