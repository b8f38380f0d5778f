#include "velmora/exchange/spiral.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/exchange/arcs.h"

namespace velmora::exchange {
namespace {

// In a frame of its own: from the origin along +h, by Gauss's rule over short pieces.
class Shape {
 public:
  explicit Shape(const Spiral& spiral)
      : k_(spiral.curvature_start),
        growth_((spiral.curvature_end - spiral.curvature_start) / spiral.length) {}

  // The points at `count` + 1 equal steps of the length.
  std::vector<PlanePoint> Points(double length, int count) const {
    constexpr std::array<double, 3> kAt = {0.1127016653792583, 0.5, 0.8872983346207417};
    constexpr std::array<double, 3> kWeight = {5.0 / 18, 8.0 / 18, 5.0 / 18};
    constexpr int kPieces = 4;
    std::vector<PlanePoint> points = {{0, 0}};
    const double piece = length / count / kPieces;
    PlanePoint p{0, 0};
    for (int i = 0; i < count * kPieces; ++i) {
      for (size_t j = 0; j < kAt.size(); ++j) {
        const double angle = Angle((i + kAt[j]) * piece);
        p.h += kWeight[j] * piece * std::cos(angle);
        p.v += kWeight[j] * piece * std::sin(angle);
      }
      if ((i + 1) % kPieces == 0) points.push_back(p);
    }
    return points;
  }

 private:
  double Angle(double length) const { return length * (k_ + growth_ * length / 2); }

  double k_;
  double growth_;
};

double DistanceToArc(PlanePoint a, double bulge, PlanePoint b, PlanePoint p) {
  if (IsStraight(bulge)) return std::fabs(FootOnStraight(a, b, p).offset);
  const Arc arc = ArcFromBulge(a, b, bulge);
  return std::fabs(Distance(arc.centre, p) - arc.radius);
}

}  // namespace

std::optional<SpiralArcs> ArcsOfSpiral(const Spiral& spiral, double error) {
  constexpr int kSteps = 8;  // of each arc, for its distance from the spiral
  const double turn =
      (std::fabs(spiral.curvature_start) + std::fabs(spiral.curvature_end)) / 2 * spiral.length;
  const double chord = Distance(spiral.start, spiral.end);
  if (!(turn <= 2 * kPi) || !(spiral.length > 0) || !(chord > 0)) return std::nullopt;
  const Shape shape(spiral);
  SpiralArcs arcs;
  for (int count = 1; count <= kMostSpiralArcs; count += 1 + count / 8) {
    std::vector<PlanePoint> points = shape.Points(spiral.length, count * kSteps);
    // Turned and scaled, so that it joins the given ends.
    const PlanePoint last = points.back();
    const double squared = last.h * last.h + last.v * last.v;
    if (!(squared > 0)) return std::nullopt;
    const PlanePoint to{spiral.end.h - spiral.start.h, spiral.end.v - spiral.start.v};
    const double c = (to.h * last.h + to.v * last.v) / squared;
    const double s = (to.v * last.h - to.h * last.v) / squared;
    for (PlanePoint& p : points) p = {spiral.start.h + c * p.h - s * p.v, spiral.start.v + s * p.h + c * p.v};
    points.back() = spiral.end;
    arcs = {};
    arcs.misfit = std::fabs(chord - std::sqrt(squared));
    arcs.direction_start = std::atan2(s, c);
    arcs.direction_end =
        arcs.direction_start + (spiral.curvature_start + spiral.curvature_end) / 2 * spiral.length;
    for (int i = 0; i < count; ++i) {
      const PlanePoint* const p = &points[static_cast<size_t>(i * kSteps)];
      const double bulge = BulgeThrough(p[0], p[kSteps / 2], p[kSteps]).value_or(0);
      arcs.points.push_back({p[0].v, p[0].h, bulge, 0});
      for (int step = 1; step < kSteps; ++step)
        arcs.largest_distance =
            std::max(arcs.largest_distance, DistanceToArc(p[0], bulge, p[kSteps], p[step]));
    }
    arcs.points.push_back({spiral.end.v, spiral.end.h, 0, 0});
    if (arcs.misfit > error || arcs.largest_distance + arcs.misfit <= error) return arcs;
  }
  return std::nullopt;
}

}  // namespace velmora::exchange
