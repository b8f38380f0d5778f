#include "velmora/drawing/course.h"

#include <algorithm>
#include <cmath>

namespace velmora::drawing {
namespace {

constexpr double kOneStation = 0.01;  // m; stations that differ by less go on
constexpr double kLeap = 2;           // times the length of a segment: more is a jump of the stations
constexpr double kSmallLeap = 10;     // m, which are none

double Rise(const PathSegment& segment) { return segment.B().sek - segment.A().sek; }

bool Leaps(const PathSegment& segment) {
  return std::fabs(Rise(segment)) > kLeap * segment.Length() + kSmallLeap;
}

std::vector<kovltype> Ascending(std::span<const kovltype> points) {
  return IsDescending(points) ? Reversed(points) : std::vector<kovltype>(points.begin(), points.end());
}

}  // namespace

std::vector<kovltype> Reversed(std::span<const kovltype> points) {
  std::vector<kovltype> reversed(points.rbegin(), points.rend());
  for (size_t i = 0; i < reversed.size(); ++i)
    reversed[i].bulge = i + 1 < reversed.size() ? -reversed[i + 1].bulge : 0;
  return reversed;
}

Interval Stretch::Stations() const {
  return {std::min(first_station, last_station), std::max(first_station, last_station)};
}

Course::Course(std::span<const kovltype> points) : path_(Ascending(points)) {
  double along = 0;
  bool open = false;  // whether the last stretch goes on
  for (const PathSegment& segment : path_.Segments()) {
    starts_.push_back(along);
    const double to = along + segment.Length();
    const double first = segment.A().sek;
    const double last = segment.B().sek;
    const bool leaps = Leaps(segment);
    if (open && !leaps) {
      const Stretch& before = stretches_.back();
      const double rise = before.last_station - before.first_station;
      open = std::fabs(first - before.last_station) < kOneStation && rise * Rise(segment) >= 0;
    }
    if (leaps && !stretches_.empty()) {
      stretches_.back().to = to;  // drawn with the road before it
      open = false;
    } else if (leaps) {
      stretches_.push_back({along, to, last, last});
      open = true;
    } else if (open) {
      stretches_.back().to = to;
      stretches_.back().last_station = last;
    } else {
      stretches_.push_back({along, to, first, last});
      open = true;
    }
    along = to;
  }
}

size_t Course::SegmentAt(double along) const {
  const auto after = std::upper_bound(starts_.begin(), starts_.end(), along);
  return after == starts_.begin() ? 0 : static_cast<size_t>(after - starts_.begin()) - 1;
}

PathPosition Course::At(double along) const {
  const size_t i = SegmentAt(along);
  const PathSegment& segment = path_.Segments()[i];
  return segment.At(std::clamp((along - starts_[i]) / segment.Length(), 0.0, 1.0));
}

double Course::StationAt(double along) const {
  const size_t i = SegmentAt(along);
  const PathSegment& segment = path_.Segments()[i];
  const double part = std::clamp((along - starts_[i]) / segment.Length(), 0.0, 1.0);
  return part == 1 ? segment.B().sek : segment.A().sek + part * Rise(segment);
}

double Course::AlongOf(const Stretch& stretch, double station) const {
  const double sign = stretch.Falls() ? -1 : 1;
  // The first segment of the stretch that ends at or beyond the station.
  size_t low = SegmentAt(stretch.from);
  size_t high = SegmentAt(stretch.to);
  if (high > low && starts_[high] >= stretch.to) --high;
  while (low < high) {
    const size_t middle = (low + high) / 2;
    if (sign * path_.Segments()[middle].B().sek >= sign * station)
      high = middle;
    else
      low = middle + 1;
  }
  const PathSegment& segment = path_.Segments()[low];
  const double part = (station - segment.A().sek) / Rise(segment);
  const double along =
      starts_[low] + segment.Length() * (std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0.0);
  return std::clamp(along, stretch.from, stretch.to);
}

std::optional<double> Course::Find(double station, PlanePoint p) const {
  std::optional<double> found;
  double nearest = 0;
  for (const Stretch& stretch : stretches_) {
    if (!stretch.Stations().WidenedBy(kOneStation).Contains(station)) continue;
    const double along = AlongOf(stretch, station);
    const double distance = Distance(At(along).point, p);
    if (found && !(distance < nearest)) continue;
    found = along;
    nearest = distance;
  }
  return found;
}

std::vector<CoursePart> Course::Parts(double from, double to) const {
  std::vector<CoursePart> parts;
  if (starts_.empty()) return parts;
  for (size_t i = SegmentAt(from); i < starts_.size() && starts_[i] < to; ++i) {
    const PathSegment& segment = path_.Segments()[i];
    const auto station = [&](double along) {
      return segment.A().sek + std::clamp((along - starts_[i]) / segment.Length(), 0.0, 1.0) * Rise(segment);
    };
    parts.push_back({&segment, station(from), station(to)});
  }
  return parts;
}

std::vector<kovltype> Course::Cut(double from, double to) const {
  std::vector<kovltype> points;
  if (starts_.empty()) return points;
  for (size_t i = SegmentAt(from); i < starts_.size() && (starts_[i] < to || points.empty()); ++i) {
    const PathSegment& segment = path_.Segments()[i];
    const auto part = [&](double along) {
      return std::clamp((along - starts_[i]) / segment.Length(), 0.0, 1.0);
    };
    const auto point = [&](double at) -> kovltype {
      if (at == 0) return segment.A();
      if (at == 1) return segment.B();
      const PlanePoint place = segment.At(at).point;
      return {place.v, place.h, 0, segment.A().sek + at * Rise(segment)};
    };
    const double first = part(from);
    const double last = part(to);
    if (points.empty()) points.push_back(point(first));
    points.back().bulge =
        segment.Curve()
            ? (first == 0 && last == 1 ? segment.A().bulge : std::tan(segment.Sweep() * (last - first) / 4))
            : 0;
    // Where the stations jump between two segments, the second one's stands.
    if (first == 0) points.back().sek = segment.A().sek;
    points.push_back(point(last));
    points.back().bulge = 0;
  }
  return points;
}

}  // namespace velmora::drawing
