// The profile: level over station, heights exaggerated, with the borings at their levels.
#ifndef VELMORA_DRAWING_PROFILE_VIEW_H_
#define VELMORA_DRAWING_PROFILE_VIEW_H_

#include "velmora/drawing/drawing.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/profile_frame.h"
#include "velmora/drawing/profile_line.h"
#include "velmora/drawing/style.h"
#include "velmora/drawing/svg.h"

namespace velmora::drawing {

struct ProfileSummary {
  std::string scales;        // "lengths 1:5000, heights 1:500, 10 times exaggerated"
  size_t off_sheet = 0;      // placed borings whose level lies far from the line
  size_t without_label = 0;  // labels that found no room
};

// Stations rise to the right whatever the plan's do. `plan_scale` is used for the lengths where it makes
// fair use of the sheet; 0 for none.
ProfileSummary DrawProfile(Svg& svg, const Panel& panel, const PlotInput& input, const PlanPath& path,
                           const ProfileLine& profile, double plan_scale);

// What the parts of the profile draw on.
struct ProfileSheet {
  Svg& svg;
  const Panel& plot;
  const ProfileFrame& frame;
  const ProfileLine& line;
  LabelRoom& room;
  bool km;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_VIEW_H_
