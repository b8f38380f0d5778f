#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLineRoom = 1.4;        // mm, the width that labels keep clear
constexpr size_t kMostLineBoxes = 4000;  // for a line of any length
constexpr double kTick = 1.1;            // mm
constexpr double kLongTick = 2.2;
constexpr double kLabelSpacing = 13;  // mm along the line, at least
constexpr double kLeastStep = 1;      // m between labels
constexpr double kMostLabels = 400;
constexpr size_t kMostVertexMarks = 200;
constexpr double kFlattest = 0.002;          // mm of sagitta; less is drawn straight
constexpr double kLargestDrawnRadius = 5e6;  // mm

struct Tick {
  double station;
  bool labelled;
  SheetPoint at;
  SheetPoint right;  // unit vector to the right of the point list
};

SheetPoint RightOf(const PlanSheet& sheet, const PathPosition& place) {
  return sheet.frame.Direction({place.direction.v, -place.direction.h});
}

SheetPoint Along(SheetPoint from, SheetPoint unit, double distance) {
  return {from.x + unit.x * distance, from.y + unit.y * distance};
}

std::vector<Tick> TicksOf(const PlanSheet& sheet) {
  double stations = 0;
  for (const PathSegment& segment : sheet.path.Segments()) {
    stations += std::fabs(segment.B().sek - segment.A().sek);
  }
  std::vector<Tick> ticks;
  const double on_sheet = sheet.frame.Millimetres(sheet.path.Length());
  if (!(on_sheet > 0)) return ticks;
  const double step =
      NiceStep(std::max({kLeastStep, kLabelSpacing * stations / on_sheet, stations / kMostLabels}));
  const int parts = PartsOfStep(step);
  for (const PathSegment& segment : sheet.path.Segments()) {
    const double from = segment.A().sek;
    const double to = segment.B().sek;
    for (const double station : Ticks({std::min(from, to), std::max(from, to)}, step / parts)) {
      if (!ticks.empty() && ticks.back().station == station) continue;  // where two segments meet
      const PathPosition place = segment.AtStation(station);
      const bool labelled = std::fabs(std::remainder(station, step)) < step / 1000;
      ticks.push_back({station, labelled, sheet.frame.ToSheet(place.point), RightOf(sheet, place)});
    }
    if (ticks.size() > kMostTicks) break;
  }
  return ticks;
}

RotatedBox StationLabel(const Tick& tick, const std::string& text, double side) {
  const double reach = kLongTick + 0.8 + TextWidth(text, kLabelSize) / 2;
  return TextBox(Along(tick.at, tick.right, side * reach), text, kLabelSize,
                 ReadableAngle(tick.right.x, tick.right.y));
}

// -1 for the left, where rising stations are read from; 1 for the right if more labels fit there.
double RoomierSide(const PlanSheet& sheet, const std::vector<Tick>& ticks) {
  int balance = 0;
  for (const Tick& tick : ticks) {
    if (!tick.labelled) continue;
    const std::string text = RoundStationText(tick.station, sheet.km);
    balance += sheet.obstacles.AllowsLabel(StationLabel(tick, text, -1));
    balance -= sheet.obstacles.AllowsLabel(StationLabel(tick, text, 1));
  }
  return balance < 0 ? 1 : -1;
}

}  // namespace

void ReserveLine(const PlanSheet& sheet) {
  std::vector<SheetPoint> points;
  for (const PlanePoint& sample : sheet.path.Samples(sheet.frame.Metres(2), kMostLineBoxes)) {
    const SheetPoint p = sheet.frame.ToSheet(sample);
    const bool apart =
        points.empty() || std::hypot(p.x - points.back().x, p.y - points.back().y) > kLineRoom / 2;
    if (apart) points.push_back(p);
  }
  // A line that fills the sheet leaves labels no space anyway, so a part of its boxes is enough.
  const size_t stride = points.size() / (2 * kMostLineBoxes) + 1;
  for (size_t i = 0; i + stride < points.size(); i += stride) {
    sheet.obstacles.AddLine(LineBox(points[i], points[i + stride], kLineRoom));
  }
}

void DrawLine(const PlanSheet& sheet) {
  constexpr double kInvisible = 0.02;  // mm
  std::vector<PathPoint> line;
  const auto& segments = sheet.path.Segments();
  for (size_t i = 0; i < segments.size(); ++i) {
    const PathSegment& segment = segments[i];
    const SheetPoint to = sheet.frame.ToSheet(InPlane(segment.B()));
    if (line.empty()) line.push_back({sheet.frame.ToSheet(InPlane(segment.A()))});
    const double length = sheet.frame.Millimetres(segment.Length());
    const SheetPoint last = line.back().at;
    if (length < kInvisible && std::hypot(to.x - last.x, to.y - last.y) < kInvisible &&
        i + 1 < segments.size()) {
      continue;
    }
    const double radius = segment.Curve() ? sheet.frame.Millimetres(segment.Curve()->radius) : 0;
    if (radius > 0 && radius < kLargestDrawnRadius && length * std::fabs(segment.Sweep()) / 8 > kFlattest)
      line.back().bulge = segment.A().bulge;
    line.push_back({to});
  }
  sheet.canvas.Path(line, false, kRoad);
  if (segments.size() > kMostVertexMarks) return;
  for (size_t i = 1; i < segments.size(); ++i) {
    const SheetPoint at = sheet.frame.ToSheet(InPlane(segments[i].A()));
    const SheetPoint right = RightOf(sheet, segments[i].At(0));
    sheet.canvas.Line(Along(at, right, -1), Along(at, right, 1), kRoadThin);
  }
}

