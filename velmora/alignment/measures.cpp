#include "velmora/alignment/measures.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// The outermost points of the arc itself, where it crosses the axes through its centre.
void IncludeArc(const kovltype& a, const kovltype& b, const Arc& arc, BoundingBox* bounds) {
  const PlanePoint extremes[] = {{arc.centre.h + arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v + arc.radius},
                                 {arc.centre.h - arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v - arc.radius}};
  // A point of the circle is on the arc when it lies on the arc's side of the chord.
  const double side = a.bulge > 0 ? 1 : -1;
  for (const PlanePoint p : extremes) {
    const double cross = (b.y - a.y) * (p.v - a.x) - (b.x - a.x) * (p.h - a.y);
    if (cross * side < 0) bounds->Include(p);
  }
}

// How far `p` lies from `from` along a direction, in units of its length.
double Ahead(PlanePoint from, PlanePoint direction, PlanePoint p) {
  return (p.h - from.h) * direction.h + (p.v - from.v) * direction.v;
}

OffEnd BehindEnd(const std::vector<kovltype>& plan, bool start, PlanePoint p) {
  if (start)
    return Ahead(InPlane(plan[0]), DirectionOfTravel(plan[0], plan[1], true), p) < 0 ? OffEnd::kBeforeStart
                                                                                     : OffEnd::kNeither;
  const kovltype& last = plan.back();
  return Ahead(InPlane(last), DirectionOfTravel(plan[plan.size() - 2], last, false), p) > 0
             ? OffEnd::kBeyondEnd
             : OffEnd::kNeither;
}

}  // namespace

double SegmentLength(const kovltype& a, const kovltype& b) {
  if (!HasArc(a, b)) return Distance(InPlane(a), InPlane(b));
  // Radius times sweep, the sweep being four times the bulge's angle.
  return ArcFromBulge(InPlane(a), InPlane(b), a.bulge).radius * 4 * std::atan(std::fabs(a.bulge));
}

PlanMeasures MeasurePlan(const std::vector<kovltype>& points) {
  PlanMeasures measures;
  if (points.empty()) return measures;
  measures.lowest_station = measures.highest_station = points[0].sek;
  measures.bounds = {InPlane(points[0]), InPlane(points[0])};
  for (size_t i = 0; i < points.size(); ++i) {
    const kovltype& a = points[i];
    measures.lowest_station = std::min(measures.lowest_station, a.sek);
    measures.highest_station = std::max(measures.highest_station, a.sek);
    measures.bounds.Include(InPlane(a));
    if (i + 1 == points.size()) break;
    const kovltype& b = points[i + 1];
    measures.length += SegmentLength(a, b);
    if (!HasArc(a, b)) continue;
    const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
    ++measures.arcs;
    measures.smallest_radius = std::min(measures.smallest_radius.value_or(arc.radius), arc.radius);
    IncludeArc(a, b, arc, &measures.bounds);
  }
  return measures;
}

ProfileMeasures MeasureProfile(const std::vector<kovltype>& points) {
  if (points.empty()) return {};
  const auto by_level = [](const kovltype& a, const kovltype& b) { return a.x < b.x; };
  const auto by_station = [](const kovltype& a, const kovltype& b) { return a.y < b.y; };
  const auto [lowest, highest] = std::minmax_element(points.begin(), points.end(), by_level);
  // Where the stations rise no more, the look-up has found the last segment that it can find.
  const auto second = points.begin() + (points.size() > 1 ? 1 : 0);
  return {points.front().y, points.back().y, std::max_element(second, points.end(), by_station)->y, lowest->x,
          highest->x};
}

StationErrors FindStationErrors(const std::vector<kovltype>& points) {
  constexpr double kNoticed = 0.001;  // m
  StationErrors errors;
  double length = 0;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const kovltype& a = points[i];
    const kovltype& b = points[i + 1];
    const double own = SegmentLength(a, b);
    const double by_later = SegmentLength({a.x, a.y, b.bulge, 0}, b);
    if (!errors.later_bulge && std::fabs(by_later - own) > kNoticed) errors.later_bulge = i;
    if (!errors.beside_axis && std::fabs(b.sek - a.sek - by_later) > kNoticed) errors.beside_axis = i;
    length += own;
    errors.greatest = std::max(errors.greatest, std::fabs(b.sek - points[0].sek - length));
  }
  return errors;
}

std::optional<size_t> RepeatedStation(const std::vector<kovltype>& plan, double station) {
  const auto has_it = [station](const kovltype& p) {
    return std::fabs(p.sek - station) <= kStationTolerance;
  };
  for (size_t i = 0; i + 1 < plan.size(); ++i)
    if (has_it(plan[i]) && has_it(plan[i + 1])) return i;
  return std::nullopt;
}

OffEnd WhyNotFound(const std::vector<kovltype>& plan, PlanePoint p) {
  if (plan.size() < 2) return OffEnd::kNeither;
  size_t nearest = 0;
  for (size_t i = 1; i < plan.size(); ++i)
    if (Distance(p, InPlane(plan[i])) < Distance(p, InPlane(plan[nearest]))) nearest = i;
  return nearest == 0 || nearest == plan.size() - 1 ? BehindEnd(plan, nearest == 0, p) : OffEnd::kNeither;
}

OffEnd WhyNotFoundAtEnd(const std::vector<kovltype>& plan, PlanePoint p) {
  if (plan.size() < 2) return OffEnd::kNeither;
  return BehindEnd(plan, Distance(p, InPlane(plan.front())) <= Distance(p, InPlane(plan.back())), p);
}

OffEnd WhyNotFound(const std::vector<kovltype>& plan, double station) {
  const double direction = IsDescending(plan) ? -1 : 1;
  if ((station - plan.front().sek) * direction < 0) return OffEnd::kBeforeStart;
  if ((station - plan.back().sek) * direction > 0) return OffEnd::kBeyondEnd;
  return OffEnd::kNeither;
}

AxisCheck::AxisCheck(const BoundingBox& bounds) : bounds_(bounds) {
  bounds_.Grow(std::max({1000.0, bounds.high.v - bounds.low.v, bounds.high.h - bounds.low.h}));
}

void AxisCheck::Add(double northing, double easting) {
  const bool near = IsNear(northing, easting);
  const bool near_swapped = IsNear(easting, northing);
  near_ += near && !near_swapped ? 1 : 0;
  near_swapped_ += near_swapped && !near ? 1 : 0;
}

void AxisCheck::Add(const AxisCheck& other) {
  near_ += other.near_;
  near_swapped_ += other.near_swapped_;
}

bool AxisCheck::IsNear(double northing, double easting) const {
  return northing >= bounds_.low.v && northing <= bounds_.high.v && easting >= bounds_.low.h &&
         easting <= bounds_.high.h;
}

std::optional<std::vector<double>> StationsEach(double every, const std::vector<kovltype>& plan) {
  constexpr double kMost = 1e6;
  std::vector<double> stations;
  if (every <= 0) return stations;
  const PlanMeasures measures = MeasurePlan(plan);
  const double first = std::ceil(measures.lowest_station / every);
  const double last = std::floor(measures.highest_station / every);
  if (!(last - first < kMost)) return std::nullopt;
  for (double at = first; at <= last; ++at) stations.push_back(at * every);
  return stations;
}

}  // namespace velmora
