#include <algorithm>
#include <cmath>

#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/landxml_elements.h"
#include "velmora/exchange/spiral.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

constexpr double kJoin = 0.001;          // m between the end of an element and the start of the next
constexpr double kRounded = 0.0015;      // m between two points whose coordinates are whole millimetres
constexpr double kNoticed = 0.001;       // m between an attribute and the coordinates
constexpr double kSameDirection = 1e-4;  // radians, which attributes with few decimals depart

double Positive(double angle) { return angle < 0 ? angle + 2 * std::acos(-1.0) : angle; }

// The difference of two angles, from 0 to half a circle.
double Apart(double a, double b) { return std::fabs(std::remainder(a - b, 2 * std::acos(-1.0))); }

// `unit` as in LandUnits.
double Radians(double angle, double unit) {
  if (unit != 0) return angle * unit;
  // Seconds are rounded, so that 29.9999... minutes are 30.
  const double seconds = std::round(std::fabs(angle) * 1e8) / 1e4;
  const double degrees = std::floor(seconds / 1e4);
  const double minutes = std::floor((seconds - degrees * 1e4) / 100);
  const double whole = degrees + minutes / 60 + (seconds - degrees * 1e4 - minutes * 100) / 3600;
  return std::copysign(whole * std::acos(-1.0) / 180, angle);
}

const char* NameOf(LandKind kind) {
  switch (kind) {
    case LandKind::kLine:
      return "Line";
    case LandKind::kCurve:
      return "Curve";
    case LandKind::kSpiral:
      return "Spiral";
    case LandKind::kIrregularLine:
      return "IrregularLine";
    case LandKind::kChain:
      break;
  }
  return "Chain";
}

class PlanMaker {
 public:
  PlanMaker(const LandUnits& units, double metres, const ImportOptions& options, LandAlignment* alignment)
      : units_(units),
        metres_(metres),
        options_(options),
        alignment_(*alignment),
        road_(alignment->road),
        plan_(alignment->road.road.plan) {}

  void Make() {
    const bool own = IsGiven(alignment_.station_end);
    plan_.reserve(alignment_.elements.size() + 1);
    for (const LandElement& element : alignment_.elements) {
      const size_t before = plan_.size();
      if (!Add(element)) return;
      if (plan_.size() <= before) continue;
      // Stations of elements may be those after an equation.
      if (!IsGiven(element.station) || !alignment_.equations.empty()) continue;
      const size_t at = before == 0 ? 0 : before - 1;
      kovltype& first = plan_[at];
      const double station = element.station * metres_;
      const double difference = std::fabs(station - first.sek);
      if (at > 0 && !own && difference > kNoticed) {
        const bool grows = station > plan_[at - 1].sek;
        Note(element.line,
             std::string(NameOf(element.kind)) + ": staStart differs by " + FormatFixed(difference, 3) +
                 " m from the lengths before it and is " +
                 (grows ? "kept" : "not used, for it is not above the station before it"),
             &road_);
        if (!grows) continue;
      }
      const double shift = station - first.sek;
      for (size_t i = at; i < plan_.size(); ++i) plan_[i].sek += shift;
      first.sek = station;
      any_station_ = true;
    }
    if (own && !plan_.empty()) {
      const double difference = std::fabs(alignment_.station_end * metres_ - plan_.back().sek);
      if (difference > kNoticed)
        Note(alignment_.station_end_line,
             "staEnd differs by " + FormatFixed(difference, 3) +
                 " m from where staStart and length put the end of the last element, and is used",
             &road_);
      plan_.back().sek = alignment_.station_end * metres_;
    }
    road_.has_stations = any_station_ || IsGiven(alignment_.station);
    if (!road_.has_stations)
      for (kovltype& point : plan_) point.sek = 0;
  }

 private:
  // Directions at the ends of an element, radians from east.
  struct Course {
    double start = kNotGiven;
    double end = kNotGiven;
    double chord = 0;          // m
    double spiral_length = 0;  // m; 0: it is not a spiral
    Finding spiral{};          // its line and title
  };

  std::string Titled(const LandElement& element) const {
    const std::string station =
        plan_.empty() ? std::string() : " at station " + StationText(plan_.back().sek, false);
    return NameOf(element.kind) + station;
  }
  bool RefuseElement(const LandElement& element, const std::string& why) {
    Refuse(element.line, Titled(element) + ": " + why, &road_);
    return false;
  }
  // Whether the point is unknown; a reference to none has been refused.
  bool Lacks(const LandElement& element, const LandPoint& point, const std::string& what) {
    if (point.IsKnown()) return false;
    if (point.reference < 0) RefuseElement(element, what + kNoCoordinates);
    return true;
  }
  PlanePoint Metres(const LandPoint& point) const { return {point.east * metres_, point.north * metres_}; }

