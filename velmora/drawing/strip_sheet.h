// One sheet of a report: plan and profile of a strip, the key to its numbers, and notes.
#ifndef VELMORA_DRAWING_STRIP_SHEET_H_
#define VELMORA_DRAWING_STRIP_SHEET_H_

#include "velmora/drawing/report_plan.h"

namespace velmora::drawing {

struct StripSheetSummary {
  size_t without_label = 0;  // borings in plan or profile
  size_t outside = 0;        // borings along the strip that plan or profile does not hold
};

// Within the frame of a sheet that was begun.
StripSheetSummary DrawStripSheet(Canvas& canvas, const ReportPlan& plan, size_t strip);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STRIP_SHEET_H_
