// The plan: the map of the road with its stations, and the borings beside it.
#ifndef VELMORA_DRAWING_PLAN_VIEW_H_
#define VELMORA_DRAWING_PLAN_VIEW_H_

#include "velmora/drawing/drawing.h"
#include "velmora/drawing/plan_frame.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/svg.h"

namespace velmora::drawing {

struct PlanSummary {
  double scale = 0;          // the N of 1:N
  size_t off_sheet = 0;      // borings too far away to be on it, or without usable coordinates
  size_t without_label = 0;  // labels that found no room
  bool dots = false;         // so many borings that they are dots without labels
};

// The height from `least` to `most` beyond which the plan's scale on a panel of this width gains nothing.
double PlanHeight(const PlotInput& input, const PlanPath& path, double width, double least, double most);

PlanSummary DrawPlan(Svg& svg, const Panel& panel, const PlotInput& input, const PlanPath& path);

// What the parts of the plan draw on.
struct PlanSheet {
  Svg& svg;
  const Panel& panel;
  const PlanFrame& frame;
  const PlanPath& path;
  LabelRoom& room;
  bool km;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_VIEW_H_