  // False when nothing can follow the element.
  bool Add(const LandElement& element) {
    if (element.kind == LandKind::kChain || element.kind == LandKind::kIrregularLine) return AddList(element);
    if (Lacks(element, element.start, "its Start") || Lacks(element, element.end, "its End")) return false;
    if (!Join(element, Metres(element.start))) return false;
    if (element.kind == LandKind::kCurve) return AddCurve(element);
    if (element.kind == LandKind::kSpiral) {
      if (AddSpiral(element)) return true;
      last_ = {};
      // To its end, so that the elements after it are examined too.
      const double station = plan_.back().sek;
      Append(0, Metres(element.end));
      if (IsGiven(element.length)) plan_.back().sek = station + element.length * metres_;
      return true;
    }
    Append(0, Metres(element.end));
    CheckLine(element);
    return true;
  }

  // The first point, or the one where the last element ended.
  bool Join(const LandElement& element, PlanePoint start) {
    if (plan_.empty()) {
      plan_.push_back({start.v, start.h, 0, IsGiven(alignment_.station) ? alignment_.station * metres_ : 0});
      return true;
    }
    const double gap = Distance(InPlane(plan_.back()), start);
    road_.largest_error = std::max(road_.largest_error, gap <= kJoin ? gap : 0);
    if (gap <= kJoin) return true;
    return RefuseElement(
        element, "does not start where the element before it ends: a gap of " + FormatFixed(gap, 3) + " m");
  }

  void Append(double bulge, PlanePoint end) {
    plan_.back().bulge = bulge;
    kovltype next{end.v, end.h, 0, 0};
    next.sek = plan_.back().sek + SegmentLength(plan_.back(), next);
    plan_.push_back(next);
  }

  void CheckLength(const LandElement& element, double length) {
    const double given = element.length * metres_;
    if (!(std::fabs(given - length) > kNoticed)) return;  // also one that is not given
    Note(element.line,
         std::string(NameOf(element.kind)) + ": length " + FormatFixed(given, 3) +
             " m, but the coordinates give " + FormatFixed(length, 3) + " m, which is used",
         &road_);
  }

  void CheckLine(const LandElement& element) {
    const kovltype& a = plan_[plan_.size() - 2];
    const kovltype& b = plan_.back();
    const double length = SegmentLength(a, b);
    const double direction = std::atan2(b.x - a.x, b.y - a.y);
    CheckLength(element, length);
    CheckDirection(element, "dir", element.direction, direction, length);
    Continue({direction, direction, length});
  }

  // Programs count `given` either clockwise from north or counter-clockwise from east.
  double ApartFrom(double given, double from_east) const {
    given = Radians(given, units_.radians_per_unit);
    return std::min(Apart(given, from_east), Apart(given, std::acos(0.0) - from_east));
  }

  // `given` is an attribute, `from_east` what the coordinates give.
  void CheckDirection(const LandElement& element, const char* attribute, double given, double from_east,
                      double length) {
    if (!IsGiven(given)) return;
    const double apart = ApartFrom(given, from_east);
    if (apart > kSameDirection && apart * length > kNoticed)
      Note(element.line,
           std::string(NameOf(element.kind)) + ": " + attribute +
               " differs from the direction of the coordinates, which is used",
           &road_);
  }

  bool AddCurve(const LandElement& element) {
    if (Lacks(element, element.centre, "its Center")) return false;
    const PlanePoint start = InPlane(plan_.back());
    const PlanePoint end = Metres(element.end);
    const PlanePoint centre = Metres(element.centre);
    const PlanePoint a{start.h - centre.h, start.v - centre.v};
    const PlanePoint b{end.h - centre.h, end.v - centre.v};
    const double radius = std::hypot(a.h, a.v);
    const double misfit = std::fabs(radius - std::hypot(b.h, b.v));
    constexpr double kMostMisfit = 0.1;
    if (!(Distance(start, end) > 0)) {
      return RefuseElement(element, "starts and ends in the same point");
    }
    if (!(misfit <= kMostMisfit)) {
      return RefuseElement(element, "its Start and End differ by " + FormatFixed(misfit, 3) +
                                        " m in their distance from its Center");
    }
    const double turn = std::atan2(a.h * b.v - a.v * b.h, a.h * b.h + a.v * b.v);
    const double sweep = element.clockwise ? -Positive(-turn) : Positive(turn);
    Append(std::tan(sweep / 4), end);
    if (misfit > kNoticed)
      Note(element.line,
           "Curve: Start and End differ by " + FormatFixed(misfit * 1000, 1) +
               " mm in their distance from Center; the arc goes through both",
           &road_);
    road_.largest_error = std::max(road_.largest_error, misfit);
    const double given = element.radius * metres_;
    if (std::fabs(given - radius) > kNoticed)
      Note(element.line,
           "Curve: radius " + FormatFixed(given, 3) + " m, but the coordinates give " +
               FormatFixed(radius, 3) + " m, which is used",
           &road_);
    const double length = SegmentLength(plan_[plan_.size() - 2], plan_.back());
    CheckLength(element, length);
    const double quarter = element.clockwise ? -std::acos(0.0) : std::acos(0.0);
    const Course course{std::atan2(a.v, a.h) + quarter, std::atan2(b.v, b.h) + quarter, Distance(start, end)};
    CheckDirection(element, "dirStart", element.direction, course.start, length);
    CheckDirection(element, "dirEnd", element.direction_end, course.end, length);
    Continue(course);
    return true;
  }

