// Bounds on where a segment's feet lie, rounding included: outside them CVaglinje::Vagstv finds no foot on
// the segment.
#ifndef VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
#define VELMORA_LOCATOR_SEGMENT_BOUNDS_H_

#include <algorithm>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"

namespace velmora {

// Upright, in the plane.
struct BoundingBox {
  PlanePoint low;
  PlanePoint high;

  void Include(PlanePoint p);
  void Include(const BoundingBox& other);
  void Grow(double by);
  double Diagonal() const { return Distance(low, high); }
  PlanePoint Middle() const { return {(low.h + high.h) * 0.5, (low.v + high.v) * 0.5}; }
  // Squared distance from the box, 0 inside.
  double SquaredDistance(PlanePoint p) const {
    const double h = std::max(std::max(low.h - p.h, p.h - high.h), 0.0);
    const double v = std::max(std::max(low.v - p.v, p.v - high.v), 0.0);
    return h * h + v * v;
  }
};
inline constexpr double kFarOut = 1e300;
inline constexpr BoundingBox kEmptyBounds = {{kFarOut, kFarOut}, {-kFarOut, -kFarOut}};

// The directions, up to their sign, of tangents: within `spread` of `middle`, a unit vector. A spread of
// more than a quarter turn is any direction; below 0 there is none.
struct Tangents {
  PlanePoint middle{1, 0};
  double spread = -1;

  void Include(const Tangents& other);
};

// Feet lie within `box`, and the line from a foot to its point is perpendicular to one of `tangents`.
struct FootBound {
  BoundingBox box = kEmptyBounds;
  Tangents tangents;

  void Include(const FootBound& other);
};

// Bounds of one segment.
struct SegmentBounds {
  // Without bounds: coordinates or a circle so large that sums overflow or lose whole metres.
  bool unbounded = false;
  // The segment's feet and its first point.
  FootBound feet;
  // Feet lie within `chord_slack` of the chord prolonged by kChordReach of its length at both ends.
  double chord_slack = 0;
  // Axis quirk: an arc also answers for points within kQuadrantTolerance of an axis through its centre, as
  // if they lay a quarter turn back. Each is a place on the arc's circle, not on the arc.
  std::vector<FootBound> axis_quirks;
};

inline constexpr double kChordReach = 0.00011;

// `arc` is null for a straight.
SegmentBounds BoundsOfSegment(const kovltype& a, const kovltype& b, const ArcFrame* arc);

// Distance from `p` to the straight a→b prolonged by kChordReach at both ends; to `a` where it is
// shorter than 1 cm.
double DistanceFromChord(PlanePoint a, PlanePoint b, PlanePoint p);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
