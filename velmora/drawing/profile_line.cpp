#include "velmora/drawing/profile_line.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/geometry.h"
#include "velmora/drawing/plan_path.h"

namespace velmora::drawing {
namespace {

constexpr double kMostOnCurve = 200;  // samples

// Stations that do not fit one another, or a bulge out of reason, leave the straight between the points.
double LevelBetween(const kovltype& a, const kovltype& b, double station) {
  const double level = LevelOnSegment(a, b, station);
  if (IsDrawable(level)) return level;
  const double part = (station - a.y) / (b.y - a.y);
  return std::isfinite(part) ? a.x + part * (b.x - a.x) : a.x;
}

}  // namespace

ProfileLine::ProfileLine(std::span<const kovltype> points) {
  for (const kovltype& point : points) {
    if (IsDrawable(point)) {
      points_.push_back(point);
      if (!std::isfinite(point.bulge)) points_.back().bulge = 0;
    } else {
      ++left_out_;
    }
  }
}

std::vector<ProfilePlace> ProfileLine::Samples(double step) const {
  std::vector<ProfilePlace> samples;
  for (size_t i = 0; i + 1 < points_.size(); ++i) {
    const kovltype& a = points_[i];
    const kovltype& b = points_[i + 1];
    samples.push_back({a.y, a.x});
    if (IsStraight(a.bulge) || !(b.y > a.y)) continue;
    const double parts = std::clamp(std::ceil((b.y - a.y) / step), 1.0, kMostOnCurve);
    for (double k = 1; k < parts; ++k) {
      const double station = a.y + (b.y - a.y) * k / parts;
      samples.push_back({station, LevelBetween(a, b, station)});
    }
  }
  if (!points_.empty()) samples.push_back({points_.back().y, points_.back().x});
  return samples;
}

std::optional<double> ProfileLine::LevelAt(double station) const {
  if (points_.empty() || points_.front().y > station) return std::nullopt;
  const auto above = [&](const kovltype& point) { return point.y > station; };
  const auto b = std::find_if(points_.begin(), points_.end(), above);
  if (b == points_.begin() || b == points_.end()) return std::nullopt;
  return LevelBetween(*(b - 1), *b, station);
}

}  // namespace velmora::drawing