  bool AddSpiral(const LandElement& element) {
    if (!options_.spirals_as_arcs)
      return RefuseElement(element,
                           "an alignment has no spirals; --spirals-as-arcs MM replaces it by arcs within MM");
    if (!element.is_clothoid) {
      return RefuseElement(element, "only clothoids can be replaced by arcs");
    }
    const double sign = element.clockwise ? -1 : 1;
    // Programs write an infinite radius as INF or as 0.
    const auto curvature = [&](double radius) { return radius == 0 ? 0 : sign / (radius * metres_); };
    const Spiral spiral{InPlane(plan_.back()), Metres(element.end), element.length * metres_,
                        curvature(element.radius), curvature(element.radius_end)};
    const std::optional<SpiralArcs> arcs = ArcsOfSpiral(spiral, *options_.spirals_as_arcs);
    if (!arcs)
      return RefuseElement(element, "cannot be replaced by arcs within " +
                                        FormatShortest(*options_.spirals_as_arcs * 1000) +
                                        " mm; check its length and radii, or allow more");
    if (arcs->misfit > *options_.spirals_as_arcs) {
      return RefuseElement(element, "its length and radii put its end " + FormatFixed(arcs->misfit, 3) +
                                        " m from where the coordinates do");
    }
    const std::string title = Titled(element);
    const Course course{arcs->direction_start,
                        arcs->direction_end,
                        Distance(spiral.start, spiral.end),
                        spiral.length,
                        {element.line, title}};
    const double turn = std::fabs(spiral.curvature_start + spiral.curvature_end) / 2 * spiral.length;
    if (!CheckSpiral(element, course, turn)) return false;
    Continue(course);
    for (size_t i = 1; i < arcs->points.size(); ++i)
      Append(arcs->points[i - 1].bulge, InPlane(arcs->points[i]));
    const size_t count = arcs->points.size() - 1;
    const double error = arcs->largest_distance + arcs->misfit;
    Note(element.line,
         title + ": replaced by " + std::to_string(count) + (count == 1 ? " arc" : " arcs") + " within " +
             FormatFixed(error * 1000, 3) + " mm",
         &road_);
    road_.largest_error = std::max(road_.largest_error, error);
    return true;
  }

  // False when the spiral has another shape than its PI or its directions say.
  bool CheckSpiral(const LandElement& element, const Course& course, double turn) {
    bool good = true;
    const auto check = [&](const char* what, double apart) {
      if (!Agrees(course, apart, what)) good = false;
    };
    if (IsGiven(element.direction)) {
      check("its dirStart", ApartFrom(element.direction, course.start) - kSameDirection);
    }
    if (IsGiven(element.direction_end)) {
      check("its dirEnd", ApartFrom(element.direction_end, course.end) - kSameDirection);
    }
    const double theta = std::fabs(Radians(element.theta, units_.radians_per_angle));
    if (std::fabs(theta - turn) > kSameDirection)
      Note(
          element.line,
          course.spiral.text + ": theta differs from the angle that its length and radii give, which is used",
          &road_);
    // The tangents of half a circle do not meet.
    constexpr double kMostTurn = 3;
    if (element.intersection.IsKnown() && turn < kMostTurn) {
      const PlanePoint meet = Metres(element.intersection);
      check("its PI", ApartAlong(course.start, InPlane(plan_.back()), meet) +
                          ApartAlong(course.end, meet, Metres(element.end)));
    }
    return good;
  }

  // How far a direction is from that of two points, beyond what their rounding explains.
  static double ApartAlong(double direction, PlanePoint from, PlanePoint to) {
    const double apart = Apart(direction, std::atan2(to.v - from.v, to.h - from.h));
    return std::max(0.0, apart - kRounded / Distance(from, to));
  }

