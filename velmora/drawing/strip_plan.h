// The plan of one strip of a road.
#ifndef VELMORA_DRAWING_STRIP_PLAN_H_
#define VELMORA_DRAWING_STRIP_PLAN_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/strips.h"

namespace velmora::drawing {

// A strip with what its sheet shows.
struct StripContent {
  const PlotInput& input;
  const Course& course;
  const Strip& strip;
  const StripRoom& room;
  bool centred;                  // the only strip of the road; else it begins at the left
  std::optional<size_t> before;  // the sheets on which the course goes on
  std::optional<size_t> after;
  std::span<const PlotBoring* const> borings;  // by rising stations
};

struct StripPlanSummary {
  std::vector<const PlotBoring*> outside;  // those that the panel does not hold
  size_t without_label = 0;
  bool dots = false;
  bool strays = false;  // some of the drawn borings have no place along the road
};

// The road and the borings as they lie on the sheet.
PlanFrame FrameOfStrip(const StripContent& content);

// Adds to `key` the borings that get a number for a label.
StripPlanSummary DrawStripPlan(Canvas& canvas, const SheetRect& panel, const StripContent& content,
                               BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STRIP_PLAN_H_
