#include "velmora/drawing/profile_view.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/profile_borings.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLeftMargin = 20;  // mm, for the levels
constexpr double kRightMargin = 10;
constexpr double kTopMargin = 10;
constexpr double kRowHeight = 5.5;      // of the table below the axis
constexpr double kBelow = 9;            // mm between the lowest level and the axis
constexpr double kAbove = 20;           // mm over the highest, for names
constexpr double kStationSpacing = 15;  // mm, at least
constexpr double kLevelSpacing = 8;
constexpr double kNumberAside = 6;  // mm, how far a station may reach beyond the plot
constexpr double kLeastStep = 10;   // m between numbered stations
constexpr size_t kMostVertexMarks = 100;
constexpr double kVertexSpacing = 9;  // mm on average, for their levels to be written

Range StationsOf(const ProfileLine& line, const PlanPath& path) {
  Range range{line.Points().front().y, line.Points().front().y};
  const auto add = [&](double station) {
    range = {std::min(range.low, station), std::max(range.high, station)};
  };
  for (const kovltype& point : line.Points()) add(point.y);
  // The plan's stations too, unless they are another road's.
  Range plan = range;
  for (const kovltype& point : path.Points()) {
    plan = {std::min(plan.low, point.sek), std::max(plan.high, point.sek)};
  }
  return plan.Size() <= 2 * range.Size() ? plan : range;
}

Range LevelsOf(const std::vector<ProfilePlace>& samples, const PlotInput& input) {
  constexpr double kNear = 10;  // m; a level further off is taken for a slip
  Range range{samples.front().level, samples.front().level};
  const auto add = [&](double level) { range = {std::min(range.low, level), std::max(range.high, level)}; };
  for (const ProfilePlace& place : samples) add(place.level);
  const double near = std::max(kNear, range.Size());
  const Range reach{range.low - near, range.high + near};
  for (const PlotBoring& boring : input.borings) {
    if (boring.placed && boring.level && reach.Holds(*boring.level)) add(*boring.level);
  }
  return range;
}

void DrawAxes(const ProfileSheet& sheet) {
  const Panel& plot = sheet.plot;
  const Range levels = sheet.frame.Levels();
  const Range stations = sheet.frame.Stations();
  const double level_step = NiceStep(sheet.frame.MetresUp(kLevelSpacing));
  const int decimals = level_step < 0.1 ? 2 : level_step < 1 ? 1 : 0;
  const double widest = TextWidth(
      RoundStationText(std::max(std::fabs(stations.low), std::fabs(stations.high)), sheet.km), kLabelSize);
  const double station_step =
      NiceStep(std::max(kLeastStep, sheet.frame.MetresAlong(std::max(kStationSpacing, widest))));

  for (const double level : Ticks(levels.low, levels.high, level_step)) {
    const double y = sheet.frame.ToSheet({0, level}).y;
    {
      Svg::Group group(sheet.svg, kGrid);
      sheet.svg.Line({plot.x, y}, {plot.Right(), y});
    }
    Svg::Group group(sheet.svg, kText);
    sheet.svg.Text({plot.x - 1.5, y}, FormatFixed(level, decimals),
                   {.size = kLabelSize, .anchor = TextAnchor::kEnd});
  }
  const double first_row = plot.Bottom() + kRowHeight / 2;
  const double second_row = first_row + kRowHeight;
  for (const double station : Ticks(stations.low, stations.high, station_step)) {
    const double x = sheet.frame.ToSheet({station, 0}).x;
    {
      Svg::Group group(sheet.svg, kGrid);
      sheet.svg.Line({x, plot.y}, {x, plot.Bottom()});
    }
    {
      Svg::Group group(sheet.svg, kHairline);
      sheet.svg.Line({x, plot.Bottom()}, {x, plot.Bottom() + 1});
    }
    // A long number at the very edge would reach over the table's heading or the frame.
    const double half = TextWidth(RoundStationText(station, sheet.km), kLabelSize) / 2;
    if (half > x - plot.x + kNumberAside || half > plot.Right() - x + kNumberAside) continue;
    {
      Svg::Group group(sheet.svg, kText);
      sheet.svg.Text({x, second_row}, RoundStationText(station, sheet.km), {.size = kLabelSize});
    }
    if (const auto level = sheet.line.LevelAt(station)) {
      Svg::Group group(sheet.svg, kRoadText);
      sheet.svg.Text({x, first_row}, FormatFixed(*level, 2), {.size = kLabelSize});
    }
  }
  {
    Svg::Group group(sheet.svg, kHairline);
    sheet.svg.Rectangle(plot.x, plot.y, plot.width, plot.height);
    for (const double row : {1.0, 2.0}) {
      const double y = plot.Bottom() + row * kRowHeight;
      sheet.svg.Line({plot.x - kLeftMargin + 3, y}, {plot.Right(), y});
    }
  }
  Svg::Group group(sheet.svg, kText);
  const double left = plot.x - kLeftMargin + 4;
  sheet.svg.Text({left, first_row}, "Level", {.size = kLabelSize, .anchor = TextAnchor::kStart});
  sheet.svg.Text({left, second_row}, "Station", {.size = kLabelSize, .anchor = TextAnchor::kStart});
}

