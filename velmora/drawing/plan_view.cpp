#include "velmora/drawing/plan_view.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {
namespace {

constexpr double kPlanMargin = 17;  // mm for labels around the road
constexpr double kOutlineStep = 1;  // m
constexpr size_t kOutlinePoints = 4000;

}  // namespace

std::vector<PlanePoint> PlanOutline(const PlotInput& input, const PlanPath& path) {
  constexpr double kNear = 60;       // m
  constexpr double kNearPart = 0.2;  // of the road's extent
  std::vector<PlanePoint> outline = path.Samples(kOutlineStep, kOutlinePoints);
  Interval eastings;
  Interval northings;
  for (const PlanePoint& p : outline) {
    eastings.Add(p.h);
    northings.Add(p.v);
  }
  const bool has_road = !outline.empty();
  const double near = std::max(kNear, kNearPart * std::hypot(eastings.Size(), northings.Size()));
  for (const PlotBoring& boring : input.borings) {
    if (has_road ? eastings.WidenedBy(near).Contains(boring.easting) &&
                       northings.WidenedBy(near).Contains(boring.northing)
                 : IsDrawable(boring.easting) && IsDrawable(boring.northing)) {
      outline.push_back({boring.easting, boring.northing});
    }
  }
  return ConvexHull(std::move(outline));
}

double PlanHeight(const PlotInput& input, const PlanPath& path, double width, double least, double most) {
  constexpr double kStep = 4;  // mm
  const std::vector<PlanePoint> outline = PlanOutline(input, path);
  const auto scale = [&](double height) {
    return PlanFrame(outline, SheetRect{0, 0, width, height}.Inset(kPlanMargin), NiceScale).Scale();
  };
  const double best = scale(most);
  double height = most;
  while (height - kStep >= least && scale(height - kStep) <= best) height -= kStep;
  return height;
}

PlanSummary DrawPlan(Canvas& canvas, const SheetRect& panel, const PlotInput& input, const PlanPath& path,
                     BoringKey* key) {
  const std::vector<PlanePoint> outline = PlanOutline(input, path);
  if (outline.empty()) {
    canvas.Text({panel.x + panel.width / 2, panel.y + panel.height / 2}, "Nothing to draw",
                {.size = kHeadingSize}, kText);
    return {.off_sheet = input.borings.size()};
  }
  const PlanFrame frame(outline, panel.Inset(kPlanMargin), NiceScale);
  Obstacles obstacles(panel.Inset(1));
  const PlanSheet sheet{canvas, panel, frame, path, obstacles, input.km_stations};

  const std::string heading = "Plan " + ScaleText(frame.Scale());
  const SheetPoint heading_at = {panel.x + 4, panel.y + 5};
  const double half_width = TextWidth(heading, kHeadingSize) / 2;
  obstacles.AddSolid({{heading_at.x + half_width, heading_at.y}, half_width + 1, kHeadingSize});
  canvas.Text(heading_at, heading, {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true}, kText);

  // The order matters: each part avoids what was placed before it.
  std::vector<const PlotBoring*> all;
  for (const PlotBoring& boring : input.borings) all.push_back(&boring);
  const PlanBorings borings = BoringsOnPlan(sheet, all);
  ReserveLine(sheet);
  ReserveBorings(sheet, borings);
  DrawNorthArrow(sheet);
  DrawGrid(sheet);
  DrawLine(sheet);
  DrawEnds(sheet);
  DrawStations(sheet);
  DrawBorings(sheet, borings);
  const size_t without_label = LabelBorings(sheet, borings, key);
  LabelRadii(sheet);
  return {.scale = frame.Scale(),
          .off_sheet = borings.outside.size(),
          .without_label = without_label,
          .dots = !borings.circled,
          .strays = std::any_of(borings.on_sheet.begin(), borings.on_sheet.end(),
                                [](const BoringOnPlan& b) { return !b.boring->HasOffset(); })};
}

}  // namespace velmora::drawing
