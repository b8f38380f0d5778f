#include "velmora/alignment/geometry.h"

#include <cmath>

namespace velmora {
namespace {

double FullTurn(double angle) { return angle < 0 ? angle + kTwoPi : angle; }

// tan(φ/2) of an angle φ in [0, π/2) with tan φ = k. On the axis itself it is 0.
double HalfTangent(double k) { return k == 0 ? 0.0 : (std::sqrt(k * k + 1) - 1) / k; }

PlanePoint PointOnStraight(const kovltype& a, const kovltype& b, double station, double offset) {
  const double f = (station - a.sek) / (b.sek - a.sek);
  const double x0 = a.x + f * (b.x - a.x);
  const double y0 = a.y + f * (b.y - a.y);
  const double across = std::atan2(a.x - b.x, b.y - a.y) - kHalfPi;
  return {y0 - std::cos(across) * offset, x0 + std::sin(across) * offset};
}

// Callers rely on the arc running the shorter way between its end angles, whatever its bulge's sign.
PlanePoint PointOnArc(const kovltype& a, const kovltype& b, double station, double offset) {
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  double start = FullTurn(std::atan2(a.x - arc.centre.v, a.y - arc.centre.h));
  double end = FullTurn(std::atan2(b.x - arc.centre.v, b.y - arc.centre.h));
  bool clockwise = start > end;
  if (!(std::fabs(end - start) < kPi)) {
    (clockwise ? start : end) -= kTwoPi;
    clockwise = !clockwise;
  }
  const double radius = clockwise ? arc.radius - offset : arc.radius + offset;
  const double angle = start + (station - a.sek) * (end - start) / (b.sek - a.sek);
  return {arc.centre.h + std::cos(angle) * radius, arc.centre.v + std::sin(angle) * radius};
}

}  // namespace

Arc ArcFromBulge(PlanePoint a, PlanePoint b, double bulge) {
  const double c = Distance(a, b);
  const double s = bulge < 0 ? -1.0 : 1.0;
  const double t = std::fabs(bulge * c * 0.5);
  const double radius = (c * c * 0.25 + t * t) / (t + t);
  return {radius,
          {(a.h + b.h) * 0.5 - s * (radius - t) * (b.v - a.v) / c,
           (a.v + b.v) * 0.5 + s * (radius - t) * (b.h - a.h) / c}};
}

std::optional<double> BulgeFromRadius(PlanePoint a, PlanePoint b, double radius) {
  const double c = Distance(a, b);
  const double q = radius * radius - c * c * 0.25;
  if (!(q >= 0 && c > 0)) return std::nullopt;
  const double root = std::sqrt(q);
  return 2 * (radius > 0 ? radius - root : radius + root) * -1 / c;
}

// Callers rely on the quarter-turn jump: within 1e-5 m of the axis at a quadrant's far end a direction
// counts as the quadrant's beginning.
Direction DirectionFromCentre(double dh, double dv) {
  const auto within = [](int quadrant, double across, double ahead) -> Direction {
    if (!(ahead > kQuadrantTolerance)) return {static_cast<double>(quadrant), quadrant};
    return {HalfTangent(across / ahead) + quadrant, quadrant};
  };
  if (dh >= 0 && dv >= 0) return within(0, dv, dh);
  if (dh < 0 && dv >= 0) return within(1, -dh, dv);
  if (dh <= 0 && dv < 0) return within(2, -dv, -dh);
  return within(3, dh, -dv);
}

double Direction::Angle() const {
  static_assert(2 * kHalfPi == kPi);
  const double angle = 2 * std::atan(rank - quadrant);
  return quadrant < 3 ? angle + quadrant * kHalfPi : angle + kPi + kHalfPi;
}

ArcFrame FrameOfArc(PlanePoint a, double bulge, PlanePoint b) {
  const Arc circle = ArcFromBulge(a, b, bulge);
  const PlanePoint c = circle.centre;
  const Direction to_a = DirectionFromCentre(a.h - c.h, a.v - c.v);
  return {circle, to_a, DirectionFromCentre(b.h - c.h, b.v - c.v), to_a.Angle(), bulge};
}

Foot FootOnArc(const ArcFrame& arc, PlanePoint p, double within) {
  const PlanePoint centre = arc.circle.centre;
  const double radius = arc.circle.radius;
  const double away = Distance(p, centre) - radius;
  if (std::fabs(away) > within) return {FootPlace::kOutside, 0, 0};
  const Direction to_p = DirectionFromCentre(p.h - centre.h, p.v - centre.v);
  if (!arc.Holds(to_p.rank)) return {FootPlace::kOutside, 0, 0};

  const bool counter_clockwise = arc.bulge > 0;
  double angle_a = arc.angle_a;
  double angle_p = to_p.Angle();
  if (counter_clockwise && angle_a > angle_p) angle_a -= kTwoPi;
  if (arc.bulge < 0 && angle_p > angle_a) angle_p -= kTwoPi;
  return {FootPlace::kInside, std::fabs((angle_p - angle_a) * radius), away * (counter_clockwise ? 1 : -1)};
}

PlanePoint PointOnSegment(const kovltype& a, const kovltype& b, double station, double offset) {
  return IsStraight(a.bulge) ? PointOnStraight(a, b, station, offset) : PointOnArc(a, b, station, offset);
}

// An arc's direction differs from its chord's by half its sweep, to the right at the start of one that turns
// counter-clockwise.
PlanePoint DirectionOfTravel(const kovltype& a, const kovltype& b, bool at_start) {
  const double half_sweep = 2 * std::atan(a.bulge) * (at_start ? -1 : 1);
  const double c = std::cos(half_sweep);
  const double s = std::sin(half_sweep);
  const PlanePoint chord{b.y - a.y, b.x - a.x};
  return {chord.h * c - chord.v * s, chord.h * s + chord.v * c};
}

double ArcLength(PlanePoint from, PlanePoint to, double bulge) {
  const double length = FootOnArc(from, bulge, to, to).along;
  return std::isfinite(length) ? length : 0.0;
}

double LevelOnSegment(const kovltype& a, const kovltype& b, double station) {
  if (IsStraight(a.bulge)) return a.x + (station - a.sek) * (b.x - a.x) / (b.sek - a.sek);
  const PlanePoint from = InPlane(a);
  const PlanePoint to = InPlane(b);
  const Arc arc = Distance(from, to) > 0 ? ArcFromBulge(from, to, a.bulge) : Arc{0, from};
  const double start = std::atan2(from.v - arc.centre.v, from.h - arc.centre.h);
  const double end = std::atan2(to.v - arc.centre.v, to.h - arc.centre.h);
  return arc.centre.v + arc.radius * std::sin(start + (end - start) * (station - a.sek) / (b.sek - a.sek));
}

}  // namespace velmora
