// The profile: level over station, heights exaggerated, with the borings at their levels.
#ifndef VELMORA_DRAWING_PROFILE_VIEW_H_
#define VELMORA_DRAWING_PROFILE_VIEW_H_

#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/boring_labels.h"
#include "velmora/drawing/canvas.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/profile_geometry.h"

namespace velmora::drawing {

struct ProfileSummary {
  size_t off_sheet = 0;      // placed borings outside the plot or without a usable level
  size_t without_label = 0;  // borings in the plot without a label
};

// Stations increase to the right, whatever their direction in the plan. `plan_scale` is used for the lengths
// if it makes fair use of the width; 0 without a plan. Adds to `key` the borings that get a number for a
// label.
ProfileSummary DrawProfile(Canvas& canvas, const SheetRect& panel, const PlotInput& input,
                           const PlanPath& path, const ProfileLine& profile, double plan_scale,
                           BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_VIEW_H_
