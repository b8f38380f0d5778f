// Boxes in the order of a line, in runs of neighbours, so that those far from a point are passed over many at
// once.
#ifndef VELMORA_ALIGNMENT_BOX_RUNS_H_
#define VELMORA_ALIGNMENT_BOX_RUNS_H_

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora {

// A box that holds nothing until something is included.
struct PlaneBox {
  PlanePoint low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  PlanePoint high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  // Everything within `around` of `p`.
  void Include(PlanePoint p, double around) {
    low = {std::min(low.h, p.h - around), std::min(low.v, p.v - around)};
    high = {std::max(high.h, p.h + around), std::max(high.v, p.v + around)};
  }
  double DistanceTo(PlanePoint p) const {
    const double dh = std::max({low.h - p.h, p.h - high.h, 0.0});
    const double dv = std::max({low.v - p.v, p.v - high.v, 0.0});
    return std::sqrt(dh * dh + dv * dv);
  }
};

class BoxRuns {
 public:
  // The box of the next item.
  void Add(const PlaneBox& box) {
    if (size_++ % kRun == 0) runs_.emplace_back();
    runs_.back().Include(box.low, 0);
    runs_.back().Include(box.high, 0);
  }

  // Calls visit(item) for all items within reach() of `p` and some others. What is visited may shorten the
  // reach; the nearest run comes first.
  template <class Reach, class Visit>
  void VisitNear(PlanePoint p, const Reach& reach, const Visit& visit) const {
    size_t nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (size_t run = 0; run < runs_.size(); ++run)
      if (const double distance = runs_[run].DistanceTo(p); distance < least) {
        nearest = run;
        least = distance;
      }
    const auto visit_run = [&](size_t run) {
      for (size_t i = run * kRun; i < std::min(size_, (run + 1) * kRun); ++i) visit(i);
    };
    if (size_ > 0) visit_run(nearest);
    for (size_t run = 0; run < runs_.size(); ++run)
      if (run != nearest && !(runs_[run].DistanceTo(p) > reach())) visit_run(run);
  }

 private:
  static constexpr size_t kRun = 64;

  std::vector<PlaneBox> runs_;
  size_t size_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_BOX_RUNS_H_
