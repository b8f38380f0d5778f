#include <array>
#include <cmath>

#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLeastSpacing = 30;  // mm between crosses
constexpr double kCrossArm = 1.5;
constexpr double kEdgeTick = 1.5;

// One family of grid lines: those of equal northing or those of equal easting.
struct GridLines {
  const char* letter;
  std::vector<double> values;
  PlanePoint along;  // the unit vector that a line runs along
  PlanePoint across;
};

SheetPoint OnLine(const PlanSheet& sheet, const GridLines& lines, double value, double along) {
  return sheet.frame.ToSheet(
      {lines.across.h * value + lines.along.h * along, lines.across.v * value + lines.along.v * along});
}

// A line's number is placed where the line meets the left edge or, when it is steep, the lower edge.
void NumberLines(const PlanSheet& sheet, const GridLines& lines) {
  const SheetRect& panel = sheet.panel;
  const SheetPoint direction = sheet.frame.Direction(lines.along);
  const bool at_left = std::fabs(direction.x) >= std::fabs(direction.y);
  for (const double value : lines.values) {
    const SheetPoint any = OnLine(sheet, lines, value, 0);
    const std::string text = lines.letter + FormatFixed(value, 0);
    const double half = TextWidth(text, kSmallSize) / 2;
    SheetPoint edge;
    SheetPoint tick;
    SheetPoint label;
    if (at_left) {
      edge = {panel.x, any.y + (panel.x - any.x) * direction.y / direction.x};
      tick = {edge.x + kEdgeTick, edge.y};
      label = {tick.x + 0.6 + half, edge.y};
    } else {
      edge = {any.x + (panel.Bottom() - any.y) * direction.x / direction.y, panel.Bottom()};
      tick = {edge.x, edge.y - kEdgeTick};
      label = {edge.x, tick.y - 1.4};
    }
    const std::array box = {TextBox(label, text, kSmallSize)};
    if (WriteInFirst(sheet.canvas, sheet.obstacles, box, text, kSmallSize, kGridText))
      sheet.canvas.Line(edge, tick, kCross);
  }
}

}  // namespace

void DrawGrid(const PlanSheet& sheet) {
  const SheetRect& panel = sheet.panel;
  Interval easting;
  Interval northing;
  for (const double x : {panel.x, panel.Right()}) {
    for (const double y : {panel.y, panel.Bottom()}) {
      const PlanePoint corner = sheet.frame.FromSheet({x, y});
      easting.Add(corner.h);
      northing.Add(corner.v);
    }
  }
  const double step = NiceStep(sheet.frame.Metres(kLeastSpacing));
  const GridLines northings = {"N ", Ticks(northing, step), {1, 0}, {0, 1}};
  const GridLines eastings = {"E ", Ticks(easting, step), {0, 1}, {1, 0}};
  NumberLines(sheet, northings);
  NumberLines(sheet, eastings);

  const SheetPoint east = sheet.frame.Direction({kCrossArm, 0});
  const SheetPoint north = sheet.frame.Direction({0, kCrossArm});
  const SheetRect inside = panel.Inset(2 * kCrossArm);
  for (const double v : northings.values) {
    for (const double h : eastings.values) {
      const SheetPoint p = sheet.frame.ToSheet({h, v});
      const RotatedBox box = {p, kCrossArm, kCrossArm};
      if (!inside.Contains(p) || !sheet.obstacles.AllowsLeader(box)) continue;
      for (const SheetPoint arm : {east, north}) {
        const SheetPoint from = {p.x - arm.x, p.y - arm.y};
        const SheetPoint to = {p.x + arm.x, p.y + arm.y};
        sheet.canvas.Line(from, to, kCross);
        sheet.obstacles.AddLine(LineBox(from, to, 0.3));
      }
    }
  }
}

void DrawNorthArrow(const PlanSheet& sheet) {
  constexpr double kReach = 8.5;
  const SheetRect inside = sheet.panel.Inset(kReach + 1.5);
  const std::array corners = {SheetPoint{inside.Right(), inside.y}, SheetPoint{inside.x, inside.y + 6},
                              SheetPoint{inside.Right(), inside.Bottom()},
                              SheetPoint{inside.x + 16, inside.Bottom() - 4}};
  SheetPoint centre = corners[0];
  for (const SheetPoint& corner : corners) {
    if (!sheet.obstacles.AllowsLabel({corner, kReach, kReach})) continue;
    centre = corner;
    break;
  }
  sheet.obstacles.AddSolid({centre, kReach, kReach});

  const SheetPoint north = sheet.frame.Direction({0, 1});
  const SheetPoint east = sheet.frame.Direction({1, 0});
  const auto at = [&](double to_east, double to_north) {
    return SheetPoint{centre.x + east.x * to_east + north.x * to_north,
                      centre.y + east.y * to_east + north.y * to_north};
  };
  const PathPoint tip = {at(0, 4.5)};
  const PathPoint notch = {at(0, -4.6)};
  sheet.canvas.Path(std::array{tip, PathPoint{at(2.4, -6.5)}, notch}, true, kArrowLight);
  sheet.canvas.Path(std::array{tip, PathPoint{at(-2.4, -6.5)}, notch}, true, kArrowDark);
  sheet.canvas.Text(at(0, 6.7), "N", {.size = 3.4, .bold = true}, kArrowText);
}

}  // namespace velmora::drawing
