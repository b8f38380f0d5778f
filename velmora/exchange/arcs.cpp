#include "velmora/exchange/arcs.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "velmora/alignment/measures.h"

namespace velmora::exchange {
namespace {

double Sweep(double bulge) { return 4 * std::atan(bulge); }

bool IsFinite(const kovltype& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.bulge) && std::isfinite(p.sek);
}

double FourDecimals(double bulge) { return std::round(bulge * 1e4) / 1e4; }

// How far the middle of an arc moves when its bulge is rounded to four decimals.
double MovedByRounding(double bulge, double chord) {
  return std::fabs(bulge - FourDecimals(bulge)) * chord / 2;
}

// The bulge of a segment without what a format's arithmetic added to four decimals.
double Rounded(const kovltype& a, const kovltype& b) {
  constexpr double kNothing = 1e-6;  // m
  const double chord = Distance(InPlane(a), InPlane(b));
  return MovedByRounding(a.bulge, chord) <= kNothing ? FourDecimals(a.bulge) : a.bulge;
}

// The number of equal parts of an arc; 0 for more than `most`.
size_t PartsOf(const kovltype& a, const kovltype& b, double fit, size_t most) {
  constexpr double kMostBulge = 0.9999;  // below half a circle
  if (a.bulge == 0) return 1;
  const double chord = Distance(InPlane(a), InPlane(b));
  const double sweep = Sweep(a.bulge);
  const double diameter = chord / std::fabs(std::sin(sweep / 2));
  for (size_t parts = 1; parts <= most; ++parts) {
    const double part = sweep / static_cast<double>(parts);
    const double bulge = parts == 1 ? a.bulge : std::tan(part / 4);
    const double part_chord = parts == 1 ? chord : diameter * std::fabs(std::sin(part / 2));
    if (std::fabs(bulge) < kMostBulge && MovedByRounding(bulge, part_chord) <= fit) return parts;
  }
  return 0;
}

double Between(double a, double b, double fraction) { return a + fraction * (b - a); }

// Walks along a plan.
class Walk {
 public:
  explicit Walk(std::span<const kovltype> plan) : plan_(plan), length_(SegmentLength(plan[0], plan[1])) {}

  // At a length that is not below the last one.
  PlanePoint At(double length) {
    while (length > before_ + length_ && i_ + 2 < plan_.size()) {
      before_ += length_;
      ++i_;
      length_ = SegmentLength(plan_[i_], plan_[i_ + 1]);
    }
    const double fraction = length_ > 0 ? std::min(1.0, (length - before_) / length_) : 0;
    return PointAlong(plan_[i_], plan_[i_ + 1], fraction);
  }

 private:
  std::span<const kovltype> plan_;
  size_t i_ = 0;
  double before_ = 0;
  double length_;
};

// Whether all points and the arcs between them are the same, as of a road of straights.
bool IsSameLine(std::span<const kovltype> a, std::span<const kovltype> b) {
  const auto is_same = [](const kovltype& one, const kovltype& other) {
    return one.x == other.x && one.y == other.y && one.bulge == other.bulge;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), is_same);
}

double LengthOf(std::span<const kovltype> plan) {
  double length = 0;
  for (size_t i = 1; i < plan.size(); ++i) length += SegmentLength(plan[i - 1], plan[i]);
  return length;
}

}  // namespace

PlanePoint PointAlong(const kovltype& a, const kovltype& b, double fraction) {
  const PlanePoint from = InPlane(a);
  const PlanePoint to = InPlane(b);
  if (fraction == 0 || fraction == 1) return fraction == 0 ? from : to;
  const double chord = Distance(from, to);
  if (IsStraight(a.bulge) || !(chord > 0))
    return {Between(from.h, to.h, fraction), Between(from.v, to.v, fraction)};
  // The chord from the start to the point, turned from the whole chord by half of the sweep that is left.
  // Without the centre, which lies far away for a flat arc.
  const double sweep = Sweep(a.bulge);
  const double turn = -(1 - fraction) * sweep / 2;
  const double ratio = std::sin(fraction * sweep / 2) / std::sin(sweep / 2);
  const double c = std::cos(turn) * ratio;
  const double s = std::sin(turn) * ratio;
  return {from.h + c * (to.h - from.h) - s * (to.v - from.v),
          from.v + s * (to.h - from.h) + c * (to.v - from.v)};
}

std::optional<double> BulgeThrough(PlanePoint a, PlanePoint middle, PlanePoint b) {
  const PlanePoint u{middle.h - a.h, middle.v - a.v};
  const PlanePoint w{b.h - middle.h, b.v - middle.v};
  const double cross = u.h * w.v - u.v * w.h;
  const double dot = u.h * w.h + u.v * w.v;
  // The turn from the first chord to the second is half the sweep.
  const double turn = std::atan2(cross, dot);
  if (!(Distance(a, b) > 0) || !std::isfinite(turn)) return std::nullopt;
  if (cross == 0) return dot >= 0 ? std::optional(0.0) : std::nullopt;
  return std::tan(turn / 2);
}

