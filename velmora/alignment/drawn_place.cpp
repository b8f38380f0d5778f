#include "velmora/alignment/drawn_place.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "velmora/alignment/station_search.h"

namespace velmora {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kAngleTolerance = 1e-9;     // of a foot at an arc's end, which rounding can put beyond it
constexpr double kSamePlace = 1e-6;          // m
constexpr double kShortest = 0.01;           // m: a shorter straight has no direction
constexpr size_t kMostCoincident = 16;       // points in a row of a corner that has sides
constexpr std::ptrdiff_t kMostAlike = 1000;  // corners of one station that are compared

double Cross(PlanePoint a, PlanePoint b) { return a.h * b.v - a.v * b.h; }
double Dot(PlanePoint a, PlanePoint b) { return a.h * b.h + a.v * b.v; }
PlanePoint Between(PlanePoint from, PlanePoint to) { return {to.h - from.h, to.v - from.v}; }

bool Jumps(PlanePoint centre, PlanePoint p) {
  const PlanePoint d = Between(centre, p);
  return std::cos(DirectionFromCentre(d.h, d.v).Angle() - std::atan2(d.v, d.h)) < 0.5;
}

// The unit vectors of the line before and after an inner point; those of coincident points are those of the
// next points that do not coincide. Nothing where the line has no direction.
std::optional<std::array<PlanePoint, 2>> DirectionsAt(const std::vector<kovltype>& plan, size_t at) {
  const auto apart = [&](size_t i) { return Distance(InPlane(plan[i]), InPlane(plan[at])) >= kShortest; };
  size_t before = at;
  while (before > 0 && at - before < kMostCoincident && !apart(before)) --before;
  size_t after = at;
  while (after + 1 < plan.size() && after - at < kMostCoincident && !apart(after)) ++after;
  if (!apart(before) || !apart(after)) return std::nullopt;
  std::array directions = {DirectionOfTravel(plan[before], plan[before + 1], false),
                           DirectionOfTravel(plan[after - 1], plan[after], true)};
  for (PlanePoint& d : directions) {
    const double length = std::hypot(d.h, d.v);
    d = {d.h / length, d.v / length};
  }
  return directions;
}

// Of a point beside an inner point of the line: above 0 to the left, below 0 to the right, as of the
// direction halfway between those before and after the inner point; 0 where the line turns back and neither
// side is its own.
double SideAt(const std::array<PlanePoint, 2>& directions, PlanePoint to_p) {
  constexpr double kTurnsBack = 0.001;
  const PlanePoint mean = {directions[0].h + directions[1].h, directions[0].v + directions[1].v};
  return std::hypot(mean.h, mean.v) < kTurnsBack ? 0 : Cross(mean, to_p);
}

// Whether the straight to this point tells right from left for all points that have it as their nearest.
bool ChordTellsSide(const std::vector<kovltype>& plan, size_t at) {
  const auto directions = DirectionsAt(plan, at);
  if (!directions) return true;
  for (const PlanePoint& d : *directions)
    for (const double side : {1.0, -1.0}) {
      const PlanePoint normal{-d.v * side, d.h * side};
      const PlanePoint p{plan[at].y + normal.h, plan[at].x + normal.v};
      const bool left = OffsetFromVertex(&plan[at - 1], plan[at], p, 1) < 0;
      if (left != (SideAt(*directions, normal) > 0)) return false;
    }
  return true;
}

// The box of all points whose foot can be on the segment without an offset.
BoundingBox BoxOf(const kovltype& a, const kovltype& b) {
  constexpr double kBeyondEnds = 0.001;  // of a straight's length, by which feet may lie beyond its ends
  const double chord = Distance(InPlane(a), InPlane(b));
  // An arc keeps within its sagitta of the box around its ends, whatever its bulge.
  const double sagitta = IsStraight(a.bulge) ? 0 : std::fabs(a.bulge) * chord / 2;
  BoundingBox box = kEmptyBounds;
  box.Include(InPlane(a));
  box.Include(InPlane(b));
  box.Grow(sagitta + kBeyondEnds * chord);
  return box;
}

}  // namespace

