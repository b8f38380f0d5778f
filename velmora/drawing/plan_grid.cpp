#include "velmora/drawing/plan_grid.h"

#include <algorithm>
#include <array>
#include <cmath>

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

// A line's number stands where the line meets the left edge or, running upwards, the bottom edge.
void NumberLines(const PlanSheet& sheet, const GridLines& lines) {
  const Panel& panel = sheet.panel;
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
    const Box box = TextBox(label, text, kSmallSize);
    if (!sheet.room.IsFree(box)) continue;
    sheet.room.AddSolid(box);
    Svg::Group group(sheet.svg, kGridText);
    sheet.svg.Text(label, text, {.size = kSmallSize});
    Svg::Group line(sheet.svg, kCross);
    sheet.svg.Line(edge, tick);
  }
}

}  // namespace

void DrawGrid(const PlanSheet& sheet) {
  const Panel& panel = sheet.panel;
  const std::array corners = {sheet.frame.FromSheet({panel.x, panel.y}),
                              sheet.frame.FromSheet({panel.Right(), panel.y}),
                              sheet.frame.FromSheet({panel.x, panel.Bottom()}),
                              sheet.frame.FromSheet({panel.Right(), panel.Bottom()})};
  const auto by_h = [](PlanePoint a, PlanePoint b) { return a.h < b.h; };
  const auto by_v = [](PlanePoint a, PlanePoint b) { return a.v < b.v; };
  const auto [left, right] = std::minmax_element(corners.begin(), corners.end(), by_h);
  const auto [low, high] = std::minmax_element(corners.begin(), corners.end(), by_v);
  const double step = NiceStep(sheet.frame.Metres(kLeastSpacing));
  const GridLines northings = {"N ", Ticks(low->v, high->v, step), {1, 0}, {0, 1}};
  const GridLines eastings = {"E ", Ticks(left->h, right->h, step), {0, 1}, {1, 0}};
  NumberLines(sheet, northings);
  NumberLines(sheet, eastings);

  const SheetPoint east = sheet.frame.Direction({kCrossArm, 0});
  const SheetPoint north = sheet.frame.Direction({0, kCrossArm});
  const Panel inside = panel.Inset(2 * kCrossArm);
  Svg::Group group(sheet.svg, kCross);
  for (const double northing : northings.values) {
    for (const double easting : eastings.values) {
      const SheetPoint p = sheet.frame.ToSheet({easting, northing});
      const Box box = {p, kCrossArm, kCrossArm};
      if (!inside.Holds(p) || !sheet.room.IsOpen(box)) continue;
      for (const SheetPoint arm : {east, north}) {
        const SheetPoint from = {p.x - arm.x, p.y - arm.y};
        const SheetPoint to = {p.x + arm.x, p.y + arm.y};
        sheet.svg.Line(from, to);
        sheet.room.AddLine(LineBox(from, to, 0.3));
      }
    }
  }
}

void DrawNorthArrow(const PlanSheet& sheet) {
  constexpr double kReach = 8.5;
  const Panel inside = sheet.panel.Inset(kReach + 1.5);
  const std::array corners = {SheetPoint{inside.Right(), inside.y}, SheetPoint{inside.x, inside.y + 6},
                              SheetPoint{inside.Right(), inside.Bottom()},
                              SheetPoint{inside.x + 16, inside.Bottom() - 4}};
  SheetPoint centre = corners[0];
  for (const SheetPoint& corner : corners) {
    if (!sheet.room.IsFree({corner, kReach, kReach})) continue;
    centre = corner;
    break;
  }
  sheet.room.AddSolid({centre, kReach, kReach});

  const SheetPoint north = sheet.frame.Direction({0, 1});
  const SheetPoint east = sheet.frame.Direction({1, 0});
  const auto at = [&](double to_east, double to_north) {
    return SheetPoint{centre.x + east.x * to_east + north.x * to_north,
                      centre.y + east.y * to_east + north.y * to_north};
  };
  const SheetPoint tip = at(0, 4.5);
  const SheetPoint notch = at(0, -4.6);
  {
    Svg::Group group(sheet.svg,
                     "fill=\"#fff\" stroke=\"#222\" stroke-width=\"0.18\" stroke-linejoin=\"round\"");
    sheet.svg.Path(SvgPath().MoveTo(tip).LineTo(at(2.4, -6.5)).LineTo(notch).Close());
  }
  Svg::Group group(sheet.svg,
                   "fill=\"#222\" stroke=\"#222\" stroke-width=\"0.18\" stroke-linejoin=\"round\"");
  sheet.svg.Path(SvgPath().MoveTo(tip).LineTo(at(-2.4, -6.5)).LineTo(notch).Close());
  Svg::Group letter(sheet.svg, "stroke=\"none\"");
  sheet.svg.Text(at(0, 6.7), "N", {.size = 3.4, .bold = true});
}

}  // namespace velmora::drawing
