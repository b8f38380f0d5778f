#include <algorithm>
#include <cmath>

#include "velmora/drawing/plan_parts.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr double kLineSpacing = 2.6;  // mm
constexpr double kLongestId = 30;     // mm

// To the centimetre: "H 12.40" to the right (höger), "V 3.20" to the left (vänster), "0.00" on the line.
std::string OffsetLabel(double offset) {
  const std::string text = FormatFixed(std::fabs(offset), 2);
  if (text == "0.00") return text;
  return (offset > 0 ? "H " : "V ") + text;
}

}  // namespace

PlanBorings BoringsOnPlan(const PlanSheet& sheet, const std::vector<PlotBoring>& borings) {
  constexpr size_t kMostSearched = 20'000'000;  // segments searched for feet: a second or two
  PlanBorings found;
  for (const PlotBoring& boring : borings) {
    if (!IsDrawable(boring.northing) || !IsDrawable(boring.easting)) continue;
    const SheetPoint at = sheet.frame.ToSheet({boring.easting, boring.northing});
    if (sheet.panel.Inset(kBoringRadius).Contains(at)) found.on_sheet.push_back({&boring, at, std::nullopt});
  }
  found.labelled = found.on_sheet.size() <= kMostLabelledBorings;
  if (!found.labelled || found.on_sheet.size() * sheet.path.Segments().size() > kMostSearched) return found;
  for (BoringOnPlan& b : found.on_sheet) {
    if (!b.boring->placed) continue;
    const auto foot = sheet.path.Nearest({b.boring->easting, b.boring->northing});
    if (foot) b.foot = sheet.frame.ToSheet(*foot);
  }
  return found;
}

void ReserveBorings(const PlanSheet& sheet, const PlanBorings& borings) {
  if (!borings.labelled && borings.on_sheet.size() > kMostReservedDots) return;
  for (const BoringOnPlan& b : borings.on_sheet) {
    if (borings.labelled) {
      sheet.obstacles.AddSolid({b.at, 0.9 * kBoringRadius, 0.9 * kBoringRadius});
      if (b.foot) sheet.obstacles.AddLine(LineBox(b.at, *b.foot, 0.3));
    } else {
      sheet.obstacles.AddLine({b.at, kManyDotsRadius, kManyDotsRadius});
    }
  }
}

void DrawBorings(const PlanSheet& sheet, const PlanBorings& borings) {
  for (const BoringOnPlan& b : borings.on_sheet) {
    if (b.foot) sheet.canvas.Line(b.at, *b.foot, kBoringLine);
  }
  for (const bool placed : {false, true}) {
    std::vector<SheetPoint> centres;
    for (const BoringOnPlan& b : borings.on_sheet) {
      if (b.boring->placed == placed) centres.push_back(b.at);
    }
    const Style& dot = placed ? kBoringDot : kStrayDot;
    if (!borings.labelled) {
      sheet.canvas.Dots(centres, kManyDotsRadius, dot);
      continue;
    }
    for (const SheetPoint& at : centres) sheet.canvas.Circle(at, kBoringRadius, placed ? kBoring : kStray);
    for (const SheetPoint& at : centres) sheet.canvas.Circle(at, kDotRadius, dot);
  }
}

size_t LabelBorings(const PlanSheet& sheet, const PlanBorings& borings) {
  if (!borings.labelled) return 0;
  size_t without = 0;
  for (const BoringOnPlan& b : borings.on_sheet) {
    const bool placed = b.boring->placed;
    const std::string id = FitText(b.boring->id, kLabelSize, kLongestId);
    const std::string offset = placed && std::isfinite(b.boring->offset) ? OffsetLabel(b.boring->offset) : "";
    const double spacing = offset.empty() ? 0 : kLineSpacing;
    const double width = std::max(TextWidth(id, kLabelSize), TextWidth(offset, kSmallSize));
    SheetPoint away = {1, 0};
    if (b.foot && std::hypot(b.at.x - b.foot->x, b.at.y - b.foot->y) > 0.05)
      away = {b.at.x - b.foot->x, b.at.y - b.foot->y};
    const auto label =
        PlaceAround(sheet.obstacles, b.at, kBoringRadius, width, kLabelSize * 1.15 + spacing, away);
    if (!label) {
      ++without;
      continue;
    }
    if (label->leader) sheet.canvas.Line(label->leader->first, label->leader->second, kLeader);
    const auto [x, y] = label->centre;
    const Style& style = placed ? kBoringText : kStrayText;
    sheet.canvas.Text({x, y - spacing / 2}, id, {.size = kLabelSize}, style);
    if (!offset.empty()) sheet.canvas.Text({x, y + spacing / 2}, offset, {.size = kSmallSize}, style);
  }
  return without;
}

}  // namespace velmora::drawing
