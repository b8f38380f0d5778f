// The road's line in the plan: its arcs, ends, station ticks and their labels.
#ifndef VELMORA_CLI_PLOT_PLAN_LINE_H_
#define VELMORA_CLI_PLOT_PLAN_LINE_H_

#include "cli/plot/plan_view.h"

namespace velmora::cli::plot {

// Keeps labels off the line.
void ReserveLine(const PlanSheet& sheet);
void DrawLine(const PlanSheet& sheet);
// Bars across the line's ends, with their stations.
void DrawEnds(const PlanSheet& sheet);
// Ticks at round stations, every so many with its number written away from the line: on the side that
// has more room, where it is taken on the other.
void DrawStations(const PlanSheet& sheet);
void LabelRadii(const PlanSheet& sheet);

}  // namespace velmora::cli::plot

#endif  // VELMORA_CLI_PLOT_PLAN_LINE_H_
