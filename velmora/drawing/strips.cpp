#include "velmora/drawing/strips.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace velmora::drawing {
namespace {

constexpr double kShorter = 0.93;      // of the length, until a strip fits
constexpr double kRoundStation = 10;   // mm; strips end at multiples of about this
constexpr double kLeastPart = 0.7;     // of a strip's length, to end at such a station
constexpr double kShortestStrip = 30;  // mm, of the last strip
constexpr double kTurnStep = 5;        // degrees
constexpr double kMostTurned = 80;
constexpr double kSampleStep = 2;    // mm
constexpr double kMostSamples = 64;  // on one
constexpr double kNothing = 1e-6;    // m

double Degrees(double degrees) { return degrees * std::numbers::pi / 180; }

std::vector<PlanePoint> HullOf(const std::vector<kovltype>& line, double step) {
  std::vector<PlanePoint> points;
  const PlanPath path(line);
  for (const PathSegment& segment : path.Segments()) {
    const double parts =
        segment.Curve() ? std::clamp(std::ceil(segment.Length() / step), 1.0, kMostSamples) : 1;
    for (double i = 0; i <= parts; ++i) points.push_back(segment.At(i / parts).point);
  }
  return ConvexHull(std::move(points));
}

// The angle nearest to that of the chord at which the strip fits; nothing when there is none.
std::optional<double> AngleOf(const Course& course, const Strip& strip, const StripRoom& room) {
  PlanePoint a = course.At(strip.from).point;
  PlanePoint b = course.At(strip.to).point;
  double chord = std::atan2(b.v - a.v, b.h - a.h);
  if (Distance(a, b) < room.Metres(1)) {
    const PlanePoint direction = course.At((strip.from + strip.to) / 2).direction;
    chord = std::atan2(direction.v, direction.h);
  }
  if (strip.is_turned) chord += std::numbers::pi;
  const double width = room.Metres(room.plan.width);
  const double height = room.Metres(room.plan.height);
  for (double turned = 0; turned <= kMostTurned; turned += kTurnStep) {
    for (const double sign : {1.0, -1.0}) {
      const double angle = -chord + sign * Degrees(turned);
      const SheetRect extent = strip.ExtentAt(angle);
      if (extent.width <= width + kNothing && extent.height <= height + kNothing) return angle;
    }
  }
  return std::nullopt;
}

Strip StripOf(const Course& course, const Stretch& stretch, double from, double to, const StripRoom& room) {
  Strip strip{};
  strip.from = from;
  strip.to = to;
  const Interval stations = stretch.Stations();
  strip.first_station = std::clamp(course.StationAt(from), stations.low, stations.high);
  strip.last_station = std::clamp(course.StationAt(to), stations.low, stations.high);
  // Where a stretch ends its stations are its own, not those after a jump.
  if (from == stretch.from) strip.first_station = stretch.first_station;
  if (to == stretch.to) strip.last_station = stretch.last_station;
  strip.is_turned = stretch.Falls();
  strip.begin = std::max(0.0, from - room.Metres(room.overlap));
  strip.end = std::min(course.Length(), to + room.Metres(room.overlap));
  strip.line = course.Cut(strip.begin, strip.end);
  if (strip.is_turned) strip.line = Reversed(strip.line);
  strip.hull = HullOf(strip.line, room.Metres(kSampleStep));
  return strip;
}

// A round station between `from` and `to`, not too far before `to`.
double RoundEnd(const Course& course, const Stretch& stretch, double from, double to, const StripRoom& room) {
  const double step = NiceStepBelow(room.Metres(kRoundStation));
  const double station = course.StationAt(to) / step;
  const double round = step * (stretch.Falls() ? std::ceil(station - 1e-6) : std::floor(station + 1e-6));
  const double along = course.AlongOf(stretch, round);
  return along < to && along - from >= kLeastPart * (to - from) ? along : to;
}

// The longest strip from here, or one a little shorter.
Strip NextStrip(const Course& course, const Stretch& stretch, double from, double last,
                const StripRoom& room) {
  const double overlap = room.Metres(room.overlap);
  const double width = room.Metres(room.plan.width);
  const double before = from - std::max(0.0, from - overlap);
  const double after = std::min(course.Length(), last + overlap) - last;
  double to = last;
  if (last - from > width - before - after) to = from + width - before - overlap;
  // The profile below is as long as the stations.
  const double most = width - 2 * overlap;
  const double first_station = course.StationAt(from);
  if (std::fabs(course.StationAt(to) - first_station) > most + overlap)
    to = std::clamp(course.AlongOf(stretch, first_station + (stretch.Falls() ? -most : most)),
                    from + (to - from) * 1e-3, to);
  const double least = std::min(width, room.Metres(room.plan.height)) - 2 * overlap;
  // One of the least length fits at any angle.
  Strip strip = StripOf(course, stretch, from, to, room);
  auto angle = AngleOf(course, strip, room);
  for (double length = to - from; !angle && length > least; angle = AngleOf(course, strip, room)) {
    length = std::max(least, length * kShorter);
    to = std::min(to, from + length);
    strip = StripOf(course, stretch, from, to, room);
  }
  if (to < last) {
    if (last - to < room.Metres(kShortestStrip))
      to = std::max(from + (last - from) / 2, last - room.Metres(kShortestStrip));
    strip = StripOf(course, stretch, from, RoundEnd(course, stretch, from, to, room), room);
    if (const auto again = AngleOf(course, strip, room)) angle = again;
  }
  strip.angle = angle.value_or(0);
  return strip;
}

// The part of the stretch within the stations; nothing where there is none.
std::optional<Interval> PartOf(const Course& course, const Stretch& stretch, const Interval& stations) {
  const Interval own = stretch.Stations();
  if (own.low > stations.high || own.high < stations.low) return std::nullopt;
  Interval part = {stretch.from, stretch.to};
  const bool cut_low = stations.low > own.low;
  const bool cut_high = stations.high < own.high;
  if (cut_low) (stretch.Falls() ? part.high : part.low) = course.AlongOf(stretch, stations.low);
  if (cut_high) (stretch.Falls() ? part.low : part.high) = course.AlongOf(stretch, stations.high);
  if (!(part.high - part.low > kNothing)) return std::nullopt;
  return part;
}

}  // namespace

