// The road's line in the plan: its arcs, ends, station ticks and their labels.
#ifndef VELMORA_DRAWING_PLAN_LINE_H_
#define VELMORA_DRAWING_PLAN_LINE_H_

#include "velmora/drawing/plan_view.h"

namespace velmora::drawing {

// Keeps labels off the line.
void ReserveLine(const PlanSheet& sheet);
void DrawLine(const PlanSheet& sheet);
// Bars across the line's ends, with their stations.
void DrawEnds(const PlanSheet& sheet);
// Ticks at round stations, every so many with its number written away from the line: on the side that
// has more room, where it is taken on the other.
void DrawStations(const PlanSheet& sheet);
void LabelRadii(const PlanSheet& sheet);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_LINE_H_
