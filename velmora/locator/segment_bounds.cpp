#include "velmora/locator/segment_bounds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmora {
namespace {

constexpr double kLargestCoordinate = 1e9;  // m
constexpr double kLargestRadius = 1e12;
constexpr double kLongStraight = 1e4;
// The root in a direction's rank cancels close to an axis; ranks of p agree with its angle to 3e-8.
constexpr double kAngleNoise = 1e-7;
constexpr double kQuarter = std::numbers::pi / 2;

bool Within(PlanePoint p, double limit) { return std::fabs(p.h) <= limit && std::fabs(p.v) <= limit; }

PlanePoint ToAngle(double angle) { return {std::cos(angle), std::sin(angle)}; }
// To the axes counter-clockwise from east.
PlanePoint ToAxis(int axis) {
  constexpr PlanePoint kAxes[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
  return kAxes[axis & 3];
}
// Half way between two directions less than half a turn apart.
PlanePoint ToMiddle(PlanePoint a, PlanePoint b) {
  const PlanePoint sum{a.h + b.h, a.v + b.v};
  const double length = std::sqrt(sum.h * sum.h + sum.v * sum.v);
  return {sum.h / length, sum.v / length};
}

PlanePoint OnCircle(const Arc& circle, PlanePoint direction) {
  return {circle.centre.h + circle.radius * direction.h, circle.centre.v + circle.radius * direction.v};
}

Tangents TangentAt(PlanePoint direction, double spread) { return {{-direction.v, direction.h}, spread}; }

// The largest distance from the chord of a point of the box; distance from a convex set is largest at a
// corner.
double FarthestFromChord(PlanePoint a, PlanePoint b, const BoundingBox& box) {
  return std::max({DistanceFromChord(a, b, box.low), DistanceFromChord(a, b, box.high),
                   DistanceFromChord(a, b, {box.low.h, box.high.v}),
                   DistanceFromChord(a, b, {box.high.h, box.low.v})});
}

void BoundArc(PlanePoint a, PlanePoint b, const ArcFrame& arc, SegmentBounds* bounds) {
  const Arc& circle = arc.circle;
  // Not a number, as between coincident points, or infinite: no foot is nearer than any other.
  if (!std::isfinite(circle.radius) || !std::isfinite(circle.centre.h) || !std::isfinite(circle.centre.v))
    return;
  bounds->unbounded = circle.radius > kLargestRadius || !Within(circle.centre, kLargestRadius);
  if (bounds->unbounded) return;

  // The angle is the one between the ranks, a quarter turn off where an end lies beside an axis.
  const bool counter_clockwise = arc.bulge > 0;
  const double first = counter_clockwise ? arc.to_a.angle : arc.to_b.angle;
  double last = counter_clockwise ? arc.to_b.angle : arc.to_a.angle;
  if (last < first) last += 4 * kQuarter;
  const double from = first - kAngleNoise;
  const double to = last + kAngleNoise;
  const double slack = 1e-6 + 1e-12 * circle.radius;
  const double noise = slack + 2 * kAngleNoise * circle.radius;
  constexpr double kPlainSweep = 3;  // less than half a turn

  const PlanePoint to_first = ToAngle(first);
  const PlanePoint to_last = ToAngle(last);
  const PlanePoint at_first = OnCircle(circle, to_first);
  const PlanePoint at_last = OnCircle(circle, to_last);
  BoundingBox box = kEmptyBounds;
  box.Include(at_first);
  box.Include(at_last);
  for (int axis = static_cast<int>(std::ceil(from / kQuarter)); axis * kQuarter <= to; ++axis)
    box.Include(OnCircle(circle, ToAxis(axis)));
  box.Grow(noise);
  bounds->feet.box.Include(box);
  bounds->feet.tangents.Include(
      TangentAt(last - first < kPlainSweep ? ToMiddle(to_first, to_last) : ToAngle((first + last) / 2),
                (to - from) / 2));

  const double sagitta = std::fabs(arc.bulge) * Distance(a, b) / 2;
  const PlanePoint begin = counter_clockwise ? a : b;
  const PlanePoint end = counter_clockwise ? b : a;
  const bool as_drawn = std::fabs(arc.bulge) <= 1 && last - first < kPlainSweep &&
                        Distance(at_first, begin) <= noise && Distance(at_last, end) <= noise;
  bounds->chord_slack = as_drawn ? sagitta + 2 * noise : FarthestFromChord(a, b, box);

  for (int axis = 0; axis < 4; ++axis) {
    // Beside the axis that ends quadrant `axis`, points count as that quadrant's beginning.
    if (!arc.Holds(axis)) continue;
    const PlanePoint direction = ToAxis(axis + 1);
    FootBound quirk;
    quirk.box.Include(OnCircle(circle, direction));
    quirk.box.Grow(1.1 * kQuadrantTolerance + slack);
    quirk.tangents = TangentAt(direction, 0);
    bounds->axis_quirks.push_back(quirk);
  }
}

}  // namespace

void BoundingBox::Include(PlanePoint p) {
  low = {std::min(low.h, p.h), std::min(low.v, p.v)};
  high = {std::max(high.h, p.h), std::max(high.v, p.v)};
}

void BoundingBox::Include(const BoundingBox& other) {
  low = {std::min(low.h, other.low.h), std::min(low.v, other.low.v)};
  high = {std::max(high.h, other.high.h), std::max(high.v, other.high.v)};
}

void BoundingBox::Grow(double by) {
  low = {low.h - by, low.v - by};
  high = {high.h + by, high.v + by};
}

void Tangents::Include(const Tangents& other) {
  if (other.spread < 0) return;
  if (spread < 0) {
    *this = other;
    return;
  }
  PlanePoint turned = other.middle;
  if (middle.h * turned.h + middle.v * turned.v < 0) turned = {-turned.h, -turned.v};
  const PlanePoint sum{middle.h + turned.h, middle.v + turned.v};
  const double length = std::sqrt(sum.h * sum.h + sum.v * sum.v);  // at least the root of 2
  const double sine = std::min(std::fabs(middle.h * turned.v - middle.v * turned.h), 1.0);
  const double between = sine < 0.1 ? sine * 1.01 : std::asin(sine);
  middle = {sum.h / length, sum.v / length};
  spread = between / 2 + std::max(spread, other.spread) + 1e-9;
}

void FootBound::Include(const FootBound& other) {
  box.Include(other.box);
  tangents.Include(other.tangents);
}

double DistanceFromChord(PlanePoint a, PlanePoint b, PlanePoint p) {
  const double dh = b.h - a.h;
  const double dv = b.v - a.v;
  const double squared = dh * dh + dv * dv;
  if (squared < kShortestSquared) return Distance(a, p);
  const double u = ((p.h - a.h) * dh + (p.v - a.v) * dv) / squared;
  const double t = std::clamp(u, -kChordReach, 1 + kChordReach);
  return Distance(p, {a.h + t * dh, a.v + t * dv});
}

SegmentBounds BoundsOfSegment(const kovltype& a, const kovltype& b, const ArcFrame* arc) {
  const PlanePoint from = InPlane(a);
  const PlanePoint to = InPlane(b);
  SegmentBounds bounds;
  if (!Within(from, kLargestCoordinate) || !Within(to, kLargestCoordinate)) {
    bounds.unbounded = true;
    return bounds;
  }
  const double length = Distance(from, to);
  bounds.feet.box.Include(from);
  bounds.feet.box.Include(to);
  bounds.feet.box.Grow(2 * kChordReach * length + 1e-6 + 1e-12 * length);
  if (arc != nullptr) {
    BoundArc(from, to, *arc, &bounds);
    bounds.chord_slack = std::max(bounds.chord_slack, 1e-6);  // a chord's foot is never an arc's
  } else if (length * length >= kShortestSquared / 2) {
    bounds.feet.tangents = {{(to.h - from.h) / length, (to.v - from.v) / length}, 1e-9};
    // Rounding grows with the length.
    if (length > kLongStraight) bounds.chord_slack = 0.001;
  }
  // Keeps degenerate segments out of the comparison of bare chords.
  if (length < 0.02) bounds.chord_slack = std::max(bounds.chord_slack, 0.02);
  return bounds;
}

}  // namespace velmora
