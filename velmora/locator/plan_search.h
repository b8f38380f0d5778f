// Station and offset of many points: the table near the line first, then each point's candidates, then the
// trees. For any number of threads at once.
#ifndef VELMORA_LOCATOR_PLAN_SEARCH_H_
#define VELMORA_LOCATOR_PLAN_SEARCH_H_

#include <atomic>
#include <cstddef>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/locator/ground_order.h"
#include "velmora/locator/instruction_set.h"
#include "velmora/locator/near_kernel.h"
#include "velmora/locator/near_table.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

class PlanSearch {
 public:
  PlanSearch(std::vector<kovltype> points, double no_station, InstructionSet set);
  ~PlanSearch();
  PlanSearch(const PlanSearch&) = delete;
  PlanSearch& operator=(const PlanSearch&) = delete;

  const PlanSnapshot& Plan() const { return plan_; }
  // As CVaglinje::Vagstv with search mode 0 on a plan.
  void Find(const double* x, const double* y, size_t count, double* station, double* offset,
            int* result) const;

 private:
  void FindInOrder(const double* x, const double* y, size_t count, double* station, double* offset,
                   int* result) const;
  // Each at most kNearBlock points.
  void FindPoints(size_t first, size_t count, SpatialSort* order) const;
  void FindBlock(const double* x, const double* y, size_t count, double* station, double* offset,
                 int* result) const;
  void FindNear(const double* x, const double* y, size_t count, double* station, double* offset,
                int* result) const;
  StationOffset FindOne(PlanePoint p) const;

  PlanSnapshot plan_;
  NearRoutines routines_;
  NearTable near_;
  NearView view_;
  mutable std::atomic<SpatialSort*> spare_ = nullptr;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_PLAN_SEARCH_H_
