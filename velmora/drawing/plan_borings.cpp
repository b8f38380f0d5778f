#include <algorithm>
#include <cmath>

#include "velmora/drawing/plan_parts.h"

namespace velmora::drawing {
namespace {

constexpr double kLineSpacing = 2.6;  // mm
constexpr double kLongestName = 30;   // mm

}  // namespace

PlanBorings BoringsOnPlan(const PlanSheet& sheet, std::span<const PlotBoring* const> borings,
                          size_t most_circled, size_t most_labelled) {
  constexpr size_t kMostSearched = 20'000'000;  // segments searched for feet: a second or two
  PlanBorings found;
  for (const PlotBoring* boring : borings) {
    const bool drawable = IsDrawable(boring->northing) && IsDrawable(boring->easting);
    const SheetPoint at = sheet.frame.ToSheet({boring->easting, boring->northing});
    if (drawable && sheet.panel.Inset(kBoringRadius).Contains(at))
      found.on_sheet.push_back({boring, at, std::nullopt});
    else
      found.outside.push_back(boring);
  }
  found.circled = found.on_sheet.size() <= most_circled;
  found.labelled = found.on_sheet.size() <= most_labelled;
  if (!found.circled || found.on_sheet.size() * sheet.path.Segments().size() > kMostSearched) return found;
  for (BoringOnPlan& b : found.on_sheet) {
    if (!b.boring->placed) continue;
    const auto foot = sheet.path.Nearest({b.boring->easting, b.boring->northing});
    if (foot) b.foot = sheet.frame.ToSheet(*foot);
  }
  return found;
}

void ReserveBorings(const PlanSheet& sheet, const PlanBorings& borings) {
  if (!borings.labelled) return;
  const double half = borings.circled ? 0.9 * kBoringRadius : kManyDotsRadius;
  for (const BoringOnPlan& b : borings.on_sheet) {
    sheet.obstacles.AddSolid({b.at, half, half});
    if (b.foot) sheet.obstacles.AddLine(LineBox(b.at, *b.foot, 0.3));
  }
}

void DrawBorings(const PlanSheet& sheet, const PlanBorings& borings) {
  for (const BoringOnPlan& b : borings.on_sheet) {
    if (b.foot) sheet.canvas.Line(b.at, *b.foot, kBoringLine);
  }
  std::vector<SheetPoint> centres;
  for (const BoringOnPlan& b : borings.on_sheet) {
    if (b.boring->HasOffset())
      centres.push_back(b.at);
    else
      DrawStray(sheet.canvas, b.at, !borings.circled);
  }
  if (borings.circled)
    for (const SheetPoint& at : centres) sheet.canvas.Circle(at, kBoringRadius, kBoring);
  sheet.canvas.Dots(centres, borings.circled ? kDotRadius : kManyDotsRadius, kBoringDot);
}

size_t LabelBorings(const PlanSheet& sheet, const PlanBorings& borings, BoringKey* key) {
  if (!borings.labelled) return borings.on_sheet.size();
  const std::string widest = BoringKey::NumberText(borings.on_sheet.size());
  const auto places = [&](size_t i, LabelKind kind) {
    const BoringOnPlan& b = borings.on_sheet[i];
    SheetPoint away = {1, 0};
    if (b.foot && std::hypot(b.at.x - b.foot->x, b.at.y - b.foot->y) > 0.05)
      away = {b.at.x - b.foot->x, b.at.y - b.foot->y};
    const double radius = borings.circled ? kBoringRadius : kManyDotsRadius;
    if (kind == LabelKind::kNumber && key == nullptr) return NoPlaces();
    if (kind == LabelKind::kNumber)
      return PlacesAround(b.at, radius, TextWidth(widest, kSmallSize), kSmallSize * 1.15, away);
    const std::string offset = OffsetLabel(*b.boring);
    const double width = std::max(TextWidth(b.boring->id, kLabelSize), TextWidth(offset, kSmallSize));
    if (width > kLongestName || BoringKey::IsNumberText(b.boring->id)) return NoPlaces();
    const double height = kLabelSize * 1.15 + (offset.empty() ? 0 : kLineSpacing);
    return PlacesAround(b.at, radius, width, height, away);
  };
  std::vector<SheetPoint> symbols;
  for (const BoringOnPlan& b : borings.on_sheet) symbols.push_back(b.at);
  const auto labels = ChooseLabels(sheet.obstacles, symbols, places);
  size_t without = 0;
  for (size_t i = 0; i < labels.size(); ++i) {
    const PlotBoring& boring = *borings.on_sheet[i].boring;
    if (!labels[i] || (labels[i]->kind == LabelKind::kNumber && !key->HasRoomFor(boring))) {
      ++without;
      continue;
    }
    const auto& [kind, place] = *labels[i];
    if (place.leader) sheet.canvas.Line(place.leader->first, place.leader->second, kLeader);
    const auto [x, y] = place.box.centre;
    const Style& style = boring.HasOffset() ? kBoringText : kStrayText;
    if (kind == LabelKind::kNumber) {
      sheet.canvas.Text({x, y}, key->Number(boring), {.size = kSmallSize}, style);
      continue;
    }
    const std::string offset = OffsetLabel(boring);
    const double spacing = offset.empty() ? 0 : kLineSpacing;
    sheet.canvas.Text({x, y - spacing / 2}, boring.id, {.size = kLabelSize}, style);
    if (!offset.empty()) sheet.canvas.Text({x, y + spacing / 2}, offset, {.size = kSmallSize}, style);
  }
  return without;
}

}  // namespace velmora::drawing
