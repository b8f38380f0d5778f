// The parts of the plan: grid, road line and borings.
#ifndef VELMORA_DRAWING_PLAN_PARTS_H_
#define VELMORA_DRAWING_PLAN_PARTS_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/labels.h"
#include "velmora/drawing/plan_frame.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/style.h"

namespace velmora::drawing {

// What the parts draw on. Functions named Reserve... add obstacles for labels and draw nothing.
struct PlanSheet {
  Canvas& canvas;
  const SheetRect& panel;
  const PlanFrame& frame;
  const PlanPath& path;
  Obstacles& obstacles;
  bool km;  // stations as kilometres and metres
};

// Crosses at round coordinates, with their numbers at the left and lower edges.
void DrawGrid(const PlanSheet& sheet);
// In the first corner that is free; at the upper right when none is.
void DrawNorthArrow(const PlanSheet& sheet);

void ReserveLine(const PlanSheet& sheet);
void DrawLine(const PlanSheet& sheet);
// Bars across the line's ends, or one of them, with their stations.
void DrawEnds(const PlanSheet& sheet, bool start = true, bool end = true);
// Ticks at round stations, some of them with the station: all on the side where more labels fit, a label that
// is in the way there on the other.
void DrawStations(const PlanSheet& sheet);
void LabelRadii(const PlanSheet& sheet);

struct BoringOnPlan {
  const PlotBoring* boring;
  SheetPoint at;
  std::optional<SheetPoint> foot;  // on the road, of a placed boring
};

struct PlanBorings {
  std::vector<BoringOnPlan> on_sheet;  // within the panel
  std::vector<const PlotBoring*> outside;
  bool circled;   // else so many that they are dots, without lines to the road
  bool labelled;  // else so many that labels would find no room
};

PlanBorings BoringsOnPlan(const PlanSheet& sheet, std::span<const PlotBoring* const> borings,
                          size_t most_circled = kMostCircledBorings,
                          size_t most_labelled = kMostLabelledBorings);
void ReserveBorings(const PlanSheet& sheet, const PlanBorings& borings);
// Symbols, each with a line to its foot on the road.
void DrawBorings(const PlanSheet& sheet, const PlanBorings& borings);
// Identity and offset beside each symbol, or its number in the key if there is one. Returns the number of
// borings without either.
size_t LabelBorings(const PlanSheet& sheet, const PlanBorings& borings, BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PLAN_PARTS_H_
