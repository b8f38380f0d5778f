#include "velmora/drawing/profile_sections.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace velmora::drawing {
namespace {

ProfilePoint Between(const ProfilePoint& a, const ProfilePoint& b, double part) {
  return {a.station + part * (b.station - a.station), a.level + part * (b.level - a.level)};
}

// The parts of the way from a to b at which it enters and leaves; nothing when it stays outside.
std::optional<std::pair<double, double>> Inside(const ProfilePoint& a, const ProfilePoint& b,
                                                const Interval& stations, const Interval& levels) {
  double low = 0;
  double high = 1;
  const auto limit = [&](double from, double to, const Interval& range) {
    if (from == to) {
      if (!range.Contains(from)) high = -1;
      return;
    }
    const double enters = (range.low - from) / (to - from);
    const double leaves = (range.high - from) / (to - from);
    low = std::max(low, std::min(enters, leaves));
    high = std::min(high, std::max(enters, leaves));
  };
  limit(a.station, b.station, stations);
  limit(a.level, b.level, levels);
  if (!(low <= high)) return std::nullopt;
  return std::pair(low, high);
}

}  // namespace

std::vector<std::vector<ProfilePoint>> Clip(const std::vector<ProfilePoint>& line, const Interval& stations,
                                            const Interval& levels) {
  std::vector<std::vector<ProfilePoint>> parts;
  bool open = false;
  for (size_t i = 0; i + 1 < line.size(); ++i) {
    const auto inside = Inside(line[i], line[i + 1], stations, levels);
    if (!inside || (inside->first == inside->second && !open)) {
      open = false;
      continue;
    }
    const auto [low, high] = *inside;
    if (!open || low > 0) parts.push_back({Between(line[i], line[i + 1], low)});
    parts.back().push_back(high == 1 ? line[i + 1] : Between(line[i], line[i + 1], high));
    open = high == 1;
  }
  return parts;
}

std::vector<ProfilePoint> CutToStations(const std::vector<ProfilePoint>& samples, const Interval& stations) {
  constexpr Interval kAnyLevel = {-1e300, 1e300};
  const auto before = [](const ProfilePoint& p, double station) { return p.station < station; };
  auto first = std::lower_bound(samples.begin(), samples.end(), stations.low, before);
  auto last = std::lower_bound(first, samples.end(), stations.high, before);
  if (first != samples.begin()) --first;
  // All points at the last station, as after a vertical step.
  while (last != samples.end() && last->station <= stations.high) ++last;
  if (last != samples.end()) ++last;
  std::vector<ProfilePoint> line;
  for (const auto& part : Clip({first, last}, stations, kAnyLevel))
    line.insert(line.end(), part.begin(), part.end());
  return line;
}

std::vector<ProfileSection> SectionsOf(const std::vector<ProfilePoint>& line, double room, double least) {
  std::vector<ProfileSection> sections;
  if (line.empty()) return sections;
  double start = line.front().station;
  Interval levels;
  levels.Add(line.front().level);
  for (size_t i = 0; i + 1 < line.size(); ++i) {
    ProfilePoint a = line[i];
    const ProfilePoint& b = line[i + 1];
    while (true) {
      Interval with = levels;
      with.Add(b.level);
      if (with.Size() <= room) {
        levels = with;
        break;
      }
      // The line leaves the room on its way to b.
      const double limit = b.level > a.level ? levels.low + room : levels.high - room;
      const double part = (limit - a.level) / (b.level - a.level);
      ProfilePoint cut = Between(a, b, std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0.0);
      const bool too_early = cut.station < start + least;
      if (too_early) {
        if (start + least >= b.station) break;  // goes on beyond the section's edge
        cut = Between(a, b, (start + least - a.station) / (b.station - a.station));
      }
      // Neither section shows the way of a jump; the next one begins where it ends.
      const bool jump = b.station - a.station < least / 10 ||
                        (b.station - cut.station < least && std::fabs(b.level - cut.level) > room);
      if (!too_early && !jump) levels.Add(limit);
      sections.push_back({{start, cut.station}, levels});
      start = cut.station;
      levels = {};
      levels.Add(jump ? b.level : cut.level);
      a = cut;
      if (jump) break;
    }
  }
  sections.push_back({{start, line.back().station}, levels});
  return sections;
}

}  // namespace velmora::drawing
