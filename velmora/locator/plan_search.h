// Station and offset of many points: by the batch search near the line, else among the candidates of each
// point's cell, else by the trees. For any number of threads at once.
#ifndef VELMORA_LOCATOR_PLAN_SEARCH_H_
#define VELMORA_LOCATOR_PLAN_SEARCH_H_

#include <atomic>
#include <cstddef>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/locator/batch_search.h"
#include "velmora/locator/candidate_grid.h"
#include "velmora/locator/plan_snapshot.h"
#include "velmora/locator/spatial_sort.h"

namespace velmora {

class PlanSearch {
 public:
  // As PlanSnapshot.
  PlanSearch(std::vector<kovltype> points, double no_station,
             const BatchRoutines& routines = FastestRoutines(), std::vector<std::uint32_t> roads = {},
             int threads = 1);
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
  PackedCell CellAt(PlanePoint p) const { return grid_.Slots() == nullptr ? 0 : grid_.CellAt(p); }
  const CandidateGrid& Grid() const { return grid_; }
  const BatchRoutines& Routines() const { return routines_; }

 private:
  void FindInOrder(const double* x, const double* y, size_t count, double* station, double* offset,
                   int* result) const;
  // Each at most kMostInBatch points.
  void FindPoints(size_t first, size_t count, SpatialSort* sort) const;
  void FindBlock(const double* x, const double* y, size_t count, double* station, double* offset,
                 int* result) const;

  PlanSnapshot plan_;
  BatchRoutines routines_;
  CandidateGrid grid_;
  BatchView view_;
  mutable std::atomic<SpatialSort*> spare_ = nullptr;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_PLAN_SEARCH_H_
