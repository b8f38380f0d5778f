#include "velmora/drawing/report_plan.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/style.h"
#include "velmora/text/counted.h"

namespace velmora::drawing {
namespace {

constexpr double kStripAside = 2;  // mm between the plan's edge and the road's overlap
constexpr double kLabels = 14;     // above and below the road, for labels
constexpr double kOverlap = 12;
constexpr double kLeastStripRange = 0.5;  // m; the range of levels that a level road is drawn with
constexpr double kMostStripExaggerated = 100;

bool IsScale(const std::optional<double>& scale) { return scale && *scale >= 1 && *scale <= kLargestDrawn; }

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
  room = {{plan_panel.x + kStripAside, plan_panel.y + kLabels, plan_panel.width - 2 * kStripAside,
           plan_panel.height - 2 * kLabels},
          kOverlap,
          0};
  if (HasPlan()) {
    const bool given = IsScale(r.setup.scale);
    room.scale = given ? *r.setup.scale : ScaleOfWhole(course, stations, room);
    PlaceOnStrips();
    while (!given && !ShowsNearBorings() && room.scale < kLargestDrawn) {
      room.scale = StandardScale(room.scale * 1.001);
      PlaceOnStrips();
    }
  } else if (HasProfile()) {
    CutProfile();
    PlaceBorings();
  }
  if (HasProfile() && !strips.empty())
    height_scale = IsScale(r.setup.height_scale) ? *r.setup.height_scale : HeightScaleOfAll();
  PlaceStrays();
}

void ReportPlan::PlaceOnStrips() {
  strips = CutStrips(course, stations, room, kMostReportStrips + 1);
  PlaceBorings();
  frames.clear();
  for (size_t i = 0; i < strips.size(); ++i) frames.push_back(FrameOfStrip(Content(i, room)));
}

// Whether those beside a strip, unless they are far from the road, are within its plan.
bool ReportPlan::ShowsNearBorings() const {
  constexpr double kNear = 60;  // m
  for (size_t i = 0; i < strips.size(); ++i) {
    for (const PlotBoring* boring : near[i]) {
      if (!(std::fabs(boring->offset) <= kNear) || !strips[i].Stations().Contains(boring->station)) continue;
      if (!plan_panel.Inset(kBoringRadius).Contains(frames[i].ToSheet({boring->easting, boring->northing})))
        return false;
    }
  }
  return true;
}

// Without a plan the strips follow the stations of the profile.
void ReportPlan::CutProfile() {
  Interval own;
  for (const kovltype& point : profile.Points()) own.Add(point.y);
  const double low = std::max(own.low, stations.low);
  const double high = std::min(own.high, stations.high);
  if (!(low <= high)) return;
  const double width = room.plan.width - 2 * room.overlap;
  room.scale = IsScale(report.setup.scale) ? *report.setup.scale : StandardScale(1000 * (high - low) / width);
  const double step = NiceStepBelow(room.Metres(10));  // as those of the plan
  for (double from = low; (from < high || strips.empty()) && strips.size() <= kMostReportStrips;) {
    Strip strip{};
    strip.from = strip.first_station = from;
    // Ends at round stations, unless the rest fits.
    from = high - from <= room.Metres(width) ? high
                                             : std::floor((from + room.Metres(width)) / step + 1e-6) * step;
    strip.to = strip.last_station = from;
    strip.begin = std::max(own.low, strip.from - room.Metres(room.overlap));
    strip.end = std::min(own.high, strip.to + room.Metres(room.overlap));
    strips.push_back(std::move(strip));
  }
}

StripContent ReportPlan::Content(size_t i, const StripRoom& in) const {
  StripContent content{report.road, course, strips[i], in, strips.size() == 1, {}, {}, {}};
  if (i > 0) content.before = first_strip_sheet + i - 1;
  if (i + 1 < strips.size()) content.after = first_strip_sheet + i + 1;
  if (i < near.size()) content.borings = near[i];
  return content;
}

double ReportPlan::HeightScaleOfAll() const {
  constexpr double kNear = 10;  // m; a level further away is taken for a mistake
  double range = kLeastStripRange;
  for (size_t i = 0; i < strips.size(); ++i) {
    const Interval with_overlap = strips[i].Stations().WidenedBy(room.Metres(kOverlap));
    Interval levels = LevelsOver(profile, with_overlap, room.Metres(1));
    const Interval reach = levels.WidenedBy(std::max(kNear, levels.Size()));
    for (const PlotBoring* boring : near[i])
      if (boring->level && reach.Contains(*boring->level)) levels.Add(*boring->level);
    range = std::max(range, levels.Size());
  }
  const double least = 1000 * range / RoomForLevels(profile_panel.height);
  return StandardScale(std::max(least, room.scale / kMostStripExaggerated));
}

void ReportPlan::PlaceBorings() {
  too_many = strips.size() > kMostReportStrips;
  if (too_many) strips.clear();
  near.assign(strips.size(), {});
  nowhere.clear();
  for (const PlotBoring& boring : report.road.borings) {
    if (!boring.placed) continue;
    std::optional<double> along = boring.station;
    if (HasPlan()) along = course.Find(boring.station, {boring.easting, boring.northing});
    bool drawn = false;
    if (along) {
      const auto ends_before = [](const Strip& strip, double at) { return strip.end < at; };
      for (auto strip = std::lower_bound(strips.begin(), strips.end(), *along, ends_before);
           strip != strips.end() && strip->begin <= *along; ++strip) {
        near[static_cast<size_t>(strip - strips.begin())].push_back(&boring);
        drawn = drawn || (*along >= strip->from && *along <= strip->to);
      }
    }
    if (!drawn) nowhere.push_back(&boring);
  }
  for (auto& borings : near) std::stable_sort(borings.begin(), borings.end(), IsBefore);
}

// Borings without a place are drawn wherever a plan shows their coordinates.
void ReportPlan::PlaceStrays() {
  for (const PlotBoring& boring : report.road.borings) {
    if (boring.placed || !IsDrawable(boring.easting) || !IsDrawable(boring.northing)) continue;
    for (size_t i = 0; i < frames.size(); ++i)
      if (plan_panel.Inset(kBoringRadius).Contains(frames[i].ToSheet({boring.easting, boring.northing})))
        near[i].push_back(&boring);
  }
}

std::vector<std::string> ReportPlan::Notes() const {
  std::vector<std::string> notes;
  const bool km = report.road.km_stations;
  if (too_many)
    notes.push_back("At " + ScaleText(room.scale) + " the road takes more than " +
                    std::to_string(kMostReportStrips) + " sheets: none of them is drawn");
  if (strips.empty() && !too_many && (HasPlan() || HasProfile()))
    notes.push_back("The road has none of the stations " + StationText(stations.low, km) + " to " +
                    StationText(stations.high, km));
  if (!HasProfile()) notes.emplace_back("No profile");
  if (!HasPlan()) notes.emplace_back("No plan");
  if (const size_t left_out = course.Path().LeftOut() + profile.LeftOut(); left_out > 0)
    notes.push_back(Counted(left_out, "point") + " without usable numbers left out");
  if (course.Stretches().size() > 1)
    notes.push_back("The stations jump or turn back: " + std::to_string(course.Stretches().size()) +
                    " stretches of the road have their own sheets");
  if (HasPlan() && HasProfile()) {
    Interval plan;
    Interval levels;
    for (const kovltype& point : course.Path().Points()) plan.Add(point.sek);
    for (const kovltype& point : profile.Points()) levels.Add(point.y);
    if (levels.low < plan.low - 1 || levels.high > plan.high + 1)
      notes.push_back("The profile has stations beyond the plan, from " + StationText(levels.low, km) +
                      " to " + StationText(levels.high, km));
  }
  const auto placed = std::count_if(report.road.borings.begin(), report.road.borings.end(),
                                    [](const PlotBoring& b) { return b.placed; });
  const size_t borings = report.road.borings.size();
  if (borings == 0)
    notes.emplace_back("No borings");
  else
    notes.push_back(Counted(borings, "boring") + ", " + std::to_string(placed) + " of them along the road");
  return notes;
}

}  // namespace velmora::drawing
