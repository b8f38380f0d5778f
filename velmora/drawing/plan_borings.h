// The borings in the plan.
#ifndef VELMORA_DRAWING_PLAN_BORINGS_H_
#define VELMORA_DRAWING_PLAN_BORINGS_H_

#include <optional>
#include <vector>

#include "velmora/drawing/plan_view.h"

namespace velmora::drawing {

struct BoringOnSheet {
  const PlotBoring* boring;
  SheetPoint at;
  std::optional<SheetPoint> foot;  // on the road, of one that has a place there
};

// The search for the foot looks at the whole road; `with_foot` false spares it.
BoringOnSheet PutOnSheet(const PlanSheet& sheet, const PlotBoring& boring, bool with_foot);

// Keeps labels off the symbols and off the lines to the road.
void ReserveBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings);
// Symbols, each with a line to its foot on the road.
void DrawBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings);
// Identity and offset beside each symbol. Returns how many found no room.
size_t LabelBorings(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings);
// Dots alone. Very many are everywhere, and labels are then written over them.
void ReserveDots(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings);
void DrawDots(const PlanSheet& sheet, const std::vector<BoringOnSheet>& borings);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_BORINGS_H_
