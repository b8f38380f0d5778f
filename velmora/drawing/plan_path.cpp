#include "velmora/drawing/plan_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "velmora/alignment/drawn_place.h"
#include "velmora/drawing/alignment_sheet.h"

namespace velmora::drawing {
namespace {

constexpr double kShortest = 1e-4;      // m; a shorter segment has no direction
constexpr double kLargestRadius = 1e8;  // m; a flatter arc is drawn straight
constexpr double kLargestBulge = 1e4;   // as good as a full circle

}  // namespace

bool IsDrawable(double value) { return std::fabs(value) <= kLargestDrawn; }

bool IsDrawable(const kovltype& point) {
  return IsDrawable(point.x) && IsDrawable(point.y) && IsDrawable(point.sek);
}

PathSegment::PathSegment(const kovltype& a, const kovltype& b)
    : a_(a), b_(b), length_(Distance(InPlane(a), InPlane(b))) {
  a_.bulge = 0;
  if (!std::isfinite(a.bulge) || IsStraight(a.bulge) || std::fabs(a.bulge) > kLargestBulge) return;
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  if (!(arc.radius <= kLargestRadius)) return;
  a_.bulge = a.bulge;
  arc_ = arc;
  start_ = std::atan2(a.x - arc.centre.v, a.y - arc.centre.h);
  sweep_ = 4 * std::atan(a.bulge);
  length_ = arc.radius * std::fabs(sweep_);
}

PathPosition PathSegment::At(double part) const {
  if (!arc_) {
    const double dh = b_.y - a_.y;
    const double dv = b_.x - a_.x;
    return {{a_.y + part * dh, a_.x + part * dv}, {dh / length_, dv / length_}};
  }
  const double angle = start_ + part * sweep_;
  const double turn = sweep_ < 0 ? -1 : 1;
  return {{arc_->centre.h + arc_->radius * std::cos(angle), arc_->centre.v + arc_->radius * std::sin(angle)},
          {-turn * std::sin(angle), turn * std::cos(angle)}};
}

PathPosition PathSegment::AtStation(double station) const {
  const double part = (station - a_.sek) / (b_.sek - a_.sek);
  return At(std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0.0);
}

PlanPath::PlanPath(std::span<const kovltype> points) {
  points_.reserve(points.size());
  for (const kovltype& point : points) {
    if (IsDrawable(point)) {
      points_.push_back(point);
    } else {
      ++left_out_;
    }
  }
  for (size_t i = 0; i + 1 < points_.size(); ++i) {
    if (Distance(InPlane(points_[i]), InPlane(points_[i + 1])) < kShortest) continue;
    segments_.emplace_back(points_[i], points_[i + 1]);
    length_ += segments_.back().Length();
  }
}

std::vector<PlanePoint> PlanPath::Samples(double step, size_t most) const {
  std::vector<PlanePoint> samples;
  const double coarse = std::max(step, length_ / static_cast<double>(std::max<size_t>(most, 1)));
  for (const PathSegment& segment : segments_) {
    const double parts = std::max(1.0, std::ceil(segment.Length() / coarse));
    for (double i = 0; i < parts; ++i) samples.push_back(segment.At(i / parts).point);
  }
  if (!segments_.empty()) {
    samples.push_back(segments_.back().At(1).point);
  } else {
    for (const kovltype& point : points_) samples.push_back(InPlane(point));
  }
  return samples;
}

std::optional<PlanePoint> PlanPath::Nearest(PlanePoint p) const {
  std::optional<PlanePoint> nearest;
  double best = std::numeric_limits<double>::infinity();
  for (const PathSegment& segment : segments_) {
    const Foot foot = DrawnFoot(segment.A(), segment.B(), p);
    if (foot.place != FootPlace::kInside || !(std::fabs(foot.offset) < best)) continue;
    best = std::fabs(foot.offset);
    nearest = segment.At(foot.along / segment.Length()).point;
  }
  const auto consider = [&](const kovltype& point) {
    const double distance = Distance(InPlane(point), p);
    if (!(distance < best)) return;
    best = distance;
    nearest = InPlane(point);
  };
  for (size_t i = 1; i + 1 < points_.size(); ++i) consider(points_[i]);
  if (!nearest && !points_.empty()) {
    consider(points_.front());
    consider(points_.back());
  }
  return nearest;
}

}  // namespace velmora::drawing
