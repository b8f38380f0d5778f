#include "velmora/locator/plan_search.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace velmora {
namespace {

// From where on sorting points by the ground pays: plans that do not fit the caches, and batches of which
// several points fall on the same part of them.
constexpr size_t kLargePlan = size_t{1} << 16;
constexpr size_t kPointsForSegments = 8;
constexpr size_t kMostSorted = size_t{1} << 20;
constexpr size_t kSegmentsInCell = 60;
constexpr size_t kMostCells = size_t{1} << 14;
constexpr double kClose = 2000;  // m
// Of points in the caller's order; where memory is waited for, longer blocks wait less often.
constexpr size_t kShortBlock = kNearBlock / 2;

}  // namespace

PlanSearch::PlanSearch(std::vector<kovltype> points, double no_station, InstructionSet set)
    : plan_(std::move(points), no_station),
      routines_(NearRoutinesFor(set)),
      near_(plan_, routines_.distances),
      view_{near_.Grid(),
            near_.Slots(),
            near_.Squares(),
            plan_.H(),
            plan_.V(),
            plan_.Inverse(),
            plan_.Pads(),
            plan_.Stations(),
            &plan_,
            &near_,
            plan_.Points().size() - 1,
            plan_.Descending()} {}

void PlanSearch::Find(const double* x, const double* y, size_t count, double* station, double* offset,
                      int* result) const {
  const size_t segments = plan_.Segments();
  const size_t part = std::min(count, kMostSorted);
  if (segments < kLargePlan || part < segments / kPointsForSegments || !AreScattered(x, y, count, kClose)) {
    FindInOrder(x, y, count, station, offset, result);
    return;
  }
  // The memory stays for the next batch; of several threads' the last one's.
  std::unique_ptr<SpatialSort> order(spare_.exchange(nullptr));
  if (order == nullptr || order->Most() < part)
    order.reset(new (std::nothrow)
                    SpatialSort(plan_.Extent(), std::min(segments / kSegmentsInCell, kMostCells), part));
  if (order == nullptr || !order->IsUsable()) {
    FindInOrder(x, y, count, station, offset, result);
    return;
  }
  for (size_t done = 0; done < count; done += part) {
    const size_t now = std::min(part, count - done);
    order->Sort(x + done, y + done, now);
    for (size_t at = 0; at < now; at += kNearBlock)
      FindPoints(at, std::min(kNearBlock, now - at), order.get());
    order->ScatterAnswers(now, station + done, offset + done, result + done);
  }
  order.reset(spare_.exchange(order.release()));
}

PlanSearch::~PlanSearch() { delete spare_.load(); }

void PlanSearch::FindPoints(size_t first, size_t count, SpatialSort* order) const {
  const SpatialSort::Point* const points = order->Points() + first;
  struct Block {
    double x[kNearBlock];
    double y[kNearBlock];
    double station[kNearBlock];
    double offset[kNearBlock];
    int result[kNearBlock];
  } block;
  for (size_t k = 0; k < kNearBlock; ++k) {  // behind the last one copies of it
    block.x[k] = points[std::min(k, count - 1)].x;
    block.y[k] = points[std::min(k, count - 1)].y;
  }
  FindBlock(block.x, block.y, count, block.station, block.offset, block.result);
  for (size_t k = 0; k < count; ++k)
    order->Keep({block.station[k], block.offset[k], points[k].from, block.result[k]});
}

void PlanSearch::FindInOrder(const double* x, const double* y, size_t count, double* station, double* offset,
                             int* result) const {
  for (size_t done = 0; done < count; done += kShortBlock)
    FindBlock(x + done, y + done, std::min(kShortBlock, count - done), station + done, offset + done,
              result + done);
}

void PlanSearch::FindBlock(const double* x, const double* y, size_t count, double* station, double* offset,
                           int* result) const {
  FindNear(x, y, count, station, offset, result);
  for (size_t i = 0; i < count; ++i) {
    if (result[i] != kNearUnsolved) continue;
    const StationOffset found = FindOne({y[i], x[i]});
    result[i] = found.result;
    station[i] = found.station;
    offset[i] = found.offset;
  }
}

// What the table tells plainly; where it had too little to tell, once more after it was added to.
void PlanSearch::FindNear(const double* x, const double* y, size_t count, double* station, double* offset,
                          int* result) const {
  std::fill_n(result, count, kNearUnsolved);
  if (near_.Slots() == nullptr) return;
  routines_.find(view_, x, y, count, station, offset, result);
  const auto unsolved = static_cast<size_t>(std::count(result, result + count, kNearUnsolved));
  if (unsolved < 3 || unsolved < count / 8) return;
  const size_t known = near_.Tiles();
  for (size_t i = 0; i < count; ++i)
    if (result[i] == kNearUnsolved) near_.Square({y[i], x[i]});
  if (near_.Tiles() != known) routines_.find(view_, x, y, count, station, offset, result);
}

// Among the candidates of the point's square where that holds, else by the trees.
StationOffset PlanSearch::FindOne(PlanePoint p) const {
  const NearSquare square = near_.Slots() == nullptr ? 0 : near_.Square(p);
  const double reach = NearReach(square);
  if (reach > 0) {
    PointSearch search = plan_.NewSearch();
    SegmentRun single{};
    for (const SegmentRun& run : near_.Runs(square, &single)) {
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