Foot DrawnFoot(const kovltype& a, const kovltype& b, PlanePoint p) {
  if (IsStraight(a.bulge)) return FootOnStraight(InPlane(a), InPlane(b), p);
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  const double turn = a.bulge > 0 ? 1 : -1;
  const PlanePoint to_a = Between(arc.centre, InPlane(a));
  const PlanePoint to_p = Between(arc.centre, p);
  const double sweep = 4 * std::atan(std::fabs(a.bulge));
  double angle = std::atan2(Cross(to_a, to_p) * turn, Dot(to_a, to_p));
  if (angle < -kAngleTolerance) angle += kTurn;
  if (!(angle <= sweep + kAngleTolerance)) return {FootPlace::kOutside, 0, 0};
  return {FootPlace::kInside, std::clamp(angle, 0.0, sweep) * arc.radius,
          (std::hypot(to_p.h, to_p.v) - arc.radius) * turn};
}

PlanePoint DrawnPoint(const kovltype& a, const kovltype& b, double station, double offset) {
  if (IsStraight(a.bulge)) return PointOnSegment(a, b, station, offset);
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  const PlanePoint to_a = Between(arc.centre, InPlane(a));
  const double angle =
      std::atan2(to_a.v, to_a.h) + 4 * std::atan(a.bulge) * (station - a.sek) / (b.sek - a.sek);
  const double radius = arc.radius + (a.bulge > 0 ? offset : -offset);
  return {arc.centre.h + std::cos(angle) * radius, arc.centre.v + std::sin(angle) * radius};
}

bool EndsBesideAxis(const kovltype& a, const kovltype& b) {
  if (IsStraight(a.bulge)) return false;
  const PlanePoint centre = ArcFromBulge(InPlane(a), InPlane(b), a.bulge).centre;
  return Jumps(centre, InPlane(a)) || Jumps(centre, InPlane(b));
}

bool RunsTheOtherWay(const kovltype& a, const kovltype& b) {
  const PlanePoint middle = PointOnSegment({a.x, a.y, a.bulge, 0}, {b.x, b.y, 0, 2}, 1, 0);
  return DrawnFoot(a, b, middle).place == FootPlace::kOutside;
}

void Coordinates::Prepare() {
  if (values_.empty()) return;
  std::sort(values_.begin(), values_.end());
  const auto bits = static_cast<int>(std::bit_width(64 * values_.size()));
  cells_.assign(size_t{1} << bits, 0);
  shift_ = 64 - bits;
  for (const double value : values_)
    for (const double end : {value - kReach, value + kReach}) cells_[Cell(end)] = 1;
}

bool Coordinates::IsNear(double value) const {
  const auto at = std::lower_bound(values_.begin(), values_.end(), value - kReach);
  return at != values_.end() && *at <= value + kReach;
}

DrawnPlaces::DrawnPlaces(std::vector<kovltype> plan)
    : plan_(std::move(plan)), descending_(IsDescending(plan_)) {
  for (size_t i = 0; i + 1 < plan_.size(); ++i) {
    const kovltype& a = plan_[i];
    segments_.Add(BoxOf(a, plan_[i + 1]));
    if (i > 0 && (descending_ || !ChordTellsSide(plan_, i))) corners_.push_back({a.sek, i});
    if (IsStraight(a.bulge)) continue;
    const kovltype& b = plan_[i + 1];
    const Arc circle = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
    if (!std::isfinite(circle.centre.h) || !std::isfinite(circle.centre.v)) continue;
    if (EndsBesideAxis(a, b)) {
      axis_arcs_.push_back({a, b, circle});
      BoundingBox box{circle.centre, circle.centre};
      box.Grow(circle.radius);
      circles_.Add(box);
    }
    eastings_.Add(circle.centre.h);
    northings_.Add(circle.centre.v);
  }
  std::sort(corners_.begin(), corners_.end(),
            [](const Corner& a, const Corner& b) { return a.station < b.station; });
  eastings_.Prepare();
  northings_.Prepare();
}

