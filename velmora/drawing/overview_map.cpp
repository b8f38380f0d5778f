#include "velmora/drawing/overview_map.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/plan_view.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {
namespace {

constexpr double kMargin = 12;  // mm, for labels

std::optional<PlanFrame> FrameOfOverview(const SheetRect& panel, const ReportPlan& plan) {
  std::vector<PlanePoint> outline = PlanOutline(plan.report.road, plan.course.Path());
  for (size_t i = 0; i < plan.frames.size(); ++i)
    for (const PlanePoint& corner : OutlineOfStrip(plan, i)) outline.push_back(corner);
  outline = ConvexHull(std::move(outline));
  if (outline.empty()) return std::nullopt;
  return PlanFrame(outline, panel.Inset(kMargin), StandardScale);
}

// Where the middle is crowded: in the first free corner, or else in the first.
void NumberInCorner(const PlanSheet& sheet, const std::array<PlanePoint, 4>& corners, SheetPoint middle,
                    const std::string& text) {
  constexpr double kFromCorner = 8;  // mm
  std::array<RotatedBox, 4> boxes;
  for (size_t i = 0; i < 4; ++i) {
    const SheetPoint corner = sheet.frame.ToSheet(corners[i]);
    const double way = std::hypot(middle.x - corner.x, middle.y - corner.y);
    const double part = way > 2 * kFromCorner ? kFromCorner / way : 0.5;
    boxes[i] = TextBox({corner.x + part * (middle.x - corner.x), corner.y + part * (middle.y - corner.y)},
                       text, kHeadingSize);
  }
  const TextFormat format = {.size = kHeadingSize, .bold = true};
  const auto* const free = std::find_if(
      boxes.begin(), boxes.end(), [&](const RotatedBox& box) { return sheet.obstacles.AllowsLabel(box); });
  const RotatedBox& box = free == boxes.end() ? boxes[0] : *free;
  sheet.obstacles.AddSolid(box);
  sheet.canvas.Text(box.centre, text, format, kOutlineText);
}

}  // namespace

double ScaleOfOverview(const SheetRect& panel, const ReportPlan& plan) {
  const auto frame = FrameOfOverview(panel, plan);
  return frame ? frame->Scale() : 0;
}

std::array<PlanePoint, 4> OutlineOfStrip(const ReportPlan& plan, size_t strip) {
  const PlanFrame& frame = plan.frames[strip];
  const SheetRect& r = plan.plan_panel;
  return {frame.FromSheet({r.x, r.y}), frame.FromSheet({r.Right(), r.y}),
          frame.FromSheet({r.Right(), r.Bottom()}), frame.FromSheet({r.x, r.Bottom()})};
}

void DrawOutlines(const PlanSheet& sheet, const ReportPlan& plan) {
  const size_t strips = plan.frames.size();
  for (size_t i = 0; i < strips; ++i) {
    std::array<PathPoint, 4> outline{};
    const auto corners = OutlineOfStrip(plan, i);
    for (size_t k = 0; k < 4; ++k) outline[k] = {sheet.frame.ToSheet(corners[k])};
    sheet.canvas.Path(outline, true, kOutline);
    for (size_t k = 0; k < 4; ++k)
      sheet.obstacles.AddLine(LineBox(outline[k].at, outline[(k + 1) % 4].at, 0.2));
  }
  for (size_t i = 0; i < strips; ++i) {
    const auto corners = OutlineOfStrip(plan, i);
    const SheetPoint a = sheet.frame.ToSheet(corners[0]);
    const SheetPoint c = sheet.frame.ToSheet(corners[2]);
    const SheetPoint b = sheet.frame.ToSheet(corners[1]);
    const std::string text = std::to_string(plan.first_strip_sheet + i);
    const SheetPoint middle = {(a.x + c.x) / 2, (a.y + c.y) / 2};
    const SheetPoint up = {(a.x + b.x) / 2 - middle.x, (a.y + b.y) / 2 - middle.y};
    const auto places =
        PlacesAround(middle, 1.5, TextWidth(text, kHeadingSize) + 0.6, kHeadingSize * 1.15, up);
    const auto place = TakeFirst(sheet.obstacles, places);
    if (!place) {
      NumberInCorner(sheet, corners, middle, text);
      continue;
    }
    if (place->leader) sheet.canvas.Line(place->leader->first, place->leader->second, kOutlineLeader);
    sheet.canvas.Text(place->box.centre, text, {.size = kHeadingSize, .bold = true}, kOutlineText);
  }
}

void DrawOverviewMap(Canvas& canvas, const SheetRect& panel, const ReportPlan& plan) {
  const PlotInput& road = plan.report.road;
  canvas.Rectangle(panel, kHairline);
  const auto frame_of_road = FrameOfOverview(panel, plan);
  if (!frame_of_road) {
    canvas.Text({panel.x + panel.width / 2, panel.y + panel.height / 2},
                plan.HasProfile() ? "No plan" : "Nothing to draw", {.size = kHeadingSize}, kText);
    return;
  }
  const PlanFrame& frame = *frame_of_road;
  Obstacles obstacles(panel.Inset(1));
  const PlanSheet sheet{canvas, panel, frame, plan.course.Path(), obstacles, road.km_stations};
  const std::string heading = "Overview " + ScaleText(frame.Scale());
  const SheetPoint heading_at = {panel.x + 3, panel.y + 4};
  const double half = TextWidth(heading, kHeadingSize) * 0.56;  // bold
  obstacles.AddSolid({{heading_at.x + half, heading_at.y}, half + 1, kHeadingSize});
  canvas.Text(heading_at, heading, {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true}, kText);

  std::vector<const PlotBoring*> all;
  for (const PlotBoring& boring : road.borings) all.push_back(&boring);
  PlanBorings borings = BoringsOnPlan(sheet, all);
  // Those of the strips are labelled there.
  if (!plan.strips.empty()) {
    borings.circled = false;
    borings.labelled = false;
    for (BoringOnPlan& b : borings.on_sheet) b.foot.reset();
  }
  ReserveLine(sheet);
  ReserveBorings(sheet, borings);
  DrawNorthArrow(sheet);
  DrawBorings(sheet, borings);
  DrawLine(sheet);
  DrawEnds(sheet);
  DrawStations(sheet);
  DrawOutlines(sheet, plan);
  DrawGrid(sheet);
  if (!plan.strips.empty()) return;
  LabelBorings(sheet, borings, nullptr);
}

}  // namespace velmora::drawing
