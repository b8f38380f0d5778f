#include "velmora/drawing/profile_parts.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/style.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kStationSpacing = 15;  // mm, at least
constexpr double kLevelSpacing = 8;
constexpr double kNumberAside = 6;       // mm, how far a station may reach beyond the plot
constexpr double kLeastStationStep = 1;  // m between numbered stations
constexpr size_t kMostProfileMarks = 100;
constexpr double kVertexSpacing = 9;        // mm on average, for their levels to be written
constexpr double kLongestProfileName = 20;  // mm
constexpr double kHalfBar = 1.3;            // mm, of a boring's mark

std::string LevelText(const ProfileSheet& sheet, double level) {
  const double step = LevelStep(sheet.frame);
  return FormatFixed(level, step < 0.1 ? 2 : step < 1 ? 1 : 0);
}

}  // namespace

double LevelStep(const ProfileFrame& frame) { return NiceStep(frame.MetresUp(kLevelSpacing)); }

void DrawLevelLines(const ProfileSheet& sheet, bool numbers) {
  const SheetRect& plot = sheet.plot;
  for (const double level : Ticks(sheet.frame.Levels(), LevelStep(sheet.frame))) {
    const double y = sheet.frame.ToSheet({0, level}).y;
    sheet.canvas.Line({plot.x, y}, {plot.Right(), y}, kGrid);
    if (!numbers) continue;
    sheet.canvas.Text({plot.x - 1.5, y}, LevelText(sheet, level),
                      {.size = kLabelSize, .anchor = TextAnchor::kEnd}, kText);
  }
}

void DrawLevelNumbers(const ProfileSheet& sheet) {
  for (const double level : Ticks(sheet.frame.Levels(), LevelStep(sheet.frame))) {
    const std::string text = LevelText(sheet, level);
    const SheetPoint at = {sheet.plot.x + 1 + TextWidth(text, kLabelSize) / 2,
                           sheet.frame.ToSheet({0, level}).y};
    const std::array box = {TextBox(at, text, kLabelSize)};
    WriteInFirst(sheet.canvas, sheet.obstacles, box, text, kLabelSize, kText);
  }
}

void DrawStationAxis(const ProfileSheet& sheet) {
  const SheetRect& plot = sheet.plot;
  const Interval stations = sheet.frame.Stations();
  const double widest = TextWidth(
      RoundStationText(std::max(std::fabs(stations.low), std::fabs(stations.high)), sheet.km), kLabelSize);
  const double station_step =
      NiceStep(std::max(kLeastStationStep, sheet.frame.MetresAlong(std::max(kStationSpacing, widest))));
  const double first_row = plot.Bottom() + kProfileRow / 2;
  const double second_row = first_row + kProfileRow;
  for (const double station : Ticks(stations, station_step)) {
    const double x = sheet.frame.ToSheet({station, 0}).x;
    sheet.canvas.Line({x, plot.y}, {x, plot.Bottom()}, kGrid);
    sheet.canvas.Line({x, plot.Bottom()}, {x, plot.Bottom() + 1}, kHairline);
    // A long number at the very edge would reach over the table's heading or the frame.
    const std::string text = RoundStationText(station, sheet.km);
    const double half = TextWidth(text, kLabelSize) / 2;
    if (half > x - plot.x + kNumberAside || half > plot.Right() - x + kNumberAside) continue;
    sheet.canvas.Text({x, second_row}, text, {.size = kLabelSize}, kText);
    if (const auto level = sheet.line.LevelAt(station))
      sheet.canvas.Text({x, first_row}, FormatFixed(*level, sheet.decimals), {.size = kLabelSize}, kRoadText);
  }
  sheet.canvas.Rectangle(plot, kHairline);
  for (const double row : {1.0, 2.0}) {
    const double y = plot.Bottom() + row * kProfileRow;
    sheet.canvas.Line({plot.x - sheet.left_margin, y}, {plot.Right(), y}, kHairline);
  }
  const double left = plot.x - sheet.left_margin + 1;
  const TextFormat heading = {.size = kLabelSize, .anchor = TextAnchor::kStart};
  sheet.canvas.Text({left, first_row}, "Level", heading, kText);
  sheet.canvas.Text({left, second_row}, "Station", heading, kText);
}

void DrawProfileLine(const ProfileSheet& sheet, const std::vector<ProfilePoint>& samples) {
  constexpr size_t kMostLineBoxes = 4000;
  std::vector<PathPoint> points;
  points.reserve(samples.size());
  for (const ProfilePoint& sample : samples) points.push_back({sheet.frame.ToSheet(sample)});
  for (size_t i = 0; i + 1 < points.size() && i < kMostLineBoxes; ++i)
    sheet.obstacles.AddLine(LineBox(points[i].at, points[i + 1].at, 1.2));
  sheet.canvas.Path(points, false, kRoad);
}

void DrawVertices(const ProfileSheet& sheet) {
  const auto& points = sheet.line.Points();
  if (points.size() > kMostProfileMarks) return;
  const bool labelled = static_cast<double>(points.size()) * kVertexSpacing < sheet.plot.width;
  for (const kovltype& point : points) {
    const SheetPoint at = sheet.frame.ToSheet({point.y, point.x});
    if (!sheet.plot.Contains(at)) continue;
    sheet.canvas.Circle(at, 0.6, kRoadMark);
    if (!labelled) continue;
    const std::string text = FormatFixed(point.x, sheet.decimals);
    std::vector<RotatedBox> boxes;
    for (const double down : {2.6, 3.6, 5.0, 6.5, -2.6, -3.6, -5.0, -6.5}) {
      for (const double aside : {0.0, 3.0, -3.0})
        boxes.push_back(TextBox({at.x + aside, at.y + down}, text, kSmallSize));
    }
    WriteInFirst(sheet.canvas, sheet.obstacles, boxes, text, kSmallSize, kRoadText);
  }
}