bool DrawnPlaces::Correct(PlanePoint p, bool vertices, std::optional<LinePlace>* found) const {
  const std::optional<LinePlace> before = *found;
  if (IsBesideAxis(p) || TakesJump(p, *found)) {
    *found = Search(p, vertices);
  } else if (before) {
    const auto [first, last] =
        std::equal_range(corners_.begin(), corners_.end(), Corner{before->station, 0},
                         [](const Corner& a, const Corner& b) { return a.station < b.station; });
    for (auto corner = first; corner != last && corner - first < kMostAlike; ++corner)
      if (std::fabs(Distance(p, InPlane(plan_[corner->point])) - std::fabs(before->offset)) < kSamePlace)
        (*found)->offset = OffsetFrom(corner->point, p);
  }
  const bool same = found->has_value() == before.has_value() &&
                    (!before || (std::fabs((*found)->station - before->station) < kSamePlace &&
                                 std::fabs((*found)->offset - before->offset) < kSamePlace));
  if (same) *found = before;
  return !same;
}

// Whether an arc that ends beside an axis can have taken the point from another segment, or lost it.
bool DrawnPlaces::TakesJump(PlanePoint p, const std::optional<LinePlace>& found) const {
  const double best = found ? std::fabs(found->offset) + kSamePlace : kNothingBest;
  bool takes = false;
  const auto reach = [&] { return takes ? -1 : best; };
  circles_.VisitNear(p, reach, [&](size_t i) {
    const AxisArc& arc = axis_arcs_[i];
    if (takes || std::fabs(Distance(p, arc.circle.centre) - arc.circle.radius) > best) return;
    const Foot drawn = DrawnFoot(arc.a, arc.b, p);
    const Foot searched = FootOnSegment(arc.a, arc.b, p);
    takes = drawn.place != searched.place || std::fabs(drawn.along - searched.along) > kSamePlace;
  });
  return takes;
}

// By the rules of Vagstv, with the feet and sides of the drawn line.
std::optional<LinePlace> DrawnPlaces::Search(PlanePoint p, bool vertices) const {
  if (plan_.size() < 2) return std::nullopt;
  StationSearch search{descending_, 0};
  size_t nearest = 0;
  double distance = Distance(p, InPlane(plan_[0]));
  const auto reach = [&] { return search.best; };
  segments_.VisitNear(p, reach, [&](size_t i) {
    search.Consider(i, plan_[i], DrawnFoot(plan_[i], plan_[i + 1], p));
    const double d = Distance(p, InPlane(plan_[i + 1]));
    if (d < distance || (d == distance && i + 1 < nearest)) {
      nearest = i + 1;
      distance = d;
    }
  });
  if (vertices && distance < search.best && nearest > 0 && nearest + 1 < plan_.size())
    return LinePlace{plan_[nearest].sek, OffsetFrom(nearest, p)};
  if (search.Result() < 0) return std::nullopt;
  return LinePlace{search.station, search.offset};
}

double DrawnPlaces::OffsetFrom(size_t vertex, PlanePoint p) const {
  const kovltype& at = plan_[vertex];
  const double distance = Distance(p, InPlane(at));
  const auto directions = DirectionsAt(plan_, vertex);
  const double side = directions ? SideAt(*directions, Between(InPlane(at), p)) : 0;
  const double offset = side == 0  ? OffsetFromVertex(&plan_[vertex - 1], at, p, distance)
                        : side > 0 ? -distance
                                   : distance;
  return descending_ ? -offset : offset;
}

}  // namespace velmora
