// The whole road with the outlines of a report's sheets.
#ifndef VELMORA_DRAWING_OVERVIEW_MAP_H_
#define VELMORA_DRAWING_OVERVIEW_MAP_H_

#include <array>

#include "velmora/drawing/plan_parts.h"
#include "velmora/drawing/report_plan.h"

namespace velmora::drawing {

// The corners of a strip's plan on the map, as they follow one another.
std::array<PlanePoint, 4> OutlineOfStrip(const ReportPlan& plan, size_t strip);

// The outlines of all strips with the numbers of their sheets.
void DrawOutlines(const PlanSheet& sheet, const ReportPlan& plan);

// The N of the map's scale 1:N, the largest usual one at which road and outlines fit; 0 without either.
double ScaleOfOverview(const SheetRect& panel, const ReportPlan& plan);
void DrawOverviewMap(Canvas& canvas, const SheetRect& panel, const ReportPlan& plan);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_OVERVIEW_MAP_H_
