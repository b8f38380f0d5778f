// Boxes in the order of a line, in runs of neighbours, so that those far from a point are passed over many at
// once.
#ifndef VELMORA_ALIGNMENT_BOX_RUNS_H_
#define VELMORA_ALIGNMENT_BOX_RUNS_H_

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "velmora/alignment/bounding_box.h"

namespace velmora {

class BoxRuns {
 public:
  // The box of the next item.
  void Add(const BoundingBox& box) {
    if (size_++ % kRun == 0) runs_.push_back(kEmptyBounds);
    runs_.back().Include(box);
  }

  // Calls visit(item) for all items within reach() of `p` and some others. What is visited may shorten the
  // reach; the nearest run comes first.
  template <class Reach, class Visit>
  void VisitNear(PlanePoint p, const Reach& reach, const Visit& visit) const {
    size_t nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (size_t run = 0; run < runs_.size(); ++run)
      if (const double distance = DistanceTo(run, p); distance < least) {
        nearest = run;
        least = distance;
      }
    const auto visit_run = [&](size_t run) {
      for (size_t i = run * kRun; i < std::min(size_, (run + 1) * kRun); ++i) visit(i);
    };
    if (size_ > 0) visit_run(nearest);
    for (size_t run = 0; run < runs_.size(); ++run)
      if (run != nearest && !(DistanceTo(run, p) > reach())) visit_run(run);
  }

 private:
  static constexpr size_t kRun = 64;

  double DistanceTo(size_t run, PlanePoint p) const { return std::sqrt(runs_[run].SquaredDistance(p)); }

  std::vector<BoundingBox> runs_;
  size_t size_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_BOX_RUNS_H_
