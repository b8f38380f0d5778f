#include "velmora/drawing/plan_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "velmora/drawing/scale.h"

namespace velmora::drawing {
namespace {

constexpr double kLeastGain = 1.45;  // times the scale

struct Turned {
  Interval across;
  Interval up;
};

Turned ExtentsOf(std::span<const PlanePoint> points, double c, double s) {
  Turned turned;
  for (const PlanePoint& p : points) {
    turned.across.Add(c * p.h - s * p.v);
    turned.up.Add(s * p.h + c * p.v);
  }
  return turned;
}

double LeastScale(const Turned& turned, const SheetRect& panel) {
  return 1000 * std::max(turned.across.Size() / panel.width, turned.up.Size() / panel.height);
}

}  // namespace

std::vector<PlanePoint> ConvexHull(std::vector<PlanePoint> points) {
  const auto before = [](PlanePoint a, PlanePoint b) { return a.h < b.h || (a.h == b.h && a.v < b.v); };
  const auto same = [](PlanePoint a, PlanePoint b) { return a.h == b.h && a.v == b.v; };
  std::sort(points.begin(), points.end(), before);
  points.erase(std::unique(points.begin(), points.end(), same), points.end());
  if (points.size() < 3) return points;

  // The lower side from left to right, then the upper side back. A corner at which the hull turns right is
  // inside.
  std::vector<PlanePoint> hull;
  for (const bool upper : {false, true}) {
    const size_t start = hull.size();
    for (const PlanePoint& p : points) {
      while (hull.size() >= start + 2) {
        const PlanePoint& a = hull[hull.size() - 2];
        const PlanePoint& b = hull.back();
        if ((b.h - a.h) * (p.v - a.v) - (b.v - a.v) * (p.h - a.h) > 0) break;
        hull.pop_back();
      }
      hull.push_back(p);
    }
    hull.pop_back();
    if (!upper) std::reverse(points.begin(), points.end());
  }
  return hull;
}

PlanFrame::PlanFrame(std::span<const PlanePoint> points, const SheetRect& panel,
                     double (*usual)(double least))
    : sheet_middle_{panel.x + panel.width / 2, panel.y + panel.height / 2} {
  Turned best = ExtentsOf(points, 1, 0);
  scale_ = usual(LeastScale(best, panel));
  const double north_up = scale_;
  for (int degrees = 5; degrees <= 90; degrees += 5) {
    for (const int sign : {1, -1}) {
      const double angle = sign * degrees * std::numbers::pi / 180;
      const double c = degrees == 90 ? 0.0 : std::cos(angle);
      const double s = std::sin(angle);
      const Turned turned = ExtentsOf(points, c, s);
      const double scale = usual(LeastScale(turned, panel));
      if (scale * kLeastGain > north_up || scale >= scale_) continue;
      scale_ = scale;
      cos_ = c;
      sin_ = s;
      best = turned;
    }
  }
  const double across = best.across.Middle();
  const double up = best.up.Middle();
  middle_ = {cos_ * across + sin_ * up, -sin_ * across + cos_ * up};
}

PlanFrame::PlanFrame(double scale, double angle, PlanePoint p, SheetPoint at)
    : scale_(scale), cos_(std::cos(angle)), sin_(std::sin(angle)), middle_(p), sheet_middle_(at) {}

SheetPoint PlanFrame::Direction(PlanePoint unit) const {
  return {cos_ * unit.h - sin_ * unit.v, -(sin_ * unit.h + cos_ * unit.v)};
}

SheetPoint PlanFrame::ToSheet(PlanePoint p) const {
  const SheetPoint d = Direction({p.h - middle_.h, p.v - middle_.v});
  return {sheet_middle_.x + Millimetres(d.x), sheet_middle_.y + Millimetres(d.y)};
}

PlanePoint PlanFrame::FromSheet(SheetPoint p) const {
  const double across = Metres(p.x - sheet_middle_.x);
  const double up = -Metres(p.y - sheet_middle_.y);
  return {middle_.h + cos_ * across + sin_ * up, middle_.v - sin_ * across + cos_ * up};
}

}  // namespace velmora::drawing
