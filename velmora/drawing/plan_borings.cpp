#include "velmora/drawing/plan_borings.h"

#include <algorithm>
#include <cmath>

#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLineSpacing = 2.6;  // mm

// To the centimetre: "H 12.40" to the right (höger), "V 3.20" to the left (vänster), "0.00" on the line.
std::string OffsetLabel(double offset) {
  const std::string text = FormatFixed(std::fabs(offset), 2);
  if (text == "0.00") return text;
  return (offset > 0 ? "H " : "V ") + text;
}

}  // namespace

BoringOnSheet PutOnSheet(const PlanSheet& sheet, const PlotBoring& boring, bool with_foot) {
  const PlanePoint point = {boring.easting, boring.northing};
  BoringOnSheet on_sheet{&boring, sheet.frame.ToSheet(point), std::nullopt};
  if (!with_foot || !boring.placed) return on_sheet;
  if (const auto foot = sheet.path.Nearest(point)) on_sheet.foot = sheet.frame.ToSheet(*foot);
  return on_sheet;
}

void ReserveBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings) {
  for (const BoringOnSheet& b : borings) {
    sheet.room.AddSolid({b.at, 0.9 * kBoringRadius, 0.9 * kBoringRadius});
    if (b.foot) sheet.room.AddLine(LineBox(b.at, *b.foot, 0.3));
  }
}

void DrawBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings) {
  {
    Svg::Group group(sheet.svg, kBoringLine);
    for (const BoringOnSheet& b : borings) {
      if (b.foot) sheet.svg.Line(b.at, *b.foot);
    }
  }
  for (const bool placed : {false, true}) {
    const auto each = [&](const char* attributes, double radius) {
      Svg::Group group(sheet.svg, attributes);
      for (const BoringOnSheet& b : borings) {
        if (b.boring->placed == placed) sheet.svg.Circle(b.at, radius);
      }
    };
    each(placed ? kBoring : kStray, kBoringRadius);
    each(placed ? kBoringDot : kStrayDot, kDotRadius);
  }
}

size_t LabelBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings) {
  size_t without = 0;
  for (const BoringOnSheet& b : borings) {
    const bool placed = b.boring->placed;
    const std::string id = FitText(b.boring->id, kLabelSize, kLongestId);
    const std::string offset = placed && std::isfinite(b.boring->offset) ? OffsetLabel(b.boring->offset) : "";
    const double width = std::max(TextWidth(id, kLabelSize), TextWidth(offset, kSmallSize));
    const double height = offset.empty() ? kLabelSize * 1.15 : kLabelSize * 1.15 + kLineSpacing;
    SheetPoint away = {1, 0};
    if (b.foot && std::hypot(b.at.x - b.foot->x, b.at.y - b.foot->y) > 0.05) {
      away = {b.at.x - b.foot->x, b.at.y - b.foot->y};
    }
    const auto label = PlaceAround(sheet.room, b.at, kBoringRadius, width, height, away.x, away.y);
    if (!label) {
      ++without;
      continue;
    }
    if (label->leader) {
      Svg::Group group(sheet.svg, kHairline);
      sheet.svg.Line(label->leader->first, label->leader->second);
    }
    const SheetPoint middle = label->box.centre;
    Svg::Group group(sheet.svg, placed ? kBoringText : kStrayText);
    sheet.svg.Text({middle.x, offset.empty() ? middle.y : middle.y - kLineSpacing / 2}, id,
                   {.size = kLabelSize});
    if (!offset.empty())
      sheet.svg.Text({middle.x, middle.y + kLineSpacing / 2}, offset, {.size = kSmallSize});
  }
  return without;
}

void ReserveDots(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings) {
  constexpr size_t kMostReserved = 1500;
  if (borings.size() > kMostReserved) return;
  for (const BoringOnSheet& b : borings) sheet.room.AddLine({b.at, 0.4, 0.4});
}

void DrawDots(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings) {
  for (const bool placed : {false, true}) {
    SvgPath dots;
    for (const BoringOnSheet& b : borings) {
      if (b.boring->placed == placed) dots.MoveTo(b.at).Close();
    }
    Svg::Group group(sheet.svg, placed ? kBoringDots : kStrayDots);
    sheet.svg.Path(dots);
  }
}

}  // namespace velmora::drawing