BoringsOfProfile BoringsInProfile(const ProfileSheet& sheet, std::span<const PlotBoring* const> borings) {
  BoringsOfProfile found;
  for (const PlotBoring* boring : borings) {
    if (!boring->placed || !boring->level) continue;
    const SheetPoint at = sheet.frame.ToSheet({boring->station, *boring->level});
    if (!IsDrawable(boring->station) || !IsDrawable(*boring->level) || !sheet.plot.Contains(at)) {
      found.outside.push_back(boring);
      continue;
    }
    const auto level = sheet.line.LevelAt(boring->station);
    const double line_y = level ? sheet.frame.ToSheet({boring->station, *level}).y : at.y;
    found.in_plot.push_back({boring, at, std::clamp(line_y, sheet.plot.y, sheet.plot.Bottom())});
  }
  return found;
}

void ReserveMarkers(const ProfileSheet& sheet, std::vector<BoringInProfile>& borings) {
  const bool bars = borings.size() <= kMostCircledBorings;
  for (BoringInProfile& b : borings) {
    if (!bars) {
      b.line_y = b.at.y;
      if (borings.size() <= kMostLabelledBorings)
        sheet.obstacles.AddSolid({b.at, kManyDotsRadius, kManyDotsRadius});
    } else {
      sheet.obstacles.AddLine(LineBox(b.at, {b.at.x, b.line_y}, 0.3));
      sheet.obstacles.AddSolid({b.at, kHalfBar, 0.25});
    }
  }
}

void DrawMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings) {
  if (borings.size() > kMostCircledBorings) {
    std::vector<SheetPoint> dots;
    for (const BoringInProfile& b : borings) dots.push_back(b.at);
    sheet.canvas.Dots(dots, kManyDotsRadius, kBoringDot);
    return;
  }
  for (const BoringInProfile& b : borings) sheet.canvas.Line(b.at, {b.at.x, b.line_y}, kBoringLine);
  for (const BoringInProfile& b : borings)
    sheet.canvas.Line({b.at.x - kHalfBar, b.at.y}, {b.at.x + kHalfBar, b.at.y}, kBoringLevel);
}

namespace {

// The places of an upright label: near ones first, those above the marker before those below.
LabelPlaces PlacesBeside(const BoringInProfile& b, double half_length, double half_width) {
  std::vector<LabelPlace> places;
  const double top = std::min(b.at.y, b.line_y);
  const double bottom = std::max(b.at.y, b.line_y);
  // With a leader where it is not right over the marker.
  const auto add = [&](bool above, double gap, double aside) {
    const double y = above ? top - gap - half_length : bottom + gap + half_length;
    LabelPlace& place = places.emplace_back(LabelPlace{{{b.at.x + aside, y}, half_length, half_width, -90}});
    if (gap > 2 || aside != 0)
      place.leader = {{b.at.x, above ? top - 0.5 : bottom + 0.5},
                      {b.at.x + aside, above ? y + half_length + 0.3 : y - half_length - 0.3}};
  };
  for (const bool above : {true, false}) {
    for (const double gap : {1.2, 2.0, 2.8, 3.6}) add(above, gap, 0.0);
    for (const double gap : {2.4, 4.0, 6.0, 8.0, 11.0, 14.0, 18.0, 23.0, 28.0})
      for (const double aside : {0.0, 2.9, -2.9, 5.8, -5.8}) add(above, gap, aside);
  }
  return [places = std::move(places)](size_t number) {
    return number < places.size() ? std::optional(places[number]) : std::nullopt;
  };
}

}  // namespace

size_t LabelMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings, BoringKey* key) {
  if (borings.size() > kMostLabelledBorings) return borings.size();
  const std::string widest = BoringKey::NumberText(borings.size() + key->Borings().size());
  const auto places = [&](size_t i, LabelKind kind) {
    const bool number = kind == LabelKind::kNumber;
    const double size = number ? kSmallSize : kLabelSize;
    const RotatedBox text = TextBox({}, number ? widest : borings[i].boring->id, size);
    if (2 * text.half_width > kLongestProfileName ||
        (!number && BoringKey::IsNumberText(borings[i].boring->id)))
      return NoPlaces();
    return PlacesBeside(borings[i], text.half_width, text.half_height);
  };
  std::vector<SheetPoint> symbols;
  for (const BoringInProfile& b : borings) symbols.push_back(b.at);
  const auto labels = ChooseLabels(sheet.obstacles, symbols, places);
  size_t without = 0;
  for (size_t i = 0; i < labels.size(); ++i) {
    const PlotBoring& boring = *borings[i].boring;
    if (!labels[i] || (labels[i]->kind == LabelKind::kNumber && !key->HasRoomFor(boring))) {
      ++without;
      continue;
    }
    const auto& [kind, place] = *labels[i];
    if (place.leader) sheet.canvas.Line(place.leader->first, place.leader->second, kLeader);
    const bool number = kind == LabelKind::kNumber;
    sheet.canvas.Text(place.box.centre, number ? key->Number(boring) : boring.id,
                      {.size = number ? kSmallSize : kLabelSize, .angle = place.box.angle}, kBoringText);
  }
  return without;
}

}  // namespace velmora::drawing
