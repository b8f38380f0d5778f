#include "velmora/drawing/strip_profile.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/drawing/bands.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/profile_parts.h"
#include "velmora/drawing/profile_sections.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kHeading = 7;  // mm above the plot
constexpr double kBelow = 5;    // mm of the plot below the lowest level
constexpr double kAbove = 14;   // over the highest, for names
constexpr double kHeadings = 15;
constexpr double kLeastSection = 15;  // mm
constexpr double kRows = 2 * kProfileRow + kBandHeight;

// Where the plot begins, and its width, over these stations with their overlaps.
SheetRect PlotOf(const SheetRect& panel, const StripContent& content, Interval* stations) {
  const StripRoom& room = content.room;
  const Strip& strip = content.strip;
  double before = strip.from - strip.begin;
  double after = strip.end - strip.to;
  if (strip.is_turned) std::swap(before, after);
  *stations = {strip.Stations().low - before, strip.Stations().high + after};
  const double width = std::max(1.0, stations->Size() * 1000 / room.scale);
  const double spare = std::max(0.0, room.plan.width - width);
  const double left =
      room.plan.x +
      (content.centred ? spare / 2 : std::clamp(room.overlap - before * 1000 / room.scale, 0.0, spare));
  return {left, panel.y + kHeading, width, panel.height - kHeading - kRows};
}

// The level at the lower edge: a round one that leaves the levels, and as many of the borings' as fit, in
// the height.
double BaseLevel(const ProfileSection& section, std::span<const PlotBoring* const> borings, double room,
                 double metres_up) {
  Interval levels = section.levels;
  std::vector<double> others;
  for (const PlotBoring* boring : borings) {
    if (boring->placed && boring->level && IsDrawable(*boring->level) &&
        section.stations.Contains(boring->station))
      others.push_back(*boring->level);
  }
  std::sort(others.begin(), others.end(), [&](double a, double b) {
    return std::fabs(a - section.levels.Middle()) < std::fabs(b - section.levels.Middle());
  });
  for (const double level : others) {
    Interval with = levels;
    with.Add(level);
    if (with.Size() <= room) levels = with;
  }
  const double spare = room - levels.Size();
  const double base = levels.low - metres_up * kBelow - spare / 2;
  const double step = NiceStepBelow(metres_up * kBelow);
  const double rounded = std::floor(base / step) * step;
  return std::isfinite(rounded) ? rounded : base;
}

}  // namespace

double RoomForLevels(double panel_height) {
  // A round reference level costs up to kBelow.
  return panel_height - kHeading - kRows - 2 * kBelow - kAbove;
}

Interval LevelsOver(const ProfileLine& profile, const Interval& stations, double step) {
  Interval levels;
  for (const ProfilePoint& p : CutToStations(profile.Part(stations).Samples(step), stations))
    levels.Add(p.level);
  return levels;
}

StripProfileSummary DrawStripProfile(Canvas& canvas, const SheetRect& panel, const StripContent& content,
                                     const ProfileLine& whole, const ProfileStyle& style, BoringKey* key) {
  StripProfileSummary summary;
  for (const PlotBoring* boring : content.borings)
    if (boring->placed && !boring->level) summary.without_level.push_back(boring);
  Interval stations;
  const SheetRect plot = PlotOf(panel, content, &stations);
  const double scale = content.room.scale;
  const ProfileLine profile = whole.Part(stations);
  const std::vector<ProfilePoint> line = CutToStations(profile.Samples(content.room.Metres(1)), stations);
  const double metres_up = style.height_scale / 1000;
  const double room = RoomForLevels(panel.height) * metres_up;
  std::vector<ProfileSection> sections = SectionsOf(line, room, content.room.Metres(kLeastSection));
  if (sections.empty()) {
    Interval levels;
    for (const PlotBoring* boring : content.borings)
      if (boring->placed && boring->level && IsDrawable(*boring->level)) {
        levels.Add(*boring->level);
        break;
      }
    if (levels.high < levels.low) levels.Add(0);
    sections.push_back({stations, levels});
  }
  sections.front().stations.low = stations.low;
  sections.back().stations.high = stations.high;

  Obstacles obstacles(plot.Inset(0.5));
  const double middle = stations.Middle();
  const auto x_of = [&](double station) {
    return plot.x + plot.width / 2 + (station - middle) * 1000 / scale;
  };
  std::vector<BoringInProfile> borings;
  for (size_t i = 0; i < sections.size(); ++i) {
    const ProfileSection& section = sections[i];
    const double base = BaseLevel(section, content.borings, room, metres_up);
    const ProfileFrame frame(plot, scale, style.height_scale, middle, base);
    const double left = x_of(section.stations.low);
    const SheetRect part = {left, plot.y, x_of(section.stations.high) - left, plot.height};
    const ProfileSheet sheet{canvas,    part,          frame, profile, obstacles, content.input.km_stations,
                             kHeadings, style.decimals};
    DrawLevelLines(sheet);
    const std::string reference = "Reference level " + FormatFixed(base, style.decimals);
    const std::array places = {TextBox(
        {part.x + 1.5 + TextWidth(reference, kSmallSize) / 2, part.Bottom() - 1.8}, reference, kSmallSize)};
    WriteInFirst(canvas, obstacles, places, reference, kSmallSize, kText);
    if (i > 0) {
      canvas.Line({part.x, part.y}, {part.x, part.Bottom()}, kMatchLine);
      obstacles.AddLine(LineBox({part.x, part.y}, {part.x, part.Bottom()}, 0.4));
    }
    if (i == 0) {
      const ProfileSheet all{canvas,    plot,          frame, profile, obstacles, content.input.km_stations,
                             kHeadings, style.decimals};
      DrawStationAxis(all);
    }
    for (const auto& piece : Clip(line, section.stations, frame.Levels())) DrawProfileLine(sheet, piece);
    std::vector<const PlotBoring*> own;
    for (const PlotBoring* boring : content.borings)
      if (section.stations.Contains(boring->station) && (i == 0 || boring->station > section.stations.low))
        own.push_back(boring);
    BoringsOfProfile found = BoringsInProfile(sheet, own);
    borings.insert(borings.end(), found.in_plot.begin(), found.in_plot.end());
    summary.outside.insert(summary.outside.end(), found.outside.begin(), found.outside.end());
    DrawVertices(sheet);
  }
  const ProfileFrame frame(plot, scale, style.height_scale, middle, 0);
  const ProfileSheet sheet{canvas,    plot,          frame, profile, obstacles, content.input.km_stations,
                           kHeadings, style.decimals};
  if (borings.size() <= kMostCircledBorings) {
    DrawMarkers(sheet, borings);
  } else {
    for (BoringInProfile& b : borings) b.line_y = b.at.y;  // without a line to the road's
    DrawLevelDots(sheet, borings);
  }
  summary.without_label =
      borings.size() <= kMostLabelledBorings ? LabelMarkers(sheet, borings, key) : borings.size();
  const SheetRect band = {plot.x, plot.Bottom() + 2 * kProfileRow, plot.width, kBandHeight};
  canvas.Line({plot.x - kHeadings, band.Bottom()}, {plot.Right(), band.Bottom()}, kHairline);
  canvas.Text({plot.x - kHeadings + 1, band.y + band.height / 2}, "Plan",
              {.size = kLabelSize, .anchor = TextAnchor::kStart}, kText);
  DrawPlanBand(canvas, band, content.course, content.strip.begin, content.strip.end, x_of);
  return summary;
}

}  // namespace velmora::drawing