std::optional<std::vector<kovltype>> SplitArcs(std::span<const kovltype> points, double fit) {
  std::vector<kovltype> split;
  split.reserve(points.size());
  size_t left = kMostSplits;
  for (size_t i = 0; i < points.size(); ++i) {
    kovltype a = points[i];
    if (!IsFinite(a)) return std::nullopt;
    if (i + 1 == points.size()) {
      a.bulge = 0;
      split.push_back(a);
      break;
    }
    const kovltype& b = points[i + 1];
    const size_t parts = Distance(InPlane(a), InPlane(b)) > 0 ? PartsOf(a, b, fit, left + 1) : 1;
    if (parts == 0) return std::nullopt;
    left -= parts - 1;
    const double bulge =
        parts == 1 ? Rounded(a, b) : std::tan(Sweep(a.bulge) / 4 / static_cast<double>(parts));
    for (size_t part = 0; part < parts; ++part) {
      const double fraction = static_cast<double>(part) / static_cast<double>(parts);
      const PlanePoint at = PointAlong(a, b, fraction);
      split.push_back({at.v, at.h, bulge, part == 0 ? a.sek : Between(a.sek, b.sek, fraction)});
    }
  }
  return split;
}

void SetStations(double start, std::vector<kovltype>* plan) {
  for (size_t i = 0; i < plan->size(); ++i) {
    if (i > 0) start += SegmentLength((*plan)[i - 1], (*plan)[i]);
    (*plan)[i].sek = start;
  }
}

size_t FirstNotAhead(std::span<const kovltype> profile) {
  size_t i = 1;
  while (i < profile.size() && profile[i].y > profile[i - 1].y) ++i;
  return std::min(i, profile.size());
}

double LargestDistance(std::span<const kovltype> a, std::span<const kovltype> b) {
  constexpr double kMostSamples = 1e6;
  double largest = std::numeric_limits<double>::infinity();
  if (a.size() < 2 || b.size() < 2) return largest;
  const double length = std::max(LengthOf(a), LengthOf(b));
  if (!std::isfinite(length)) return largest;
  largest = 0;
  if (IsSameLine(a, b)) return largest;
  const double step = std::max(1.0, length / kMostSamples);
  Walk along_a(a);
  Walk along_b(b);
  for (double at = 0; at < length + step; at += step) {
    const double distance = Distance(along_a.At(std::min(at, length)), along_b.At(std::min(at, length)));
    if (!(distance <= largest)) largest = distance;
  }
  return largest;
}

std::vector<kovltype> Chords(std::span<const kovltype> plan, double error) {
  std::vector<kovltype> ends;
  ends.reserve(plan.size());
  for (size_t i = 0; i < plan.size(); ++i) {
    const kovltype& a = plan[i];
    ends.push_back({a.x, a.y, 0, a.sek});
    if (i + 1 == plan.size()) break;
    const kovltype& b = plan[i + 1];
    if (IsStraight(a.bulge) || !(Distance(InPlane(a), InPlane(b)) > 0)) continue;
    // A chord of the sweep t departs from its circle by radius (1 - cos(t / 2)).
    const double radius = ArcFromBulge(InPlane(a), InPlane(b), a.bulge).radius;
    const double most = 4 * std::asin(std::min(1.0, std::sqrt(std::max(0.0, error) / radius / 2)));
    const double wanted = std::ceil(std::fabs(Sweep(a.bulge)) / most);
    const int parts = wanted < kMostChords ? std::max(1, static_cast<int>(wanted)) : kMostChords;
    for (int part = 1; part < parts; ++part) {
      const double fraction = static_cast<double>(part) / parts;
      const PlanePoint at = PointAlong(a, b, fraction);
      ends.push_back({at.v, at.h, 0, Between(a.sek, b.sek, fraction)});
    }
  }
  return ends;
}

std::vector<Tick> TicksAt(std::span<const kovltype> plan, std::span<const double> stations) {
  std::vector<double> sorted(stations.begin(), stations.end());
  std::sort(sorted.begin(), sorted.end());
  std::vector<Tick> ticks;
  for (size_t i = 0; i + 1 < plan.size(); ++i) {
    const kovltype& a = plan[i];
    const kovltype& b = plan[i + 1];
    const bool last = i + 2 == plan.size();
    const auto first = std::lower_bound(sorted.begin(), sorted.end(), std::min(a.sek, b.sek));
    for (auto at = first; at != sorted.end() && *at <= std::max(a.sek, b.sek); ++at) {
      // A vertex belongs to the segment that starts there.
      if (a.sek == b.sek || (*at == b.sek && !last)) continue;
      const double fraction = (*at - a.sek) / (b.sek - a.sek);
      const double sweep = IsStraight(a.bulge) ? 0 : Sweep(a.bulge);
      ticks.push_back(
          {*at, PointAlong(a, b, fraction), std::atan2(b.x - a.x, b.y - a.y) + (fraction - 0.5) * sweep});
    }
  }
  return ticks;
}

}  // namespace velmora::exchange
