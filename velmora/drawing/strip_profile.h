// The profile of one strip of a road, over the stations of its plan.
#ifndef VELMORA_DRAWING_STRIP_PROFILE_H_
#define VELMORA_DRAWING_STRIP_PROFILE_H_

#include <vector>

#include "velmora/drawing/profile_geometry.h"
#include "velmora/drawing/strip_plan.h"

namespace velmora::drawing {

struct ProfileStyle {
  double height_scale;  // the N of 1:N
  int decimals;         // of levels
};

struct StripProfileSummary {
  std::vector<const PlotBoring*> outside;        // at levels, or stations, that the plot does not hold
  std::vector<const PlotBoring*> without_level;  // of those along the road
  size_t without_label = 0;
};

// The range of the line's levels over these stations, and millimetres of a plot in a panel of this height
// that are for levels. A height scale at which the one fits the other needs no steps.
Interval LevelsOver(const ProfileLine& profile, const Interval& stations, double step);
double RoomForLevels(double panel_height);

// Where the levels leave the height of the plot, its reference level changes.
StripProfileSummary DrawStripProfile(Canvas& canvas, const SheetRect& panel, const StripContent& content,
                                     const ProfileLine& profile, const ProfileStyle& style, BoringKey* key);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_STRIP_PROFILE_H_
