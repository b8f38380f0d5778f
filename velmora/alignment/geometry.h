// The geometry of alignments, on points alone: no list, no cursor, no state.
//
// Everything here works in the plane with h to the right (easting; in a profile the station) and v
// upwards (northing; the level), angles in radians counter-clockwise from +h. The constants of π are
// rounded, and so are the results that depend on them: field data of many years were computed with
// these very values, and a more exact π would move them.
#ifndef VELMORA_ALIGNMENT_GEOMETRY_H_
#define VELMORA_ALIGNMENT_GEOMETRY_H_

#include <cmath>
#include <limits>
#include <optional>
#include <span>

#include "velmora/alignment/alignment_point.h"

namespace velmora {

inline constexpr double kHalfPi = 1.570796326795;
inline constexpr double kPi = 3.14159265359;
inline constexpr double kTwoPi = 6.28318530718;
inline constexpr double kThreeHalfPi = kPi + kHalfPi;
inline constexpr double kStationTolerance = 0.0001;  // m
inline constexpr double kStraightBulge = 1e-6;       // a bulge of at most this is a straight
inline constexpr double kQuadrantTolerance = 1e-5;   // m from an axis through an arc's centre
inline constexpr double kNoCoordinate = 999999.9;    // reported where there is no result

struct PlanePoint {
  double h;
  double v;
};

// A plan point in this plane.
inline PlanePoint InPlane(const kovltype& point) { return {point.y, point.x}; }
inline bool IsStraight(double bulge) { return std::fabs(bulge) <= kStraightBulge; }
// The first two stations give the direction of stationing.
inline bool IsDescending(std::span<const kovltype> points) {
  return points.size() >= 2 && points[0].sek > points[1].sek;
}

inline double Distance(PlanePoint a, PlanePoint b) {
  const double dh = b.h - a.h;
  const double dv = b.v - a.v;
  return std::sqrt(dh * dh + dv * dv);
}
// Whether the segment a→b is an arc; coincident points leave none.
inline bool HasArc(const kovltype& a, const kovltype& b) {
  return !IsStraight(a.bulge) && Distance(InPlane(a), InPlane(b)) > 0;
}

struct Arc {
  double radius;
  PlanePoint centre;
};

// The circle of the arc from `a` to `b`. With bulge = tan(θ/4) for the sweep θ and the chord c, the
// sagitta is |bulge| c / 2 and the radius (c²/4 + sagitta²) / (2 sagitta). A positive bulge turns
// counter-clockwise: the centre of an arc below a half circle lies to the left of a→b. Neither a bulge
// of 0 nor a chord of 0 has a circle; the results are then not finite.
Arc ArcFromBulge(PlanePoint a, PlanePoint b, double bulge);

// The bulge of the shorter arc of this radius from `a` to `b`; a positive radius turns clockwise and
// gives a negative bulge. Nothing when the radius is smaller than half the chord or the chord is 0.
std::optional<double> BulgeFromRadius(PlanePoint a, PlanePoint b, double radius);

// Where the foot of a point lies along a segment.
enum class FootPlace { kDegenerate = 0, kInside = 1, kOutside = 2 };
struct Foot {
  FootPlace place;
  double along;   // m from the segment's start
  double offset;  // m, positive to the right
};

// The foot of `p` on the straight a→b. Outside is beyond either end by more than a ten-thousandth of
// the length; along and offset then hold for the straight prolonged. A segment shorter than 1 cm is
// degenerate, without along and offset.
inline constexpr double kShortestSquared = 0.0001;  // m²: a straight of 1 cm
inline constexpr double kFootBefore = -0.0001;      // of the length
inline constexpr double kFootBeyond = 1.0001;
inline Foot FootOnStraight(PlanePoint a, PlanePoint b, PlanePoint p) {
  const double dx = b.h - a.h;
  const double dy = b.v - a.v;
  const double squared = dx * dx + dy * dy;
  if (squared < kShortestSquared) return {FootPlace::kDegenerate, 0, 0};
  const double u = ((p.v - a.v) * dy + (p.h - a.h) * dx) / squared;
  const double cross = dy * (p.h - a.h) - dx * (p.v - a.v);
  const double length = std::sqrt(squared);
  const double distance = std::fabs(cross) / length;
  return {u < kFootBefore || u > kFootBeyond ? FootPlace::kOutside : FootPlace::kInside, length * u,
          cross < 0 ? -distance : distance};
}

// A direction from an arc's centre in quadrant form: `rank` orders directions counter-clockwise from
// east (quadrant number 0 to 3, plus the tangent of half the angle within it).
struct Direction {
  double rank;
  int quadrant;

  double Angle() const;  // radians
};
Direction DirectionFromCentre(double dh, double dv);

// The part of a foot on an arc that does not depend on the point.
struct ArcFrame {
  Arc circle;
  Direction to_a;
  Direction to_b;
  double angle_a;  // of to_a, radians
  double bulge;

  // Whether directions of this rank lie within the arc's angle.
  bool Holds(double rank) const {
    const double first = bulge > 0 ? to_a.rank : to_b.rank;
    const double last = bulge > 0 ? to_b.rank : to_a.rank;
    return first > last ? rank >= first || rank <= last  // over the +h axis
                        : first <= rank && rank <= last;
  }
};
ArcFrame FrameOfArc(PlanePoint a, double bulge, PlanePoint b);

// The foot of `p` on the arc from `a` (with its bulge) to `b`: inside or outside the arc's angle.
// Outside leaves along and offset 0. A foot farther away than `within` may count as outside, which saves
// its angle.
Foot FootOnArc(const ArcFrame& arc, PlanePoint p, double within = std::numeric_limits<double>::infinity());
inline Foot FootOnArc(PlanePoint a, double bulge, PlanePoint b, PlanePoint p) {
  return FootOnArc(FrameOfArc(a, bulge, b), p);
}

// The foot on the segment that starts at `a`, straight or arc as its bulge says.
inline Foot FootOnSegment(const kovltype& a, const kovltype& b, PlanePoint p) {
  return IsStraight(a.bulge) ? FootOnStraight(InPlane(a), InPlane(b), p)
                             : FootOnArc(InPlane(a), a.bulge, InPlane(b), p);
}

// The point at station `station` and offset `offset` of the segment a→b. On a straight, position is
// proportional to station, not to measured length. An arc runs the shorter way between its ends.
PlanePoint PointOnSegment(const kovltype& a, const kovltype& b, double station, double offset);

// The direction in which the line runs at the start of the segment a→b, or at its end; a vector of the
// chord's length.
PlanePoint DirectionOfTravel(const kovltype& a, const kovltype& b, bool at_start);

// The length by which station grows over the arc between two points, measured by its foot; 0 where
// coincident points leave no arc.
double ArcLength(PlanePoint from, PlanePoint to, double bulge);

// The level at a station within a profile's segment: `x` is the level, `y` the station in the plane and
// `sek` the station by which the position is interpolated.
double LevelOnSegment(const kovltype& a, const kovltype& b, double station);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_GEOMETRY_H_
