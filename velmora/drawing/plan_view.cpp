#include "velmora/drawing/plan_view.h"

#include <algorithm>
#include <cmath>

#include "velmora/drawing/plan_borings.h"
#include "velmora/drawing/plan_grid.h"
#include "velmora/drawing/plan_line.h"
#include "velmora/drawing/scale.h"

namespace velmora::drawing {
namespace {

constexpr double kMargin = 17;      // mm for labels around the road
constexpr double kOutlineStep = 1;  // m
constexpr size_t kOutlinePoints = 4000;

bool IsDrawable(const PlotBoring& boring) {
  return drawing::IsDrawable(boring.northing) && drawing::IsDrawable(boring.easting);
}

// What the sheet is to hold: the road, and the borings that are not far from it. One boring with a digit
// too many must not shrink the road to a dot.
std::vector<PlanePoint> Outline(const PlotInput& input, const PlanPath& path) {
  constexpr double kNear = 60;       // m
  constexpr double kNearPart = 0.2;  // of the road's extent
  std::vector<PlanePoint> outline = path.Samples(kOutlineStep, kOutlinePoints);
  PlanePoint low{-kLargestDrawn, -kLargestDrawn};
  PlanePoint high{kLargestDrawn, kLargestDrawn};
  if (!outline.empty()) {
    low = high = outline.front();
    for (const PlanePoint& p : outline) {
      low = {std::min(low.h, p.h), std::min(low.v, p.v)};
      high = {std::max(high.h, p.h), std::max(high.v, p.v)};
    }
    const double near = std::max(kNear, kNearPart * Distance(low, high));
    low = {low.h - near, low.v - near};
    high = {high.h + near, high.v + near};
  }
  for (const PlotBoring& boring : input.borings) {
    if (boring.easting >= low.h && boring.easting <= high.h && boring.northing >= low.v &&
        boring.northing <= high.v) {
      outline.push_back({boring.easting, boring.northing});
    }
  }
  return ConvexHull(std::move(outline));
}

}  // namespace

double PlanHeight(const PlotInput& input, const PlanPath& path, double width, double least, double most) {
  constexpr double kStep = 4;  // mm
  const std::vector<PlanePoint> outline = Outline(input, path);
  const auto scale = [&](double height) {
    return PlanFrame(outline, Panel{0, 0, width, height}.Inset(kMargin)).Scale();
  };
  const double best = scale(most);
  double height = most;
  while (height - kStep >= least && scale(height - kStep) <= best) height -= kStep;
  return height;
}

PlanSummary DrawPlan(Svg& svg, const Panel& panel, const PlotInput& input, const PlanPath& path) {
  const std::vector<PlanePoint> outline = Outline(input, path);
  if (outline.empty()) {
    Svg::Group group(svg, kText);
    svg.Text({panel.x + panel.width / 2, panel.y + panel.height / 2}, "Nothing to draw",
             {.size = kHeadingSize});
    return {.off_sheet = input.borings.size()};
  }
  const PlanFrame frame(outline, panel.Inset(kMargin));
  LabelRoom room(panel.Inset(1).AsBox());
  const PlanSheet sheet{svg, panel, frame, path, room, input.km_stations};
  PlanSummary summary{.scale = frame.Scale()};

  const std::string heading = "Plan " + ScaleText(frame.Scale());
  const SheetPoint heading_at = {panel.x + 4, panel.y + 5};
  const double heading_width = TextWidth(heading, kHeadingSize);
  room.AddSolid({{heading_at.x + heading_width / 2, heading_at.y}, heading_width / 2 + 1, kHeadingSize});
  {
    Svg::Group group(svg, kText);
    svg.Text(heading_at, heading, {.size = kHeadingSize, .anchor = TextAnchor::kStart, .bold = true});
  }

  std::vector<const PlotBoring*> on_sheet;
  for (const PlotBoring& boring : input.borings) {
    if (!IsDrawable(boring)) continue;
    const SheetPoint at = frame.ToSheet({boring.easting, boring.northing});
    if (panel.Inset(kBoringRadius).Holds(at)) on_sheet.push_back(&boring);
  }
  summary.off_sheet = input.borings.size() - on_sheet.size();
  const bool labelled = on_sheet.size() <= kMostLabelledBorings;
  summary.dots = !labelled;

  constexpr size_t kMostSearched = 20'000'000;  // segments looked at for feet: a second or two
  const bool with_feet = labelled && on_sheet.size() * path.Segments().size() <= kMostSearched;
  std::vector<BoringOnSheet> borings;
  for (const PlotBoring* boring : on_sheet) borings.push_back(PutOnSheet(sheet, *boring, with_feet));

  ReserveLine(sheet);
  if (labelled) {
    ReserveBorings(sheet, borings);
  } else {
    ReserveDots(sheet, borings);
  }
  DrawNorthArrow(sheet);
  DrawGrid(sheet);
  DrawLine(sheet);
  DrawEnds(sheet);
  DrawStations(sheet);
  if (labelled) {
    DrawBorings(sheet, borings);
    summary.without_label = LabelBorings(sheet, borings);
  } else {
    DrawDots(sheet, borings);
  }
  LabelRadii(sheet);
  return summary;
}

}  // namespace velmora::drawing
