#include "cli/align/check.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/geometry.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

constexpr double kCoincident = 0.01;      // m: shorter straights are passed over in every search
constexpr double kLengthTolerance = 0.1;  // m between a segment's stations and its length

void GrowBox(PlanePoint p, Box* box) {
  box->min_x = std::min(box->min_x, p.v);
  box->max_x = std::max(box->max_x, p.v);
  box->min_y = std::min(box->min_y, p.h);
  box->max_y = std::max(box->max_y, p.h);
}

bool HasArc(const kovltype& a, const kovltype& b) {
  return !IsStraight(a.bulge) && Distance(InPlane(a), InPlane(b)) > 0;
}

// The outermost points of the arc itself, where it crosses the axes through its centre.
void GrowBoxByArc(const kovltype& a, const kovltype& b, Box* box) {
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  const PlanePoint extremes[] = {{arc.centre.h + arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v + arc.radius},
                                 {arc.centre.h - arc.radius, arc.centre.v},
                                 {arc.centre.h, arc.centre.v - arc.radius}};
  // A point of the circle is on the arc when it lies on the arc's side of the chord.
  const double side = a.bulge > 0 ? 1 : -1;
  for (const PlanePoint p : extremes) {
    const double cross = (b.y - a.y) * (p.v - a.x) - (b.x - a.x) * (p.h - a.y);
    if (cross * side < 0) GrowBox(p, box);
  }
}

std::string Metres(double value) {
  return std::isfinite(value) ? FormatFixed(value, 3) + " m" : "not finite";
}

void CheckStations(const std::vector<kovltype>& points, const std::vector<int>& lines, bool descending,
                   size_t i, Findings* findings) {
  const double step = descending ? points[i].sek - points[i + 1].sek : points[i + 1].sek - points[i].sek;
  const int line = lines[i + 1];
  if (step == 0)
    findings->Add(line,
                  "station " + FormatFixed(points[i + 1].sek, 3) + " repeats that of the previous point");
  else if (!(step > 0))
    findings->Add(line, "station " + FormatFixed(points[i + 1].sek, 3) +
                            " is out of order; the stations are " +
                            (descending ? "descending" : "ascending"));
}

}  // namespace

double SegmentLength(const kovltype& a, const kovltype& b) {
  const double chord = Distance(InPlane(a), InPlane(b));
  if (!HasArc(a, b)) return chord;
  // Radius times sweep, the sweep being four times the bulge's angle.
  return ArcFromBulge(InPlane(a), InPlane(b), a.bulge).radius * 4 * std::atan(std::fabs(a.bulge));
}

Findings CheckPlan(const std::vector<kovltype>& points, const std::vector<int>& lines) {
  Findings findings;
  if (points.size() == 1) findings.Add(lines[0], "is the plan's only point; an alignment needs two or more");
  const bool descending = points.size() >= 2 && points[0].sek > points[1].sek;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const kovltype& a = points[i];
    const kovltype& b = points[i + 1];
    const bool coincident = Distance(InPlane(a), InPlane(b)) < kCoincident;
    if (coincident) findings.Add(lines[i + 1], "coincides with the previous point");
    if (coincident && !IsStraight(a.bulge))
      findings.Add(lines[i], "bulge " + FormatFixed(a.bulge, 4) + " between coincident points gives no arc");
    else if (std::fabs(a.bulge) > 1)
      findings.Add(lines[i], "bulge " + FormatFixed(a.bulge, 4) +
                                 " is an arc of more than half a circle; "
                                 "computations take the shorter way round");
    CheckStations(points, lines, descending, i, &findings);
    const double step = std::fabs(b.sek - a.sek);
    const double length = SegmentLength(a, b);
    if (step > 0 && !coincident && std::fabs(a.bulge) <= 1 && std::fabs(step - length) > kLengthTolerance)
      findings.Add(lines[i], "the segment is " + Metres(step) + " long by its stations, " + Metres(length) +
                                 " by its points");
  }
  return findings;
}

Findings CheckProfile(const std::vector<kovltype>& points, const std::vector<int>& lines) {
  Findings findings;
  if (points.size() == 1) findings.Add(lines[0], "is the profile's only point; a profile needs two or more");
  for (size_t i = 0; i < points.size(); ++i) {
    if (points[i].y != points[i].sek)
      findings.Add(lines[i], "profile stations " + FormatFixed(points[i].y, 3) + " and " +
                                 FormatFixed(points[i].sek, 3) + " differ; levels are looked up by both");
    if (i > 0 && !(points[i].y > points[i - 1].y))
      findings.Add(lines[i],
                   "profile station " + FormatFixed(points[i].y, 3) + " is not above the previous one");
  }
  return findings;
}

PlanMeasures MeasurePlan(const std::vector<kovltype>& points) {
  PlanMeasures measures;
  if (points.empty()) return measures;
  measures.lowest_station = measures.highest_station = points[0].sek;
  measures.box = {points[0].x, points[0].x, points[0].y, points[0].y};
  for (size_t i = 0; i < points.size(); ++i) {
    measures.lowest_station = std::min(measures.lowest_station, points[i].sek);
    measures.highest_station = std::max(measures.highest_station, points[i].sek);
    GrowBox(InPlane(points[i]), &measures.box);
    if (i + 1 == points.size()) break;
    measures.length += SegmentLength(points[i], points[i + 1]);
    if (!HasArc(points[i], points[i + 1])) continue;
    ++measures.arcs;
    const double radius = ArcFromBulge(InPlane(points[i]), InPlane(points[i + 1]), points[i].bulge).radius;
    measures.smallest_radius = std::min(measures.smallest_radius.value_or(radius), radius);
    GrowBoxByArc(points[i], points[i + 1], &measures.box);
  }
  return measures;
}

}  // namespace velmora::cli
