#include "velmora/drawing/report_plan.h"

#include <algorithm>
#include <cmath>

namespace velmora::drawing {
namespace {

constexpr double kAside = 2;    // mm between the plan's edge and the road's overlap
constexpr double kLabels = 14;  // above and below the road, for labels
constexpr double kOverlap = 12;
constexpr double kLeastRange = 0.5;  // m; the range of levels that a level road is drawn with
constexpr double kMostExaggerated = 100;

bool IsScale(const std::optional<double>& scale) {
  return scale && std::isfinite(*scale) && *scale > 0 && *scale <= kLargestDrawn;
}

Interval WantedStations(const SheetSetup& setup) {
  Interval stations = {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  if (setup.first_station && std::isfinite(*setup.first_station)) stations.low = *setup.first_station;
  if (setup.last_station && std::isfinite(*setup.last_station)) stations.high = *setup.last_station;
  if (stations.low > stations.high) std::swap(stations.low, stations.high);
  return stations;
}

bool IsBefore(const PlotBoring* a, const PlotBoring* b) { return a->station < b->station; }

}  // namespace

ReportPlan::ReportPlan(const Report& r)
    : report(r),
      layout(r.setup.format),
      course(r.road.plan),
      profile(r.road.profile),
      stations(WantedStations(r.setup)) {
  plan_panel = layout.views;
  if (HasPlan() && HasProfile()) plan_panel.height /= 2;
  if (!HasPlan()) plan_panel.height = 0;
  profile_panel = {plan_panel.x, plan_panel.Bottom(), plan_panel.width,
                   layout.views.height - plan_panel.height};
  room = {{plan_panel.x + kAside, plan_panel.y + kLabels, plan_panel.width - 2 * kAside,
           plan_panel.height - 2 * kLabels},
          kOverlap,
          0};
  if (!HasPlan()) return;
  room.scale = IsScale(r.setup.scale) ? *r.setup.scale : ScaleOfWhole(course, stations, room);
  strips = CutStrips(course, stations, room);
  too_many = strips.size() > kMostStrips;
  if (too_many) strips.clear();
  if (HasProfile()) height_scale = IsScale(r.setup.height_scale) ? *r.setup.height_scale : HeightScaleOfAll();
  PlaceBorings();
}

StripContent ReportPlan::Content(size_t i, const StripRoom& in) const {
  StripContent content{report.road, course, strips[i], in, strips.size() == 1, {}, {}, {}};
  if (i > 0) content.before = kFirstStripSheet + i - 1;
  if (i + 1 < strips.size()) content.after = kFirstStripSheet + i + 1;
  if (i < near.size()) content.borings = near[i];
  return content;
}

double ReportPlan::HeightScaleOfAll() const {
  double range = kLeastRange;
  for (const Strip& strip : strips) {
    const Interval with_overlap = strip.Stations().WidenedBy(room.Metres(kOverlap));
    range = std::max(range, LevelsOver(profile, with_overlap, room.Metres(1)).Size());
  }
  const double least = 1000 * range / RoomForLevels(profile_panel.height);
  return NiceScale(std::max(least, room.scale / kMostExaggerated));
}

void ReportPlan::PlaceBorings() {
  near.resize(strips.size());
  for (const PlotBoring& boring : report.road.borings) {
    if (!boring.placed) continue;
    const auto along = course.Find(boring.station, {boring.easting, boring.northing});
    bool drawn = false;
    if (along) {
      const auto ends_before = [](const Strip& strip, double at) { return strip.end < at; };
      for (auto strip = std::lower_bound(strips.begin(), strips.end(), *along, ends_before);
           strip != strips.end() && strip->begin <= *along; ++strip) {
        near[static_cast<size_t>(strip - strips.begin())].push_back(&boring);
        drawn = true;
      }
    }
    if (!drawn) nowhere.push_back(&boring);
  }
  for (size_t i = 0; i < strips.size(); ++i) {
    std::stable_sort(near[i].begin(), near[i].end(), IsBefore);
    const PlanFrame frame = FrameOfStrip(Content(i, room));
    for (const PlotBoring& boring : report.road.borings) {
      if (boring.placed || !IsDrawable(boring.easting) || !IsDrawable(boring.northing)) continue;
      if (plan_panel.Contains(frame.ToSheet({boring.easting, boring.northing}))) near[i].push_back(&boring);
    }
  }
}

}  // namespace velmora::drawing
