// An upright box in the plane.
#ifndef VELMORA_ALIGNMENT_BOUNDING_BOX_H_
#define VELMORA_ALIGNMENT_BOUNDING_BOX_H_

#include <algorithm>
#include <limits>

#include "velmora/alignment/geometry.h"

namespace velmora {

struct BoundingBox {
  PlanePoint low;   // of a plan: the least easting and northing
  PlanePoint high;  // the greatest

  // A coordinate that is not a number is passed over.
  void Include(PlanePoint p) {
    low = {std::min(low.h, p.h), std::min(low.v, p.v)};
    high = {std::max(high.h, p.h), std::max(high.v, p.v)};
  }
  void Include(const BoundingBox& other) {
    low = {std::min(low.h, other.low.h), std::min(low.v, other.low.v)};
    high = {std::max(high.h, other.high.h), std::max(high.v, other.high.v)};
  }
  void Grow(double by) {
    low = {low.h - by, low.v - by};
    high = {high.h + by, high.v + by};
  }
  double Diagonal() const { return Distance(low, high); }
  PlanePoint Middle() const { return {(low.h + high.h) * 0.5, (low.v + high.v) * 0.5}; }
  // Squared distance from the box, 0 inside.
  double SquaredDistance(PlanePoint p) const {
    const double h = std::max(std::max(low.h - p.h, p.h - high.h), 0.0);
    const double v = std::max(std::max(low.v - p.v, p.v - high.v), 0.0);
    return h * h + v * v;
  }
};

// Holds nothing until something is included. Finite, so that its middle is a number.
inline constexpr double kEmptyBound = std::numeric_limits<double>::max();
inline constexpr BoundingBox kEmptyBounds = {{kEmptyBound, kEmptyBound}, {-kEmptyBound, -kEmptyBound}};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_BOUNDING_BOX_H_
