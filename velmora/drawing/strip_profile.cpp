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

constexpr double kStripHeading = 7;  // mm above the plot
constexpr double kStripBelow = 5;    // mm of the plot below the lowest level
constexpr double kStripAbove = 14;   // over the highest, for names
constexpr double kNames = 11;        // of it, at the least
constexpr double kLeastEdge = 1.5;   // between a boring's level and the plot's edge
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
  return {left, panel.y + kStripHeading, width, panel.height - kStripHeading - kRows};
}

// The level at the lower edge: a round one that leaves the levels and their names in the plot, and as many of
// the borings' levels as fit.
double BaseLevel(const ProfileSection& section, std::span<const PlotBoring* const> borings, double room,
                 double plot_height, double metres_up) {
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
  const double base = levels.low - metres_up * kStripBelow - spare / 2;
  const double step = NiceStepBelow(metres_up * kStripBelow);
  const double rounded = std::floor(base / step) * step;
  if (!std::isfinite(rounded)) return base;
  const double whole = plot_height * metres_up;
  const double edge = metres_up * kLeastEdge;
  const auto shown = [&](double from) {
    const Interval visible = {from + edge, from + whole - edge};
    return std::count_if(others.begin(), others.end(), [&](double level) { return visible.Contains(level); });
  };
  double best = rounded;
  auto most = shown(rounded);
  for (const double other :
       Ticks({section.levels.high + metres_up * kNames - whole, section.levels.low - edge}, step)) {
    const auto count = shown(other);
    const bool nearer = best != rounded && std::fabs(other - base) < std::fabs(best - base);
    if (count < most || (count == most && !nearer)) continue;
    best = other;
    most = count;
  }
  return best;
}

class StripProfile {
 public:
  StripProfile(Canvas& canvas, const SheetRect& panel, const StripContent& content, const ProfileLine& whole,
               const ProfileStyle& style)
      : canvas_(canvas),
        content_(content),
        style_(style),
        plot_(PlotOf(panel, content, &stations_)),
        profile_(whole.Part(stations_)),
        line_(CutToStations(profile_.Samples(content.room.Metres(1)), stations_)),
        obstacles_(plot_.Inset(0.5)) {
    const double metres_up = style.height_scale / 1000;
    const double room = RoomForLevels(panel.height) * metres_up;
    sections_ = SectionsOf(line_, room, content.room.Metres(kLeastSection));
    if (sections_.empty()) sections_.push_back({stations_, AnyLevel()});
    sections_.front().stations.low = stations_.low;
    sections_.back().stations.high = stations_.high;
    for (const ProfileSection& section : sections_) {
      const double base = BaseLevel(section, content.borings, room, plot_.height, metres_up);
      bases_.push_back(base);
      frames_.emplace_back(plot_, content.room.scale, style.height_scale, stations_.Middle(), base);
      const double left = XOf(section.stations.low);
      plots_.push_back({left, plot_.y, XOf(section.stations.high) - left, plot_.height});
    }
  }

  StripProfileSummary Draw(BoringKey* key) {
    for (size_t i = 0; i < sections_.size(); ++i) DrawLevelLines(Sheet(i), /*numbers=*/i == 0);
    DrawStationAxis({canvas_, plot_, frames_[0], profile_, obstacles_, content_.input.km_stations, kHeadings,
                     style_.decimals});
    for (size_t i = 1; i < sections_.size(); ++i) DrawStep(plots_[i]);
    for (size_t i = 0; i < sections_.size(); ++i)
      for (const auto& piece : Clip(line_, sections_[i].stations, frames_[i].Levels()))
        DrawProfileLine(Sheet(i), piece);
    StripProfileSummary summary;
    std::vector<BoringInProfile> borings = FindBorings(&summary);
    ReserveMarkers(Sheet(0), borings);
    for (size_t i = 0; i < sections_.size(); ++i) {
      if (i > 0) DrawLevelNumbers(Sheet(i));
      const std::string reference = "Reference level " + FormatFixed(bases_[i], style_.decimals);
      const double x = plots_[i].x + 1.5 + TextWidth(reference, kSmallSize) / 2;
      const std::array places = {TextBox({x, plot_.Bottom() - 1.8}, reference, kSmallSize),
                                 TextBox({x, plot_.y + 1.8}, reference, kSmallSize)};
      WriteInFirst(canvas_, obstacles_, places, reference, kSmallSize, kText);
    }
    for (size_t i = 0; i < sections_.size(); ++i) DrawVertices(Sheet(i));
    DrawMarkers(Sheet(0), borings);
    summary.without_label = LabelMarkers(Sheet(0), borings, key);
    if (content_.course.Length() > 0) DrawBand();
    return summary;
  }

