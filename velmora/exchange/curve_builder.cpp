#include "velmora/exchange/curve_builder.h"

#include <cmath>

#include "velmora/exchange/arcs.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

// The angle at `corner` between the directions to `a` and to `b`, without a sign.
double AngleAt(PlanePoint corner, PlanePoint a, PlanePoint b) {
  const PlanePoint u{a.h - corner.h, a.v - corner.v};
  const PlanePoint w{b.h - corner.h, b.v - corner.v};
  return std::fabs(std::atan2(u.h * w.v - u.v * w.h, u.h * w.h + u.v * w.v));
}

}  // namespace

bool CurveBuilder::Append(const CurvePoint& point, double bulge_before) {
  if (!points_.empty()) points_.back().bulge = bulge_before;
  points_.push_back({point.at.v, point.at.h, 0, point.station.value_or(0)});
  has_stations_ = has_stations_ && point.station;
  return true;
}

bool CurveBuilder::Start(const CurvePoint& point) {
  if (points_.empty()) return Append(point, 0);
  const double gap = Distance(InPlane(points_.back()), point.at);
  if (gap <= kJoin) return true;
  problem_ = "its parts do not join: a gap of " + FormatFixed(gap, 3) + " m";
  return false;
}

bool CurveBuilder::LineTo(const CurvePoint& point) { return Append(point, 0); }

bool CurveBuilder::ArcTo(const CurvePoint& middle, const CurvePoint& point) {
  constexpr double kSameStation = 1e-5;  // m
  const PlanePoint from = InPlane(points_.back());
  const std::optional<double> bulge = BulgeThrough(from, middle.at, point.at);
  if (!bulge) {
    problem_ = "an arc returns to where it starts; divide it in two";
    return false;
  }
  if (middle.station && point.station) {
    // An angle at the circle is half of the sweep that it looks at.
    const double first = AngleAt(point.at, from, middle.at);
    const double second = AngleAt(from, middle.at, point.at);
    const double fraction =
        first + second > 0 ? first / (first + second) : Distance(from, middle.at) / Distance(from, point.at);
    const double between = points_.back().sek + fraction * (*point.station - points_.back().sek);
    if (std::fabs(*middle.station - between) > kSameStation)
      return Append(middle, std::copysign(std::tan(first / 2), *bulge)) &&
             Append(point, std::copysign(std::tan(second / 2), *bulge));
  }
  return Append(point, *bulge);
}

std::vector<kovltype> CurveBuilder::Take() {
  if (!HasStations())
    for (kovltype& point : points_) point.sek = 0;
  return std::move(points_);
}

}  // namespace velmora::exchange
