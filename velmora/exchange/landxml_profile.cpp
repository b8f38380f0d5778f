#include <algorithm>
#include <cmath>

#include "velmora/alignment/geometry.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/landxml_elements.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

constexpr double kSamePoint = 1e-4;  // m of station between a tangent point and the point beside it
constexpr double kOverlap = 0.001;   // m of station by which a curve may begin before the last one ends

// A parabola's level beside the straight between its ends, by the fraction of its length.
struct Parabola {
  PlanePoint from;
  PlanePoint to;
  double grade;  // at its start

  PlanePoint At(double fraction) const {
    const double length = to.h - from.h;
    const double straight = from.v + fraction * (to.v - from.v);
    const double chord_grade = (to.v - from.v) / length;
    return {from.h + fraction * length,
            straight + (grade - chord_grade) * length * fraction * (1 - fraction)};
  }
};

class ProfileMaker {
 public:
  ProfileMaker(double metres, const ImportOptions& options, LandAlignment* alignment)
      : metres_(metres),
        options_(options),
        levels_(alignment->levels),
        road_(alignment->road),
        profile_(alignment->road.road.profile) {}

  void Make() {
    for (size_t i = 0; i < levels_.size(); ++i) {
      const LandLevel& level = levels_[i];
      if (!std::isfinite(level.station) || !std::isfinite(level.level)) {
        Refuse(level.line, "a point of the profile has no station and level: two numbers up to 1e10", &road_);
      } else if (i > 0 && !(level.station > levels_[i - 1].station)) {
        Refuse(level.line, Titled(level) + ": does not lie after the point before it", &road_);
      } else if (level.kind == LandVertical::kPoint) {
        Append(level, Point(level));
      } else if (i == 0 || i + 1 == levels_.size()) {
        Refuse(level.line, Titled(level) + ": a curve needs a point before and after it", &road_);
      } else {
        if (AddCurve(level, Grade(i - 1), Grade(i))) continue;
      }
      if (road_.refused) return;
    }
    if (profile_.size() == 1) {
      Note(levels_.front().line, "a profile of one point is left out", &road_);
      profile_.clear();
    }
  }

 private:
  PlanePoint Point(const LandLevel& level) const { return {level.station * metres_, level.level * metres_}; }
  double Grade(size_t i) const {
    const PlanePoint a = Point(levels_[i]);
    const PlanePoint b = Point(levels_[i + 1]);
    return (b.v - a.v) / (b.h - a.h);
  }
  std::string Titled(const LandLevel& level) const {
    const char* const names[] = {"PVI", "ParaCurve", "UnsymParaCurve", "CircCurve"};
    return std::string(names[static_cast<size_t>(level.kind)]) + " at station " +
           StationText(level.station * metres_, false);
  }

  // A point where the last curve ends is that point.
  bool Append(const LandLevel& level, PlanePoint p) {
    if (!profile_.empty()) {
      const double ahead = p.h - profile_.back().y;
      if (ahead < -kOverlap) {
        Refuse(level.line,
               Titled(level) + ": begins " + FormatFixed(-ahead, 3) + " m before the curve before it ends",
               &road_);
        return false;
      }
      if (ahead < kSamePoint) {
        // Without what computing the tangent point added.
        if (level.kind == LandVertical::kPoint) profile_.back() = {p.v, p.h, 0, p.h};
        return true;
      }
    }
    profile_.push_back({p.v, p.h, 0, p.h});
    return true;
  }