 private:
  ProfileSheet Sheet(size_t i) {
    return {canvas_,   plots_[i],      frames_[i], profile_, obstacles_, content_.input.km_stations,
            kHeadings, style_.decimals};
  }
  double XOf(double station) const {
    return plot_.x + plot_.width / 2 + (station - stations_.Middle()) * 1000 / content_.room.scale;
  }

  // For a strip without a line.
  Interval AnyLevel() const {
    Interval level;
    for (const PlotBoring* boring : content_.borings) {
      if (!boring->placed || !boring->level || !IsDrawable(*boring->level)) continue;
      level.Add(*boring->level);
      return level;
    }
    level.Add(0);
    return level;
  }

  void DrawStep(const SheetRect& plot) {
    canvas_.Line({plot.x, plot.y}, {plot.x, plot.Bottom()}, kMatchLine);
    obstacles_.AddLine(LineBox({plot.x, plot.y}, {plot.x, plot.Bottom()}, 0.4));
  }

  std::vector<BoringInProfile> FindBorings(StripProfileSummary* summary) {
    std::vector<BoringInProfile> borings;
    for (const PlotBoring* boring : content_.borings)
      if (boring->placed && !boring->level) summary->without_level.push_back(boring);
    for (size_t i = 0; i < sections_.size(); ++i) {
      std::vector<const PlotBoring*> own;
      for (const PlotBoring* boring : content_.borings)
        if (sections_[i].stations.Contains(boring->station) &&
            (i == 0 || boring->station > sections_[i].stations.low))
          own.push_back(boring);
      const BoringsOfProfile found = BoringsInProfile(Sheet(i), own);
      borings.insert(borings.end(), found.in_plot.begin(), found.in_plot.end());
      summary->outside.insert(summary->outside.end(), found.outside.begin(), found.outside.end());
    }
    return borings;
  }

  void DrawBand() {
    const SheetRect band = {plot_.x, plot_.Bottom() + 2 * kProfileRow, plot_.width, kBandHeight};
    canvas_.Line({plot_.x - kHeadings, band.Bottom()}, {plot_.Right(), band.Bottom()}, kHairline);
    canvas_.Text({plot_.x - kHeadings + 1, band.y + band.height / 2}, "Plan",
                 {.size = kLabelSize, .anchor = TextAnchor::kStart}, kText);
    DrawPlanBand(canvas_, band, content_.course, content_.strip.begin, content_.strip.end,
                 [this](double station) { return XOf(station); });
  }

  Canvas& canvas_;
  const StripContent& content_;
  ProfileStyle style_;
  Interval stations_;
  SheetRect plot_;
  ProfileLine profile_;  // of these stations
  std::vector<ProfilePoint> line_;
  Obstacles obstacles_;
  std::vector<ProfileSection> sections_;
  std::vector<double> bases_;  // of each section
  std::vector<ProfileFrame> frames_;
  std::vector<SheetRect> plots_;
};

}  // namespace

double RoomForLevels(double panel_height) {
  // A round reference level costs up to kStripBelow.
  return panel_height - kStripHeading - kRows - 2 * kStripBelow - kStripAbove;
}

Interval LevelsOver(const ProfileLine& profile, const Interval& stations, double step) {
  Interval levels;
  for (const ProfilePoint& p : CutToStations(profile.Part(stations).Samples(step), stations))
    levels.Add(p.level);
  return levels;
}

StripProfileSummary DrawStripProfile(Canvas& canvas, const SheetRect& panel, const StripContent& content,
                                     const ProfileLine& profile, const ProfileStyle& style, BoringKey* key) {
  return StripProfile(canvas, panel, content, profile, style).Draw(key);
}

}  // namespace velmora::drawing