void DrawLine(const ProfileSheet& sheet, const std::vector<ProfilePlace>& samples) {
  std::vector<SheetPoint> points;
  for (const ProfilePlace& place : samples) points.push_back(sheet.frame.ToSheet(place));
  for (size_t i = 0; i + 1 < points.size() && i < 4000; ++i) {
    sheet.room.AddLine(LineBox(points[i], points[i + 1], 1.2));
  }
  Svg::Group group(sheet.svg, kRoad);
  sheet.svg.Polyline(points);
}

// The profile's own points, each with its level below the line or, where that is taken, above.
void DrawVertices(const ProfileSheet& sheet) {
  const auto& points = sheet.line.Points();
  if (points.size() > kMostVertexMarks) return;
  const bool labelled = static_cast<double>(points.size()) * kVertexSpacing < sheet.plot.width;
  for (const kovltype& point : points) {
    const SheetPoint at = sheet.frame.ToSheet({point.y, point.x});
    {
      Svg::Group group(sheet.svg, kRoadMark);
      sheet.svg.Circle(at, 0.6);
    }
    if (!labelled) continue;
    const std::string text = FormatFixed(point.x, 2);
    std::vector<Box> boxes;
    for (const double up : {-2.6, -3.6, -5.0, -6.5, 2.6, 3.6, 5.0, 6.5}) {
      for (const double aside : {0.0, 3.0, -3.0}) {
        boxes.push_back(TextBox({at.x + aside, at.y - up}, text, kSmallSize));
      }
    }
    if (const auto placed = PlaceFirst(sheet.room, boxes)) {
      Svg::Group group(sheet.svg, kRoadText);
      sheet.svg.Text(boxes[*placed].centre, text, {.size = kSmallSize});
    }
  }
}

}  // namespace

ProfileSummary DrawProfile(Svg& svg, const Panel& panel, const PlotInput& input, const PlanPath& path,
                           const ProfileLine& profile, double plan_scale) {
  const Panel plot = {panel.x + kLeftMargin, panel.y + kTopMargin, panel.width - kLeftMargin - kRightMargin,
                      panel.height - kTopMargin - 2 * kRowHeight - 3};
  const Range stations = StationsOf(profile, path);
  const double fine = stations.Size() / plot.width;  // m in a millimetre, or a little less
  const Range levels = LevelsOf(profile.Samples(fine), input);
  const ProfileFrame frame(stations, levels, plot, kBelow, kAbove, plan_scale);

  ProfileSummary summary;
  const double times = frame.Exaggeration();
  summary.scales = "lengths " + ScaleText(frame.LengthScale()) + ", heights " +
                   ScaleText(frame.HeightScale()) +
                   (times == 1 ? "" : ", " + PlainNumber(times) + " times exaggerated");
  {
    Svg::Group group(svg, kText);
    svg.Text({panel.x + 4, panel.y + 5}, "Profile: " + summary.scales,
             {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true});
  }

  LabelRoom room(plot.Inset(0.5).AsBox());
  const ProfileSheet sheet{svg, plot, frame, profile, room, input.km_stations};
  const std::vector<ProfilePlace> samples = profile.Samples(frame.MetresAlong(1));
  DrawAxes(sheet);
  const std::vector<BoringInProfile> borings = BoringsIn(sheet, input, &summary.off_sheet);
  const bool labelled = borings.size() <= kMostLabelledBorings;
  DrawLine(sheet, samples);
  if (labelled) {
    DrawMarkers(sheet, borings);
  } else {
    DrawLevelDots(sheet, borings);
  }
  DrawVertices(sheet);
  if (labelled) summary.without_label = LabelMarkers(sheet, borings);
  return summary;
}

}  // namespace velmora::drawing
