// The plan's coordinates: crosses, their numbers at the edges, and the arrow to north.
#ifndef VELMORA_DRAWING_PLAN_GRID_H_
#define VELMORA_DRAWING_PLAN_GRID_H_

#include "velmora/drawing/plan_view.h"

namespace velmora::drawing {

void DrawGrid(const PlanSheet& sheet);
// In the first corner that is free; above left when none is.
void DrawNorthArrow(const PlanSheet& sheet);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_GRID_H_
