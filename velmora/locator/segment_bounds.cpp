#include "velmora/locator/segment_bounds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmora {
namespace {

constexpr double kLargestRadius = 1e12;
// The root in a direction's rank cancels close to an axis; ranks of p agree with its angle to 3e-8.
constexpr double kAngleNoise = 1e-7;
constexpr double kQuarter = std::numbers::pi / 2;

// In metres on a circle of this radius: of its points, and of where angles place them.
double RoundingOn(double radius) { return 1e-6 + 1e-12 * radius; }
double NoiseOn(double radius) { return RoundingOn(radius) + 2 * kAngleNoise * radius; }

bool Within(PlanePoint p, double limit) { return std::fabs(p.h) <= limit && std::fabs(p.v) <= limit; }

// At least the angle, of a quarter turn at most.
double AngleOfSine(double sine) { return sine * (sine < 0.1 ? 1.01 : 1.571); }

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

}  // namespace

// Where the tangents at both ends, and so all between, lie within one quadrant and not beside an axis, ranks
// and angles on the arc are far from their quarter-turn jumps.
std::optional<FlatArc> AsFlatArc(PlanePoint chord, double bulge) {
  constexpr double kLeastBulge = 1e-4;  // a sweep of a thousand times the noise of angles
  constexpr double kMostBulge = 0.2;    // 45 degrees
  const double flat = std::fabs(bulge);
  if (!(flat >= kLeastBulge && flat <= kMostBulge)) return std::nullopt;
  // These tangents are the chord turned by half the sweep, whose tangent is 2 bulge / (1 - bulge²), to either
  // side, and 1 + bulge² times as long.
  const double along = 1 - flat * flat;
  const double across = 2 * flat;
  const double length = std::sqrt(chord.h * chord.h + chord.v * chord.v);
  // A millimetre from the axes, and twenty times the noise of angles.
  const double least = 2 * across * 0.001 + 2e-6 * length;
  const double h = std::fabs(chord.h);
  const double v = std::fabs(chord.v);
  if (!(h * along - v * across > least && v * along - h * across > least)) return std::nullopt;
  const double radius = length * (1 + flat * flat) / (2 * across);
  return FlatArc{flat * length / 2, 2 * NoiseOn(radius), across + 2 * kAngleNoise};
}

ArcBounds BoundsOfArc(PlanePoint a, PlanePoint b, const ArcFrame& arc) {
  ArcBounds bounds{BoundsOfStraight(a, b), {}, {}};
  SegmentBounds& segment = bounds.segment;
  segment.chord_slack = std::max(segment.chord_slack, 1e-6);  // a chord's foot is never an arc's
  if (segment.unbounded) return bounds;
  const Arc& circle = arc.circle;
  // Not a number, as between coincident points, or infinite: no foot is nearer than any other.
  if (!std::isfinite(circle.radius) || !std::isfinite(circle.centre.h) || !std::isfinite(circle.centre.v))
    return bounds;
  segment.unbounded = circle.radius > kLargestRadius || !Within(circle.centre, kLargestRadius);
  if (segment.unbounded) return bounds;

  // The angle is the one between the ranks, a quarter turn off where an end lies beside an axis.
  const bool counter_clockwise = arc.bulge > 0;
  const double first = counter_clockwise ? arc.angle_a : arc.to_b.Angle();
  double last = counter_clockwise ? arc.to_b.Angle() : arc.angle_a;
  if (last < first) last += 4 * kQuarter;
  const double from = first - kAngleNoise;
  const double to = last + kAngleNoise;
  const double slack = RoundingOn(circle.radius);
  const double noise = NoiseOn(circle.radius);
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
  segment.box.Include(box);
  bounds.tangents =
      TangentAt(last - first < kPlainSweep ? ToMiddle(to_first, to_last) : ToAngle((first + last) / 2),
                (to - from) / 2);

  const double sagitta = std::fabs(arc.bulge) * Distance(a, b) / 2;
  const PlanePoint begin = counter_clockwise ? a : b;
  const PlanePoint end = counter_clockwise ? b : a;
  const bool as_drawn = std::fabs(arc.bulge) <= 1 && last - first < kPlainSweep &&
                        Distance(at_first, begin) <= noise && Distance(at_last, end) <= noise;
  segment.chord_slack =
      std::max(segment.chord_slack, as_drawn ? sagitta + 2 * noise : FarthestFromChord(a, b, box));

  for (int axis = 0; axis < 4; ++axis) {
    // Beside the axis that ends quadrant `axis`, points count as that quadrant's beginning.
    if (!arc.Holds(axis)) continue;
    const PlanePoint direction = ToAxis(axis + 1);
    FootBound quirk;
    quirk.box.Include(OnCircle(circle, direction));
    quirk.box.Grow(1.1 * kQuadrantTolerance + slack);
    quirk.tangents = TangentAt(direction, 0);
    bounds.axis_quirks.push_back(quirk);
  }
  return bounds;
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
  const double between = AngleOfSine(std::fabs(middle.h * turned.v - middle.v * turned.h));
  middle = {sum.h / length, sum.v / length};
  spread = between / 2 + std::max(spread, other.spread) + 1e-9;
}

Tangents TangentsOfChords(const double* h, const double* v, const double* inverse, size_t count,
                          double bend) {
  constexpr double kAny = 2;
  // From the first end to the last.
  const PlanePoint whole{h[count] - h[0], v[count] - v[0]};
  const double squared = whole.h * whole.h + whole.v * whole.v;
  if (!(squared >= kShortestSquared)) return {{1, 0}, kAny};
  const double length = std::sqrt(squared);
  const PlanePoint middle{whole.h / length, whole.v / length};
  double squared_sine = 0;
  for (size_t i = 0; i < count; ++i) {
    const double across = middle.h * (v[i + 1] - v[i]) - middle.v * (h[i + 1] - h[i]);
    squared_sine = std::max(squared_sine, across * across * inverse[i]);
  }
  return {middle, AngleOfSine(std::sqrt(squared_sine)) + bend + 2e-9};
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

}  // namespace velmora