  // False when the spiral leaves the direction of `what` by an angle that moves it by more than is allowed.
  bool Agrees(const Course& spiral, double apart, const char* what) {
    // Of a curve between fixed ends, when the tangent at one of them turns.
    const double moved = apart * spiral.spiral_length * 4 / 27;
    if (!(moved > std::min(kNoticed, *options_.spirals_as_arcs))) return true;
    const std::string text = spiral.spiral.text + ": its length, radii and rot disagree with " + what +
                             " by " + FormatFixed(apart, 4) + " rad, which moves it by " +
                             FormatFixed(moved, 3) + " m";
    const bool good = moved <= *options_.spirals_as_arcs;
    if (good)
      Note(spiral.spiral.line, text, &road_);
    else
      Refuse(spiral.spiral.line, text + "; correct them, or allow more", &road_);
    return good;
  }

  // Roads are tangent-continuous at a spiral.
  void Continue(const Course& course) {
    const double apart = Apart(last_.end, course.start) - kRounded / last_.chord - kRounded / course.chord;
    if (course.spiral_length > 0)
      (void)Agrees(course, apart, "the direction of the element before it");
    else if (last_.spiral_length > 0)
      (void)Agrees(last_, apart, "the direction of the element after it");
    last_ = course;
  }

  bool AddList(const LandElement& element) {
    last_ = {};  // the chords of a list have no tangents
    std::vector<LandPoint> points;
    if (element.list) points = *element.list;
    if (element.kind == LandKind::kIrregularLine) {
      // The list has the ends too, as a rule.
      const auto is_same = [&](const LandPoint& a, const LandPoint& b) {
        const double gap = Distance(Metres(a), Metres(b));
        if (gap <= kJoin) road_.largest_error = std::max(road_.largest_error, gap);
        return gap <= kJoin;
      };
      if (element.start.IsKnown() && (points.empty() || !is_same(points.front(), element.start)))
        points.insert(points.begin(), element.start);
      if (element.end.IsKnown() && (points.empty() || !is_same(points.back(), element.end)))
        points.push_back(element.end);
    }
    if (points.size() < 2) {
      return RefuseElement(element, "has fewer than two points");
    }
    for (size_t i = 0; i < points.size(); ++i) {
      if (Lacks(element, points[i], "its point " + std::to_string(i + 1))) return false;
      if (i > 0)
        Append(0, Metres(points[i]));
      else if (!Join(element, Metres(points[i])))
        return false;
    }
    return true;
  }

  const LandUnits& units_;
  double metres_;
  const ImportOptions& options_;
  LandAlignment& alignment_;
  ImportedRoad& road_;
  std::vector<kovltype>& plan_;
  bool any_station_ = false;
  Course last_;  // of the element before; not given where there is none or it has no direction
};

}  // namespace

void MakePlan(const LandUnits& units, double metres, const ImportOptions& options, LandAlignment* alignment) {
  PlanMaker(units, metres, options, alignment).Make();
}

void MakeRoad(const LandUnits& units, const ImportOptions& options, LandAlignment* alignment) {
  ImportedRoad& road = alignment->road;
  double metres = 1;
  if (units.linear == "foot" || units.linear == "USSurveyFoot") {
    if (!options.metres_per_foot)
      Refuse(units.line,
             "is in feet (" + units.linear + "); say which with --feet international or --feet survey",
             &road);
    metres = options.metres_per_foot.value_or(1);
    const bool says_survey = units.linear == "USSurveyFoot";
    constexpr double kInternational = 0.3048;
    if (says_survey && metres == kInternational)
      Note(units.line, "the file says USSurveyFoot, and --feet international is used", &road);
  } else if (units.linear.empty()) {
    Note(0, "has no units; taken as metres", &road);
  } else if (units.linear != "meter") {
    Refuse(units.line, "is in the unit \"" + units.linear + "\"; only metres and feet are read", &road);
  }
  for (const LandEquation& equation : alignment->equations) {
    const std::string what = "StaEquation " + equation.text + ": ";
    if (options.internal_stations)
      Note(equation.line, what + "not applied; stations are continuous", &road);
    else
      Refuse(equation.line,
             what + "an alignment has one run of stations; --stations internal takes the continuous ones",
             &road);
  }
  if (alignment->elements.empty()) Refuse(alignment->line, "has no geometry (CoordGeom)", &road);
  if (road.refused && alignment->elements.empty()) return;
  const bool was_refused = road.refused;
  road.refused = false;
  MakePlan(units, metres, options, alignment);
  if (!road.refused) MakeProfile(metres, options, alignment);
  road.refused = road.refused || was_refused;
}

}  // namespace velmora::exchange
