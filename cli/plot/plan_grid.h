// The plan's coordinates: crosses, their numbers at the edges, and the arrow to north.
#ifndef VELMORA_CLI_PLOT_PLAN_GRID_H_
#define VELMORA_CLI_PLOT_PLAN_GRID_H_

#include "cli/plot/plan_view.h"

namespace velmora::cli::plot {

void DrawGrid(const PlanSheet& sheet);
// In the first corner that is free; above left when none is.
void DrawNorthArrow(const PlanSheet& sheet);

}  // namespace velmora::cli::plot

#endif  // VELMORA_CLI_PLOT_PLAN_GRID_H_