void DrawEnds(const PlanSheet& sheet, bool start, bool end) {
  constexpr double kSize = 2.6;
  constexpr double kBar = 2.4;  // mm to either side
  const auto& points = sheet.path.Points();
  if (points.empty()) return;
  const auto& segments = sheet.path.Segments();
  for (const bool is_start : {true, false}) {
    if (!(is_start ? start : end)) continue;
    const kovltype& point = is_start ? points.front() : points.back();
    if (!is_start && segments.empty()) break;
    const SheetPoint at = sheet.frame.ToSheet(InPlane(point));
    SheetPoint out = {-1, 0};
    std::string text = StationText(point.sek, sheet.km);
    if (segments.empty()) {
      sheet.canvas.Circle(at, kBoringRadius, kRoadMark);
    } else {
      const PathPosition place = is_start ? segments.front().At(0) : segments.back().At(1);
      const SheetPoint forward = sheet.frame.Direction(place.direction);
      const SheetPoint right = RightOf(sheet, place);
      out = is_start ? SheetPoint{-forward.x, -forward.y} : forward;
      sheet.canvas.Line(Along(at, right, -kBar), Along(at, right, kBar), kRoad);
      sheet.obstacles.AddLine(LineBox(Along(at, right, -kBar), Along(at, right, kBar), 0.8));
      text = (is_start ? "Start " : "End ") + text;
    }
    const auto label =
        TakeFirst(sheet.obstacles, PlacesAround(at, 1.2, TextWidth(text, kSize), kSize * 1.2, out));
    if (!label) continue;
    if (label->leader) sheet.canvas.Line(label->leader->first, label->leader->second, kRoadThin);
    sheet.canvas.Text(label->box.centre, text, {.size = kSize}, kRoadText);
  }
}

void DrawStations(const PlanSheet& sheet) {
  const std::vector<Tick> ticks = TicksOf(sheet);
  const double side = RoomierSide(sheet, ticks);
  const auto is_end = [&](double station) {  // the ends have labels already
    const auto& points = sheet.path.Points();
    return std::fabs(station - points.front().sek) < 1 || std::fabs(station - points.back().sek) < 1;
  };
  for (const Tick& tick : ticks) {
    double on = side;
    if (tick.labelled && !is_end(tick.station)) {
      const std::string text = RoundStationText(tick.station, sheet.km);
      const std::array boxes = {StationLabel(tick, text, side), StationLabel(tick, text, -side)};
      if (WriteInFirst(sheet.canvas, sheet.obstacles, boxes, text, kLabelSize, kStationText) == 1) on = -side;
    }
    const SheetPoint end = Along(tick.at, tick.right, on * (tick.labelled ? kLongTick : kTick));
    sheet.canvas.Line(tick.at, end, kStation);
    sheet.obstacles.AddLine(LineBox(tick.at, end, 0.3));
  }
}

void LabelRadii(const PlanSheet& sheet) {
  if (sheet.path.Segments().size() > kMostVertexMarks) return;
  for (const PathSegment& segment : sheet.path.Segments()) {
    if (!segment.Curve()) continue;
    const double radius = segment.Curve()->radius;
    const std::string text = "R " + FormatFixed(radius, radius < 100 ? 1 : 0);
    if (sheet.frame.Millimetres(segment.Length()) < TextWidth(text, kSmallSize)) continue;
    std::vector<RotatedBox> boxes;
    for (const double part : {0.5, 0.42, 0.58, 0.34, 0.66}) {
      const PathPosition place = segment.At(part);
      const SheetPoint forward = sheet.frame.Direction(place.direction);
      const SheetPoint inwards = RightOf(sheet, place);
      const double side = segment.Sweep() < 0 ? 1 : -1;
      for (const double distance : {2.2, 3.4, 5.0, -2.2, -3.4}) {
        boxes.push_back(TextBox(Along(sheet.frame.ToSheet(place.point), inwards, side * distance), text,
                                kSmallSize, ReadableAngle(forward.x, forward.y)));
      }
    }
    WriteInFirst(sheet.canvas, sheet.obstacles, boxes, text, kSmallSize, kRoadText);
  }
}

}  // namespace velmora::drawing
