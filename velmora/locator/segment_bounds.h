// Bounds on where a segment's feet lie, rounding included: outside them CVaglinje::Vagstv finds no foot on
// the segment.
#ifndef VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
#define VELMORA_LOCATOR_SEGMENT_BOUNDS_H_

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "velmora/alignment/bounding_box.h"

namespace velmora {

inline constexpr double kFarOut = 1e300;  // m, beyond all coordinates

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

// The directions of consecutive chords, the first from (h[0], v[0]) on, and of all within `bend` of them.
// `inverse` is that of a chord's squared length, 0 for a degenerate one, which has no direction.
Tangents TangentsOfChords(const double* h, const double* v, const double* inverse, size_t count, double bend);

// Bounds of one segment, but for its tangents.
struct SegmentBounds {
  // Without bounds: coordinates or a circle so large that sums overflow or lose whole metres.
  bool unbounded = false;
  BoundingBox box = kEmptyBounds;  // of its feet and its first point
  // Feet lie within `chord_slack` of the chord prolonged by kChordReach of its length at both ends.
  double chord_slack = 0;
};

inline constexpr double kChordReach = 0.00011;
inline constexpr double kLargestCoordinate = 1e9;  // m
inline constexpr double kLongStraight = 1e4;
inline constexpr double kShortStraight = 0.02;
// How far feet lie outside the box of the ends of a straight of this length.
inline double ReachOfStraight(double length) { return 2 * kChordReach * length + 1e-6 + 1e-12 * length; }

inline SegmentBounds BoundsOfStraight(PlanePoint a, PlanePoint b) {
  const auto within = [](double value) { return std::fabs(value) <= kLargestCoordinate; };
  SegmentBounds bounds;
  bounds.unbounded = !(within(a.h) && within(a.v) && within(b.h) && within(b.v));
  const double length = Distance(a, b);
  bounds.box.Include(a);
  bounds.box.Include(b);
  bounds.box.Grow(ReachOfStraight(length));
  if (length > kLongStraight) bounds.chord_slack = 0.001;  // rounding grows with the length
  if (length < kShortStraight)
    bounds.chord_slack = kShortStraight;  // keeps degenerate ones out of the comparison of bare chords
  return bounds;
}

// An arc as those of roads mostly are: flat, and plainly far from the axes of its circle. It lies in the box
// of its ends, and its tangents near the direction of its chord.
struct FlatArc {
  double sagitta;
  double noise;  // m, of where its feet are
  double bend;   // tangents are within this angle of the chord
};
// Nothing for other arcs. The chord is neither a long straight nor a short one.
std::optional<FlatArc> AsFlatArc(PlanePoint chord, double bulge);

// The bounds of an arc, and of the places beside it where it also answers.
struct ArcBounds {
  SegmentBounds segment;
  Tangents tangents;
  // Axis quirk: an arc also answers for points within kQuadrantTolerance of an axis through its centre, as
  // if they lay a quarter turn back. Each is a place on the arc's circle, not on the arc.
  std::vector<FootBound> axis_quirks;
};
ArcBounds BoundsOfArc(PlanePoint a, PlanePoint b, const ArcFrame& arc);

// Distance from `p` to the straight a→b prolonged by kChordReach at both ends; to `a` where it is
// shorter than 1 cm.
double DistanceFromChord(PlanePoint a, PlanePoint b, PlanePoint p);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_SEGMENT_BOUNDS_H_
