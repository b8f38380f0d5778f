// The plan: the map of the road with its stations, and the borings beside it.
#ifndef VELMORA_DRAWING_PLAN_VIEW_H_
#define VELMORA_DRAWING_PLAN_VIEW_H_

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/canvas.h"
#include "velmora/drawing/plan_path.h"

namespace velmora::drawing {

struct PlanSummary {
  double scale = 0;          // the N of 1:N
  size_t off_sheet = 0;      // borings outside the panel or without usable coordinates
  size_t without_label = 0;  // borings on the plan without a label
  bool dots = false;         // so many borings that they are dots
  bool strays = false;       // some of the drawn borings have no place along the road
};

// The points that a map must hold: the road and the borings near it. A boring with a mistyped coordinate must
// not reduce the road to a dot.
std::vector<PlanePoint> PlanOutline(const PlotInput& input, const PlanPath& path);

// The least height, between `least` and `most`, at which the plan on a panel of this width has the scale that
// it has at `most`.
double PlanHeight(const PlotInput& input, const PlanPath& path, double width, double least, double most);

// Adds to `key` the borings that get a number for a label.
PlanSummary DrawPlan(Canvas& canvas, const SheetRect& panel, const PlotInput& input, const PlanPath& path,
                     BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_VIEW_H_
