// Station and offset of many points: by the batch search near the line, else among the candidates of each
// point's cell, else by the trees. A small plan is searched without cells at first.
// For any number of threads at once.
#ifndef VELMORA_LOCATOR_PLAN_SEARCH_H_
#define VELMORA_LOCATOR_PLAN_SEARCH_H_

#include <atomic>
#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/locator/batch_search.h"
#include "velmora/locator/candidate_grid.h"
#include "velmora/locator/plan_snapshot.h"
#include "velmora/locator/spatial_sort.h"

namespace velmora {

class PlanSearch {
 public:
  explicit PlanSearch(PlanSnapshot plan, const BatchRoutines& routines = FastestRoutines());
  virtual ~PlanSearch();
  PlanSearch(const PlanSearch&) = delete;
  PlanSearch& operator=(const PlanSearch&) = delete;

  const PlanSnapshot& Plan() const { return plan_; }
  // As CVaglinje::Vagstv with search mode 0 on a plan. Of several roads `result` is the number of the one
  // that answers, -1 for none.
  void Find(const double* x, const double* y, size_t count, double* station, double* offset,
            int* result) const;

 protected:
  virtual StationOffset FindOne(PlanePoint p) const;
  // The cell of a point; a reach of 0 where there is none.
  PackedCell CellAt(PlanePoint p) const { return Grid().Slots() == nullptr ? 0 : Grid().CellAt(p); }
  const CandidateGrid& Grid() const { return *grid_; }
  const BatchRoutines& Routines() const { return routines_; }

 private:
  BatchView ViewOf(const CandidateGrid* grid) const;
  const BatchView& ViewFor(size_t count) const;
  void FindInOrder(const BatchView& view, const double* x, const double* y, size_t count, double* station,
                   double* offset, int* result) const;
  // Each at most kMostInBatch points.
  void FindPoints(const BatchView& view, size_t first, size_t count, SpatialSort* sort) const;
  void FindBlock(const BatchView& view, const double* x, const double* y, size_t count, double* station,
                 double* offset, int* result) const;

  PlanSnapshot plan_;
  BatchRoutines routines_;
  mutable std::once_flag once_;
  mutable std::optional<CandidateGrid> grid_;  // made for the first batch that is worth it
  mutable BatchView view_;
  BatchView whole_;                        // without cells
  mutable std::atomic<size_t> asked_ = 0;  // points, of a small plan
  mutable std::atomic<SpatialSort*> spare_ = nullptr;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_PLAN_SEARCH_H_
