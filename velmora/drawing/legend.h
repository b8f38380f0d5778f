// The legend of a report, and its notes.
#ifndef VELMORA_DRAWING_LEGEND_H_
#define VELMORA_DRAWING_LEGEND_H_

#include <string>
#include <vector>

#include "velmora/drawing/report_plan.h"

namespace velmora::drawing {

// Beside the title block, or above it.
void DrawLegend(Canvas& canvas, const ReportPlan& plan, const std::vector<std::string>& notes);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_LEGEND_H_
