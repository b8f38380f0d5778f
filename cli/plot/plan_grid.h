// The plan's coordinates: crosses, their numbers at the edges, and the arrow to north.
#ifndef VELMORA_CLI_PLOT_PLAN_GRID_H_
#define VELMORA_CLI_PLOT_PLAN_GRID_H_

#include "cli/plot/plan_view.h"

namespace velmora::cli {

void DrawGrid(const PlanSheet& sheet);
// In the first corner that is free; above left when none is.
void DrawNorthArrow(const PlanSheet& sheet);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PLOT_PLAN_GRID_H_