  // False when nothing can follow the curve.
  bool AddCurve(const LandLevel& level, double in, double out) {
    const PlanePoint vertex = Point(level);
    const double turn = std::atan(out) - std::atan(in);
    double before = level.length * metres_ / 2;  // horizontal lengths from the vertex to the tangent points
    double after = before;
    if (level.kind == LandVertical::kCircle) {
      const double tangent = std::fabs(level.radius) * metres_ * std::tan(std::fabs(turn) / 2);
      before = tangent * std::cos(std::atan(in));
      after = tangent * std::cos(std::atan(out));
    } else if (level.kind == LandVertical::kTwoParabolas) {
      before = level.length * metres_;
      after = level.length_out * metres_;
    }
    if (!(before >= 0 && after >= 0 && std::isfinite(before + after))) {
      const char* const needed[] = {"", "length", "lengthIn or lengthOut", "radius"};
      Refuse(
          level.line,
          Titled(level) + ": its " + needed[static_cast<size_t>(level.kind)] + " is missing or not above 0",
          &road_);
      return false;
    }
    if (turn == 0 || before + after == 0) {
      return Append(level, vertex);
    }
    const PlanePoint from{vertex.h - before, vertex.v - in * before};
    const PlanePoint to{vertex.h + after, vertex.v + out * after};
    if (!Append(level, from)) return false;
    if (level.kind == LandVertical::kCircle) {
      Curve(std::tan(turn / 4), to);
      CheckLength(level, std::fabs(level.radius * turn) * metres_, before + after);
      return true;
    }
    double largest = 0;
    if (level.kind == LandVertical::kParabola) {
      AddParabola({InPlane(profile_.back()), to, in}, &largest);
    } else {
      // They meet at the vertex's station, where both have the grade between the middles of the tangents.
      const double grade = (in * before + out * after) / (before + after);
      const PlanePoint middle{vertex.h, from.v + (in + grade) / 2 * before};
      AddParabola({InPlane(profile_.back()), middle, in}, &largest);
      AddParabola({middle, to, grade}, &largest);
    }
    road_.largest_error = std::max(road_.largest_error, largest);
    const std::string difference = FormatFixed(largest * 1000, 3) + " mm";
    if (largest > options_.fit)
      Refuse(level.line,
             Titled(level) + ": an arc differs from the parabola by " + difference + "; --fit allows more",
             &road_);
    else
      Note(level.line,
           Titled(level) + ": becomes " + (level.kind == LandVertical::kParabola ? "an arc" : "two arcs") +
               ", levels differ by up to " + difference,
           &road_);
    return true;
  }

  // Programs write the length of the arc or that of its projection.
  void CheckLength(const LandLevel& level, double arc, double horizontal) {
    // Points of intersection with four decimals move it by some millimetres.
    constexpr double kNoticed = 0.005;  // m
    const double given = level.length * metres_;
    if (!(std::min(std::fabs(given - arc), std::fabs(given - horizontal)) > kNoticed)) return;
    Note(level.line,
         Titled(level) + ": length " + FormatFixed(given, 3) + " m, but its radius gives " +
             FormatFixed(arc, 3) + " m, which is used",
         &road_);
  }

  void Curve(double bulge, PlanePoint to) {
    profile_.back().bulge = bulge;
    profile_.push_back({to.v, to.h, 0, to.h});
  }

  // An arc through its ends and its middle.
  void AddParabola(const Parabola& parabola, double* largest) {
    const double bulge = BulgeThrough(parabola.from, parabola.At(0.5), parabola.to).value_or(0);
    Curve(bulge, parabola.to);
    if (IsStraight(bulge)) return;
    const Arc arc = ArcFromBulge(parabola.from, parabola.to, bulge);
    constexpr int kSamples = 64;
    for (int i = 1; i < kSamples; ++i) {
      const PlanePoint p = parabola.At(static_cast<double>(i) / kSamples);
      const double up = std::sqrt(std::max(0.0, arc.radius * arc.radius - std::pow(p.h - arc.centre.h, 2)));
      *largest = std::max(*largest, std::fabs(arc.centre.v + (bulge > 0 ? -up : up) - p.v));
    }
  }

  double metres_;
  const ImportOptions& options_;
  const std::vector<LandLevel>& levels_;
  ImportedRoad& road_;
  std::vector<kovltype>& profile_;
};

}  // namespace

void MakeProfile(double metres, const ImportOptions& options, LandAlignment* alignment) {
  ProfileMaker(metres, options, alignment).Make();
}

}  // namespace velmora::exchange
