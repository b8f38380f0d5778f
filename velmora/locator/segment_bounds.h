// Where the points lie for which a segment may answer: bounds that a search can rely on, rounding
// included. What the bounds leave out has no foot there that CVaglinje::Vagstv would find.
#ifndef VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
#define VELMORA_LOCATOR_SEGMENT_BOUNDS_H_

#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/geometry.h"

namespace velmora {

struct Box {
  PlanePoint low;
  PlanePoint high;

  void Include(PlanePoint p);
  void Include(const Box& other);
  void Grow(double by);
  double Diagonal() const { return Distance(low, high); }
  PlanePoint Middle() const { return {(low.h + high.h) * 0.5, (low.v + high.v) * 0.5}; }
  // Squared distance from the box, 0 inside.
  double SquaredDistance(PlanePoint p) const;
};
inline constexpr double kFarOut = 1e300;
inline constexpr Box kEmptyBox = {{kFarOut, kFarOut}, {-kFarOut, -kFarOut}};

// The directions, up to their sign, of tangents: within `spread` of `middle`, a unit vector. A spread of
// more than a quarter turn is any direction; below 0 there is none.
struct Tangents {
  PlanePoint middle{1, 0};
  double spread = -1;

  void Include(const Tangents& other);
};

// A foot on a curve within `box` lies there, and the line from it to its point is square to one of
// `tangents`.
struct FootBound {
  Box box = kEmptyBox;
  Tangents tangents;

  void Include(const FootBound& other);
};

// Bounds of one segment.
struct SegmentBounds {
  // Beyond every bound: coordinates or a circle so large that sums overflow or lose their metres.
  bool wild = false;
  // The segment's feet, and its first point.
  FootBound feet;
  // Feet lie within `pad` of the chord prolonged by kChordReach of its length at both ends.
  double pad = 0;
  // An arc also answers for points within kQuadrantTolerance of an axis through its centre, as if they
  // lay a quarter turn back: places on its circle, away from it, each with the tangent there.
  std::vector<FootBound> axis_places;
};

inline constexpr double kChordReach = 0.00011;

// `arc` is null for a straight.
SegmentBounds BoundsOfSegment(const kovltype& a, const kovltype& b, const ArcFrame* arc);

// Distance from `p` to the straight a→b prolonged by kChordReach at both ends; to `a` where it is
// shorter than 1 cm.
double DistanceFromChord(PlanePoint a, PlanePoint b, PlanePoint p);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
