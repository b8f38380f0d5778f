#include "velmora/drawing/profile_geometry.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/geometry.h"
#include "velmora/drawing/plan_path.h"

namespace velmora::drawing {
namespace {

constexpr double kMostOnCurve = 200;      // samples
constexpr double kFairUse = 0.62;         // of the width, for the plan's scale to be taken
constexpr double kAside = 2;              // mm left free at either end
constexpr double kMostExaggerated = 100;  // unless heights are still drawn smaller than kLeastHeightScale
constexpr double kLeastHeightScale = 2000;
constexpr double kLeastRange = 0.5;  // m; the range that a level road is drawn with

// By the straight between the points where stations that do not match or an extreme bulge give no level.
double LevelBetween(const kovltype& a, const kovltype& b, double station) {
  const double level = LevelOnSegment(a, b, station);
  if (IsDrawable(level)) return level;
  const double part = (station - a.y) / (b.y - a.y);
  return std::isfinite(part) ? a.x + part * (b.x - a.x) : a.x;
}

}  // namespace

ProfileLine::ProfileLine(std::span<const kovltype> points) {
  points_.reserve(points.size());
  for (const kovltype& point : points) {
    if (IsDrawable(point)) {
      points_.push_back(point);
      if (!std::isfinite(point.bulge)) points_.back().bulge = 0;
    } else {
      ++left_out_;
    }
  }
}

std::vector<ProfilePoint> ProfileLine::Samples(double step) const {
  std::vector<ProfilePoint> samples;
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

ProfileLine ProfileLine::Part(const Interval& stations) const {
  const auto before = [](const kovltype& point, double station) { return point.y < station; };
  const auto after = [](double station, const kovltype& point) { return station < point.y; };
  auto first = std::lower_bound(points_.begin(), points_.end(), stations.low, before);
  auto last = std::upper_bound(first, points_.end(), stations.high, after);
  if (first != points_.begin()) --first;
  if (last != points_.end()) ++last;
  return ProfileLine(std::span(first, last));
}

std::optional<double> ProfileLine::LevelAt(double station) const {
  const auto above = [&](const kovltype& point) { return point.y > station; };
  const auto b = std::find_if(points_.begin(), points_.end(), above);
  if (b == points_.begin() || b == points_.end()) return std::nullopt;
  return LevelBetween(*(b - 1), *b, station);
}

ProfileFrame::ProfileFrame(Interval stations, Interval levels, const SheetRect& plot, double below,
                           double above, double plan_scale)
    : plot_(plot), middle_station_(stations.Middle()) {
  const double least = 1000 * stations.Size() / (plot.width - 2 * kAside);
  length_scale_ = NiceScale(least);
  if (plan_scale > 0 && plan_scale >= least && plan_scale * kFairUse <= least) length_scale_ = plan_scale;

  const double room = plot.height - below - above;
  const double range = std::max(levels.Size(), kLeastRange);
  exaggeration_ = std::min(NiceStepBelow(length_scale_ * room / (1000 * range)),
                           std::max(kMostExaggerated, length_scale_ / kLeastHeightScale));
  // The rest of the height is divided between both sides.
  const double spare = MetresUp(room) - levels.Size();
  base_level_ = levels.low - MetresUp(below) - spare / 2;
}

ProfileFrame::ProfileFrame(const SheetRect& plot, double length_scale, double height_scale,
                           double middle_station, double base_level)
    : plot_(plot),
      length_scale_(length_scale),
      exaggeration_(length_scale / height_scale),
      middle_station_(middle_station),
      base_level_(base_level) {}

Interval ProfileFrame::Stations() const {
  const double half = MetresAlong(plot_.width / 2);
  return {middle_station_ - half, middle_station_ + half};
}

Interval ProfileFrame::Levels() const { return {base_level_, base_level_ + MetresUp(plot_.height)}; }

SheetPoint ProfileFrame::ToSheet(ProfilePoint place) const {
  return {plot_.x + plot_.width / 2 + (place.station - middle_station_) * 1000 / length_scale_,
          plot_.Bottom() - (place.level - base_level_) * 1000 / HeightScale()};
}

}  // namespace velmora::drawing
