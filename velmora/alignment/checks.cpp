#include "velmora/alignment/checks.h"

#include <cmath>
#include <string>

#include "velmora/alignment/drawn_place.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr double kCoincident = 0.01;      // m: straights shorter than this are skipped by every search
constexpr double kLengthTolerance = 0.1;  // m between a segment's stations and its length

// Adds findings on points, which a rewrite of the file keeps as they are.
class PointFindings {
 public:
  explicit PointFindings(const std::vector<int>& lines) : lines_(lines) {}
  void Add(size_t point, std::string text, Repair repair = Repair::kLine) {
    found_.Add({lines_[point], std::move(text), /*misread=*/false, /*lost=*/false, repair});
  }
  BoundedFindings Take() { return std::move(found_); }

 private:
  const std::vector<int>& lines_;
  BoundedFindings found_;
};

std::string LargeArc(const std::string& bulge, const kovltype& a, const kovltype& b) {
  const bool half = std::fabs(a.bulge) == 1;
  if (half && !RunsTheOtherWay(a, b))
    return bulge +
           " is half a circle: align place, extend, locate, stations and plot all follow the bulge here";
  return bulge +
         (half ? " is half a circle: align place and extend run along the other half"
               : " is an arc of more than half a circle: align place and extend run the shorter way") +
         "; align locate, stations and plot follow the bulge";
}

void CheckStations(const std::vector<kovltype>& points, bool descending, size_t i, Repair repair,
                   PointFindings* findings) {
  const double step = descending ? points[i].sek - points[i + 1].sek : points[i + 1].sek - points[i].sek;
  const std::string station = "station " + StationText(points[i + 1].sek, false);
  if (step == 0)
    findings->Add(i + 1, station + " repeats that of the previous point", repair);
  else if (!(step > 0))
    findings->Add(i + 1,
                  station + " is out of order; the stations are " + (descending ? "descending" : "ascending"),
                  repair);
}

}  // namespace

BoundedFindings CheckPlan(const std::vector<kovltype>& points, const std::vector<int>& lines) {
  PointFindings findings(lines);
  if (points.size() == 1)
    findings.Add(0, "is the plan's only point; an alignment needs two or more", Repair::kFile);
  const bool descending = IsDescending(points);
  if (descending)
    findings.Add(
        0,
        "the stations descend: align locate gives V and H as seen towards higher stations, align place "
        "takes them as seen along the points, and the suite's own programs give the wrong side at "
        "corners");
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const kovltype& a = points[i];
    const kovltype& b = points[i + 1];
    const bool coincident = Distance(InPlane(a), InPlane(b)) < kCoincident;
    const std::string bulge =
        "bulge " + (std::fabs(a.bulge) < 1e6 ? FormatFixed(a.bulge, 4) : FormatShortest(a.bulge));
    if (coincident) findings.Add(i + 1, "coincides with the previous point", Repair::kOnePoint);
    if (coincident && !IsStraight(a.bulge))
      findings.Add(i, bulge + " between coincident points gives no arc");
    else if (std::fabs(a.bulge) >= 1)
      findings.Add(i, LargeArc(bulge, a, b));
    if (!coincident && EndsBesideAxis(a, b))
      findings.Add(i,
                   "the arc ends beside an axis through its centre: the suite's own programs give stations a "
                   "quarter of the circle off (" +
                       LengthText(ArcFromBulge(InPlane(a), InPlane(b), a.bulge).radius * kHalfPi) +
                       ") on it or near it; align locate and plot give the right ones");
    CheckStations(points, descending, i, coincident ? Repair::kOnePoint : Repair::kStations, &findings);
    const double step = std::fabs(b.sek - a.sek);
    const double length = SegmentLength(a, b);
    if (step > 0 && !coincident && std::fabs(a.bulge) <= 1 && std::fabs(step - length) > kLengthTolerance)
      findings.Add(i,
                   "the segment is " + LengthText(step) + " long by its stations, " + LengthText(length) +
                       " by its points",
                   Repair::kStations);
  }
  return findings.Take();
}

BoundedFindings CheckProfile(const std::vector<kovltype>& points, const std::vector<int>& lines) {
  PointFindings findings(lines);
  if (points.size() == 1)
    findings.Add(0, "is the profile's only point; a profile needs two or more", Repair::kFile);
  for (size_t i = 0; i < points.size(); ++i) {
    const std::string station = StationText(points[i].y, false);
    if (points[i].y != points[i].sek)
      findings.Add(i, "profile stations " + station + " and " + StationText(points[i].sek, false) +
                          " differ; levels are looked up by both");
    if (i > 0 && !(points[i].y > points[i - 1].y))
      findings.Add(i, "profile station " + station + " is not above the previous one");
  }
  return findings.Take();
}

}  // namespace velmora
