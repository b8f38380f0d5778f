#include "velmora/alignment/measures.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

bool HasArc(const kovltype& a, const kovltype& b) {
  return !IsStraight(a.bulge) && Distance(InPlane(a), InPlane(b)) > 0;
}

void Include(PlanePoint p, PlanBounds* bounds) {
  bounds->min_northing = std::min(bounds->min_northing, p.v);
  bounds->max_northing = std::max(bounds->max_northing, p.v);
  bounds->min_easting = std::min(bounds->min_easting, p.h);
  bounds->max_easting = std::max(bounds->max_easting, p.h);
}

// The outermost points of the arc itself, where it crosses the axes through its centre.
void IncludeArc(const kovltype& a, const kovltype& b, const Arc& arc, PlanBounds* bounds) {
  const PlanePoint extremes[] = {{arc.centre.h + arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v + arc.radius},
                                 {arc.centre.h - arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v - arc.radius}};
  // A point of the circle is on the arc when it lies on the arc's side of the chord.
  const double side = a.bulge > 0 ? 1 : -1;
  for (const PlanePoint p : extremes) {
    const double cross = (b.y - a.y) * (p.v - a.x) - (b.x - a.x) * (p.h - a.y);
    if (cross * side < 0) Include(p, bounds);
  }
}

// The direction of travel where a segment begins (`at_start`) or ends: an arc's differs from its chord by
// half its sweep, to the right at the start of one that turns counter-clockwise.
PlanePoint Tangent(const kovltype& a, const kovltype& b, bool at_start) {
  const double half_sweep = 2 * std::atan(a.bulge) * (at_start ? -1 : 1);
  const double c = std::cos(half_sweep);
  const double s = std::sin(half_sweep);
  const PlanePoint chord{b.y - a.y, b.x - a.x};
  return {chord.h * c - chord.v * s, chord.h * s + chord.v * c};
}

// How far `p` lies from `from` along a direction, in units of its length.
double Ahead(PlanePoint from, PlanePoint direction, PlanePoint p) {
  return (p.h - from.h) * direction.h + (p.v - from.v) * direction.v;
}

OffEnd BehindEnd(const std::vector<kovltype>& plan, bool start, PlanePoint p) {
  if (start)
    return Ahead(InPlane(plan[0]), Tangent(plan[0], plan[1], true), p) < 0 ? OffEnd::kBeforeStart
                                                                           : OffEnd::kNeither;
  const kovltype& last = plan.back();
  return Ahead(InPlane(last), Tangent(plan[plan.size() - 2], last, false), p) > 0 ? OffEnd::kBeyondEnd
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
  measures.bounds = {points[0].x, points[0].x, points[0].y, points[0].y};
  for (size_t i = 0; i < points.size(); ++i) {
    const kovltype& a = points[i];
    measures.lowest_station = std::min(measures.lowest_station, a.sek);
    measures.highest_station = std::max(measures.highest_station, a.sek);
    Include(InPlane(a), &measures.bounds);
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

double GreatestStationError(const std::vector<kovltype>& points) {
  double length = 0;
  double greatest = 0;
  for (size_t i = 1; i < points.size(); ++i) {
    length += SegmentLength(points[i - 1], points[i]);
    greatest = std::max(greatest, std::fabs(points[i].sek - points[0].sek - length));
  }
  return greatest;
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

AxisCheck::AxisCheck(const PlanBounds& bounds) {
  const double margin =
      std::max({1000.0, bounds.max_northing - bounds.min_northing, bounds.max_easting - bounds.min_easting});
  bounds_ = {bounds.min_northing - margin, bounds.max_northing + margin, bounds.min_easting - margin,
             bounds.max_easting + margin};
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
  return northing >= bounds_.min_northing && northing <= bounds_.max_northing &&
         easting >= bounds_.min_easting && easting <= bounds_.max_easting;
}

}  // namespace velmora