Interval Strip::Stations() const {
  return {std::min(first_station, last_station), std::max(first_station, last_station)};
}

SheetRect Strip::ExtentAt(double at) const {
  const double c = std::cos(at);
  const double s = std::sin(at);
  Interval across;
  Interval up;
  for (const PlanePoint& p : hull) {
    across.Add(c * p.h - s * p.v);
    up.Add(s * p.h + c * p.v);
  }
  return {across.low, up.low, across.Size(), up.Size()};
}

std::vector<Strip> CutStrips(const Course& course, const Interval& stations, const StripRoom& room,
                             size_t most) {
  std::vector<Strip> strips;
  for (const Stretch& stretch : course.Stretches()) {
    const auto part = PartOf(course, stretch, stations);
    if (!part) continue;
    double from = part->low;
    while (part->high - from > kNothing) {
      if (strips.size() == most) return strips;
      strips.push_back(NextStrip(course, stretch, from, part->high, room));
      from = strips.back().to;
    }
  }
  return strips;
}

double ScaleOfWhole(const Course& course, const Interval& stations, StripRoom room) {
  size_t parts = 0;
  double longest = 0;
  for (const Stretch& stretch : course.Stretches()) {
    const auto part = PartOf(course, stretch, stations);
    if (!part) continue;
    ++parts;
    const PlanePoint a = course.At(part->low).point;
    const PlanePoint b = course.At(part->high).point;
    longest = std::max(longest, Distance(a, b));
  }
  constexpr double kLargestScale = 1e12;
  room.scale = StandardScale(1000 * longest / room.plan.width);
  while (parts > 0 && room.scale < kLargestScale &&
         CutStrips(course, stations, room, parts + 1).size() > parts)
    room.scale = StandardScale(room.scale * 1.001);
  return room.scale;
}

}  // namespace velmora::drawing
