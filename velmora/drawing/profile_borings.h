// The borings in the profile.
#ifndef VELMORA_DRAWING_PROFILE_BORINGS_H_
#define VELMORA_DRAWING_PROFILE_BORINGS_H_

#include <vector>

#include "velmora/drawing/profile_view.h"

namespace velmora::drawing {

struct BoringInProfile {
  const PlotBoring* boring;
  SheetPoint at;
};

// Those that have a station and a level; *off_sheet counts the ones that lie beyond the plot.
std::vector<BoringInProfile> BoringsIn(const ProfileSheet& sheet, const PlotInput& input, size_t* off_sheet);

// A bar at each boring's level, with a line to the road's. Keeps labels off them.
void DrawMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings);
// Names upright over line and marker, moved up and aside until there is room, else below. Returns how many
// found none.
size_t LabelMarkers(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings);
// Dots alone.
void DrawLevelDots(const ProfileSheet& sheet, const std::vector<BoringInProfile>& borings);

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_PROFILE_BORINGS_H_
